// EUC-JP as Microsoft code page 20932: the standard mapping, with JIS X 0212 in three bytes.
#include "tables/euc.h"
#include "tables/export.h"

namespace jkc::tables {
namespace {

constexpr auto kThreeByteDecoding = euc_20932_three_bytes().characters;

constexpr auto make_encoding() {
    EncodingTable<uint32_t> table{};
    add_inverse(table, euc_standard().characters);
    add_inverse(table, kThreeByteDecoding, kSs3Prefix);
    table[0xFF5E] = 0; // decoded from JIS X 0212 but not encoded: other variants have it at A1C1
    add_microsoft_look_alikes(table, euc_from_jis);
    table[0xFFE4] = 0x8FA2C3; // the full-width broken bar, beside U+00A6
    table[kYenSign] = 0x5C;
    return table;
}

} // namespace
} // namespace jkc::tables

JKC_EXPORT_TABLE(_euc2unibe20932_table00, 0xF4A7, jkc::tables::euc_standard().characters);
JKC_EXPORT_TABLE(_euc2unibe20932_table8f, jkc::tables::kThreeByteDecoding.size(), jkc::tables::kThreeByteDecoding);
JKC_EXPORT_TABLE(_unibe2euc20932_table, jkc::tables::kEncodedCharacters, jkc::tables::make_encoding());
