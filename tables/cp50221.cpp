// ISO-2022-JP with the repertoire of Microsoft code page 50221.
#include "tables/export.h"
#include "tables/jis_designations.h"
#include "tables/microsoft_jis.h"
#include "tables/table_builder.h"

namespace jkc::tables {
namespace {

constexpr auto make_decoding() {
    DecodingTable<kTwoByteCodes> table;
    table.add_identical(0x01, 0x7F);
    for_each_microsoft_jis([&](uint32_t jis, char32_t character) { table.add(jis, character); });
    return table.characters;
}
constexpr auto kDecoding = make_decoding();

constexpr auto make_encoding() {
    EncodingTable<uint16_t> table{};
    add_inverse(table, kDecoding);
    add_standard_look_alikes(table, [](uint32_t jis) { return jis; });
    for (uint32_t i = 0; i < kHalfWidthKatakanaCount; ++i) {
        table[kFirstHalfWidthKatakana + i] = static_cast<uint16_t>(0x21 + i);
    }
    // The two characters in which JIS X 0201 differs from ASCII.
    table[kYenSign] = 0x5C;
    table[kOverline] = 0x7E;
    return table;
}
constexpr auto kEncoding = make_encoding();

constexpr JisDesignation designation_of(uint32_t character) {
    constexpr uint32_t kFullWidthTilde = 0xFF5E;
    constexpr uint32_t kFullWidthBrokenBar = 0xFFE4;
    constexpr uint32_t kKanji663B = U'昻';

    // Single bytes, for which the encoder does not look here.
    if (character == '~' || character == 0x7F || character == kYenSign) {
        return JisDesignation::kOutsideJis;
    }
    if (character < 0x7F) {
        return JisDesignation::kAscii;
    }
    if (is_half_width_katakana(character)) {
        return JisDesignation::kKatakana;
    }
    const uint32_t jis = kEncoding[character];
    if (jis == 0) {
        return JisDesignation::kOutsideJis;
    }
    // Rows 89 to 92 are no part of JIS X 0208: they are designated as JIS X 0212, as is the full-width tilde, which JIS
    // X 0212 has. Two characters of these rows are designated as JIS X 0208 all the same.
    const bool is_nec_selected = jis >= 0x7921 && character != kFullWidthBrokenBar && character != kKanji663B;
    return is_nec_selected || character == kFullWidthTilde ? JisDesignation::kJisX0212 : JisDesignation::kJisX0208;
}

constexpr auto make_designations() {
    EncodingTable<uint8_t> designations{};
    for (uint32_t character = 0; character < designations.size(); ++character) {
        designations[character] = designation_of(character);
    }
    return designations;
}

} // namespace
} // namespace jkc::tables

JKC_EXPORT_TABLE(_jis2unibe50221_table, 0x7C7F, jkc::tables::kDecoding);
JKC_EXPORT_TABLE(_unibe2jis50221_table, jkc::tables::kEncodedCharacters, jkc::tables::kEncoding);
JKC_EXPORT_TABLE(_unibe2jis50221_table_bits, jkc::tables::kEncodedCharacters, jkc::tables::make_designations());
