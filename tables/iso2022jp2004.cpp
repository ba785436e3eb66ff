// ISO-2022-JP with the two planes of JIS X 0213:2004.
#include <algorithm>

#include "tables/export.h"
#include "tables/jis_designations.h"
#include "tables/microsoft_jis.h"
#include "tables/table_builder.h"

namespace jkc::tables {
namespace {

constexpr uint32_t kPlane2First = 0x2120; // the code of entry 0
constexpr uint32_t kSupplementaryFirst = 0x20000;
constexpr uint32_t kSupplementaryLast = 0x2A6B2;

// The ten characters that the edition of 2004 added to plane 1.
constexpr uint32_t kAddedIn2004[] = {0x2E21, 0x2F7E, 0x4F54, 0x4F7E, 0x7427, 0x7E7A, 0x7E7B, 0x7E7C, 0x7E7D, 0x7E7E};

struct Decoding {
    std::array<uint32_t, kTwoByteCodes> plane1{};
    std::array<uint32_t, 0x7E80 - kPlane2First> plane2{};
};

struct Encoding {
    EncodingTable<uint16_t> codes{};
    EncodingTable<uint8_t> designations{};
    std::array<uint16_t, kSupplementaryLast - kSupplementaryFirst + 1> supplementary_codes{};
    std::array<uint8_t, kSupplementaryLast - kSupplementaryFirst + 1> supplementary_designations{};

    constexpr Encoding() {
        designations.fill(JisDesignation::kOutsideJis);
        supplementary_designations.fill(JisDesignation::kOutsideJis);
    }

    constexpr void add(char32_t character, uint32_t code, JisDesignation designation) {
        if (character >= kSupplementaryFirst) {
            supplementary_codes[character - kSupplementaryFirst] = static_cast<uint16_t>(code);
            supplementary_designations[character - kSupplementaryFirst] = designation;
        } else {
            codes[character] = static_cast<uint16_t>(code);
            designations[character] = designation;
        }
    }
};

struct Tables {
    Decoding decoding;
    Encoding encoding;
};

constexpr Tables make_tables() {
    Tables tables;
    Decoding &decoding = tables.decoding;
    Encoding &encoding = tables.encoding;

    for (uint32_t byte = 0; byte < 0x7F; ++byte) {
        decoding.plane1[byte] = byte;
        encoding.add(byte, byte, JisDesignation::kAscii);
    }
    encoding.add(0x7F, 0x7F, JisDesignation::kOutsideJis);
    for (uint32_t i = 0; i < kHalfWidthKatakanaCount; ++i) {
        encoding.add(kFirstHalfWidthKatakana + i, 0x21 + i, JisDesignation::kKatakana);
    }

    // Codes of JIS X 0208 are mapped as in code page 50221.
    for_each_microsoft_0208([&](uint32_t jis, char32_t character) {
        decoding.plane1[jis] = character;
        encoding.add(character, jis, JisDesignation::kJisX0208);
    });
    for (const LookAlike &pair : kLookAlikes) {
        encoding.add(pair.standard, pair.jis, JisDesignation::kJisX0208);
    }
    // Plane 1 has ～, ∥ and － at codes of its own too. As these come last, they are the ones encoded.
    for_each_character(kJisX0213Plane1, [&](uint32_t jis, char32_t character) {
        decoding.plane1[jis] = character;
        const bool is_new = std::find(std::begin(kAddedIn2004), std::end(kAddedIn2004), jis) != std::end(kAddedIn2004);
        encoding.add(character, jis,
                     is_new ? JisDesignation::kJisX0213Plane1Of2004 : JisDesignation::kJisX0213Plane1Of2000);
    });
    for_each_character(kJisX0213Plane2, [&](uint32_t jis, char32_t character) {
        decoding.plane2[jis - kPlane2First] = character;
        encoding.add(character, jis, JisDesignation::kJisX0213Plane2);
    });

    // JIS X 0213 has the em dash where JIS X 0208 has the horizontal bar, and the full-width not sign stands for its
    // not sign: both are designated as plane 1.
    encoding.add(0x2014, 0x213D, JisDesignation::kJisX0213Plane1Of2000);
    encoding.add(0xFFE2, 0x224C, JisDesignation::kJisX0213Plane1Of2000);
    // JIS X 0213 lacks these: the codes of their full-width forms are designated as JIS X 0201 Roman.
    encoding.add(kYenSign, 0x216F, JisDesignation::kRoman);
    encoding.add(kOverline, 0x2131, JisDesignation::kRoman);
    return tables;
}
constexpr Tables kTables = make_tables();

} // namespace
} // namespace jkc::tables

using jkc::tables::kTables;

JKC_EXPORT_TABLE(_jis2unibe2022jp2004_table01, 0x7E80, kTables.decoding.plane1);
JKC_EXPORT_TABLE(_jis2unibe2022jp2004_table02, kTables.decoding.plane2.size(), kTables.decoding.plane2);
extern "C" const uint64_t _jis2unibe2022jp2004_table02_offset = jkc::tables::kPlane2First;

JKC_EXPORT_TABLE(_unibe2jis2022jp2004_table, jkc::tables::kEncodedCharacters, kTables.encoding.codes);
JKC_EXPORT_TABLE(_unibe2jis2022jp2004_table_bits, jkc::tables::kEncodedCharacters, kTables.encoding.designations);
JKC_EXPORT_TABLE(_unibe2jis2022jp2004_table_srg, kTables.encoding.supplementary_codes.size(),
                 kTables.encoding.supplementary_codes);
JKC_EXPORT_TABLE(_unibe2jis2022jp2004_table_srg_bits, kTables.encoding.supplementary_designations.size(),
                 kTables.encoding.supplementary_designations);
// Unused here; kept for programs that link to it.
extern "C" const uint64_t _unibe2jis2022jp2004_table_srg_bits_offset = 11808;
