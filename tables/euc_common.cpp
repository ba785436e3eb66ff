// EUC-JP with JIS X 0208 by the standard mapping.
#include "tables/euc.h"
#include "tables/export.h"

namespace jkc::tables {
namespace {

constexpr auto make_encoding() {
    EncodingTable<uint16_t> table{};
    add_inverse(table, euc_standard().characters);
    // Decoded but not encoded: the generic variant encodes the minus from its full-width form alone, and no ‖.
    table[0x2016] = 0;
    table[0x2212] = 0;
    add_microsoft_look_alikes(table, euc_from_jis);
    return table;
}

} // namespace
} // namespace jkc::tables

JKC_EXPORT_TABLE(_euc2unibecommon_table00, 0xF4A7, jkc::tables::euc_standard().characters);
JKC_EXPORT_TABLE(_unibe2euccommon_table, jkc::tables::kEncodedCharacters, jkc::tables::make_encoding());
