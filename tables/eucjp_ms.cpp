// eucJP-ms: Microsoft's mapping, with JIS X 0212 and the IBM extension in three bytes.
#include "tables/euc.h"
#include "tables/export.h"

namespace jkc::tables {
namespace {

constexpr auto kDecoding = euc_ms().characters;
constexpr auto kThreeByteDecoding = euc_ms_three_bytes().characters;

constexpr auto make_encoding() {
    EncodingTable<uint32_t> table{};
    add_inverse(table, kDecoding);
    add_inverse(table, kThreeByteDecoding, kSs3Prefix);
    add_standard_look_alikes(table, euc_from_jis); // the wave dash goes to A1C1, not to 8FA2B7
    table[kYenSign] = 0x5C;
    return table;
}

} // namespace
} // namespace jkc::tables

JKC_EXPORT_TABLE(_euc2unibems_table00, 0xF4A7, jkc::tables::kDecoding);
JKC_EXPORT_TABLE(_euc2unibems_table8f, jkc::tables::kThreeByteDecoding.size(), jkc::tables::kThreeByteDecoding);
JKC_EXPORT_TABLE(_unibe2eucms_table, jkc::tables::kEncodedCharacters, jkc::tables::make_encoding());
