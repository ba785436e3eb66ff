/** eucJP-ms: Microsoft's mapping, with JIS X 0212 and the IBM extension in three bytes. */
#include "tables/euc.h"
#include "tables/export.h"
#include "tables/microsoft_jis.h"

namespace jkc::tables {
namespace {

constexpr EucTable make_two_byte_decoding() {
    EucTable table = euc_single_bytes();
    // The control characters of the upper half, but for those that open two- and three-byte codes.
    table.add_identical(0x80, 0x8D);
    table.add_identical(0x90, 0x9F);
    const auto add = [&](uint32_t jis, char32_t character) { table.add(euc_from_jis(jis), character); };
    for_each_microsoft_0208(add);
    for_each_character(kNecRow13, add);
    return table;
}
constexpr EucTable kTwoByte = make_two_byte_decoding();

constexpr auto make_three_byte_decoding() {
    DecodingTable<0xF4FF> table;
    // What the two-byte codes have (№ of JIS X 0212, thirteen symbols of the IBM rows) is not mapped twice.
    table.claimed = kTwoByte.claimed;
    const auto add = [&](uint32_t jis, char32_t character) { table.add(euc_from_jis(jis), character); };
    // The full-width tilde is A1C1 here, so the tilde of JIS X 0212 is read as the other of the two look-alikes.
    add(0x2237, 0x301C);
    add(0x2243, 0xFFE4); // the full-width broken bar, where the standard mapping has U+00A6
    for_each_character(kJisX0212, [&](uint32_t jis, char32_t character) {
        if (jis != 0x2237 && jis != 0x2243) {
            add(jis, character);
        }
    });
    for_each_character(kEucJpMsIbmRows, add);
    return table.characters;
}
constexpr auto kThreeByteDecoding = make_three_byte_decoding();

constexpr auto make_encoding() {
    EncodingTable<uint32_t> table{};
    add_inverse(table, kTwoByte.characters);
    add_inverse(table, kThreeByteDecoding, kThreeBytes);
    add_standard_look_alikes(table, euc_from_jis); // the wave dash goes to A1C1, not to 8FA2B7
    table[kYenSign] = 0x5C;
    return table;
}

} // namespace
} // namespace jkc::tables

JKC_EXPORT_TABLE(_euc2unibems_table00, 0xF4A7, jkc::tables::kTwoByte.characters);
JKC_EXPORT_TABLE(_euc2unibems_table8f, jkc::tables::kThreeByteDecoding.size(), jkc::tables::kThreeByteDecoding);
JKC_EXPORT_TABLE(_unibe2eucms_table, jkc::tables::kEncodedCharacters, jkc::tables::make_encoding());
