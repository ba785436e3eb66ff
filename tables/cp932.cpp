// Shift_JIS as Microsoft code page 932.
#include "tables/export.h"
#include "tables/microsoft_jis.h"
#include "tables/table_builder.h"

namespace jkc::tables {
namespace {

constexpr uint32_t kUserDefinedCell = 94 * kCellsPerRow; // F040
constexpr uint32_t kUserDefinedCount = 20 * kCellsPerRow;

constexpr auto make_decoding() {
    DecodingTable<kTwoByteCodes> table;
    table.add_identical(0x01, 0x80);
    table.add_katakana(0xA1);
    // Unassigned bytes, which the code page maps to private-use characters.
    table.add(0xA0, 0xF8F0);
    table.add(0xFD, 0xF8F1);
    table.add(0xFE, 0xF8F2);
    table.add(0xFF, 0xF8F3);
    const auto add_jis = [&](uint32_t jis, char32_t character) { table.add(sjis_from_jis(jis), character); };
    for_each_microsoft_0208(add_jis);
    for_each_character(kNecRow13, add_jis);
    // ED40 to EEFC would only repeat these, so they stay unmapped.
    for_each_character(kIbmExtension, [&](uint32_t sjis, char32_t character) { table.add(sjis, character); });
    for (uint32_t i = 0; i < kUserDefinedCount; ++i) {
        table.add(sjis_code(kUserDefinedCell + i), 0xE000 + i);
    }
    return table.characters;
}
constexpr auto kDecoding = make_decoding();

constexpr auto make_encoding() {
    EncodingTable<uint16_t> table{};
    add_inverse(table, kDecoding);
    add_standard_look_alikes(table, sjis_from_jis);
    table[kYenSign] = 0x5C; // Japanese fonts show 5C as a yen sign
    return table;
}

} // namespace
} // namespace jkc::tables

JKC_EXPORT_TABLE(_sjis2unibe932_table, 0xFC4C, jkc::tables::kDecoding);
JKC_EXPORT_TABLE(_unibe2sjis932_table, jkc::tables::kEncodedCharacters, jkc::tables::make_encoding());
