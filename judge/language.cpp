#include "judge/language.h"

#include <array>
#include <iterator>

#include "core/internal.h"
#include "tables/characters.h"
#include "tables/single_shifts.h"

namespace jkc {

namespace {

constexpr int kCells = 94;

struct CommonnessRow {
    uint8_t row; // of the JIS code
    char digits[kCells + 1];
};

constexpr CommonnessRow kCommonness[] = {
#include "tables/data/commonness.inc"
};

constexpr int32_t digit_value(char digit) { return digit <= '9' ? digit - '0' : digit - 'a' + 10; }

constexpr int kFirstRow = 0x21;
constexpr int kRows = 0x7E - kFirstRow + 1;

// A code that no text should have, such as one between the charts.
constexpr int32_t kRareBits = 21;

constexpr auto kRowOf = [] {
    std::array<uint8_t, kRows> places{};
    for (size_t i = 0; i < std::size(kCommonness); ++i) {
        places[static_cast<size_t>(kCommonness[i].row - kFirstRow)] = static_cast<uint8_t>(i + 1);
    }
    return places;
}();

// Bits for each half-width form from A1 to DF within its class.
constexpr char kHalfWidthBits[] = "22222c54a565553143555553645335645742668572313356555779433446200";

// Bits from the class of the line to that of the column, both in the order of CharClass. Counted in prose, and in katakana
// words of the same prose written half-width; those of classes that it lacks are estimates.
// clang-format off
constexpr uint8_t kTransitions[kCharClasses][kCharClasses - 1] = {
// edge spc let dig pun  hir kat kan sym wid  hlf voi bth fol vmk smk hpn  fle fsy scr  ctl ill
    {6,  3,  3,  4,  4,   3,  3,  2,  6,  8,   8,  8,  9, 15, 20, 20, 11,   9,  9, 10,  20, 22}, // edge
    {6,  3,  2,  4,  3,   3,  4,  4,  6,  8,   9,  9, 10, 16, 20, 20, 12,   9,  9, 10,  20, 22}, // space
    {6,  3,  0,  6,  4,   8,  9,  9,  8, 12,  13, 13, 14, 18, 22, 22, 14,   5,  9, 16,  20, 22}, // letter
    {5,  2,  5,  2,  2,   6,  8,  6,  7, 10,  11, 11, 12, 16, 22, 22, 14,  12,  8, 16,  20, 22}, // digit
    {3,  3,  2,  4,  3,   3,  5,  3,  6, 10,   9,  9, 10, 16, 20, 20, 12,   9,  9, 12,  20, 22}, // punctuation
    {6,  5,  9, 10,  5,   1,  4,  2,  3, 11,  13, 13, 14, 20, 24, 24, 15,  17, 12, 20,  20, 22}, // hiragana
    {5,  5, 10,  9,  6,   3,  0,  4,  5, 12,  14, 14, 15, 20, 24, 24, 15,  17, 12, 20,  20, 22}, // katakana
    {6,  6, 10,  9,  4,   1,  5,  1,  5, 11,  13, 13, 14, 20, 24, 24, 15,  17, 12, 20,  20, 22}, // kanji
    {2,  3,  4,  6,  5,   3,  3,  3,  4, 10,  11, 11, 12, 20, 24, 24, 14,  14, 10, 16,  20, 22}, // symbol
    {4,  4,  5,  5,  4,   3,  4,  2,  4,  2,  13, 13, 14, 20, 24, 24, 15,  17, 12, 20,  20, 22}, // wide
    {4,  5,  8,  8,  7,   8,  9,  7,  8, 10,   2,  2,  4,  2, 15, 15,  6,  20, 16, 24,  22, 22}, // half-width: plain
    {4,  5,  8,  8,  7,   8,  9,  7,  8, 10,   3,  3,  5,  2,  2, 15,  6,  20, 16, 24,  22, 22}, // voiced
    {6,  7, 10, 10,  9,  10, 11,  9, 10, 12,   4,  5,  6,  2,  2,  2,  8,  20, 16, 24,  22, 22}, // both marks
    {4,  5,  8,  8,  7,   8,  9,  7,  8, 10,   3,  1,  3,  3, 15, 15,  6,  20, 16, 24,  22, 22}, // follower
    {4,  5,  8,  8,  7,   8,  9,  7,  8, 10,   2,  3,  4,  2, 15, 15,  6,  20, 16, 24,  22, 22}, // voiced mark
    {4,  5,  8,  8,  7,   8,  9,  7,  8, 10,   2,  3,  5,  2, 15, 15,  6,  20, 16, 24,  22, 22}, // semi-voiced mark
    {3,  4,  7,  7,  6,   6,  7,  5,  7, 10,   3,  3,  4, 10, 18, 18,  6,  20, 16, 24,  22, 22}, // punctuation
    {6,  3,  1,  9,  4,  15, 15, 15, 10, 15,  17, 17, 18, 22, 24, 24, 20,   4, 11, 12,  20, 22}, // foreign letter
    {4,  3,  4,  4,  4,  10, 10, 10, 10, 12,  13, 13, 14, 20, 24, 24, 16,   9,  6, 12,  20, 22}, // foreign symbol
    {6,  3, 12,  7,  4,  16, 16, 16, 10, 16,  20, 20, 20, 24, 24, 24, 20,  14, 12,  1,  20, 22}, // other script
    {8,  6,  4,  6,  6,  10, 10, 10, 10, 12,  14, 14, 14, 20, 24, 24, 16,  14, 14, 16,   4, 22}, // control
    {8,  6,  4,  6,  6,   4,  6,  4,  8, 10,  10, 10, 11, 14, 16, 16, 12,  10, 10, 12,  20,  8}, // ill-formed
    {6,  4,  3,  4,  4,   2,  3,  2,  4,  8,   9,  9, 10,  9, 16, 16, 11,   9,  9, 10,  20, 22}, // start
};
// clang-format on

// Bits of a character within its class.
constexpr int32_t kLowerCaseBits = 4;
constexpr int32_t kUpperCaseBits = 6;
constexpr int32_t kDigitBits = 3;
constexpr int32_t kPunctuationBits = 4;
constexpr int32_t kScriptLetterBits = 6;
constexpr int32_t kUncommonScriptBits = 9;

constexpr CharClass class_of_half_width(uint8_t byte) {
    if (byte < 0xA6) {
        return CharClass::kHalfPunctuation;
    }
    if (byte <= 0xB0 || byte == 0xDD) {
        return CharClass::kFollower;
    }
    if (byte >= 0xDE) {
        return byte == 0xDE ? CharClass::kVoicedMark : CharClass::kSemiVoicedMark;
    }
    if (byte >= 0xCA && byte <= 0xCE) {
        return CharClass::kBothMarks;
    }
    return (byte >= 0xB6 && byte <= 0xC4) || byte == 0xB3 ? CharClass::kVoiced : CharClass::kHalf;
}

constexpr CharClass class_of_jis(uint32_t jis) {
    constexpr uint32_t kLongVowelMark = 0x213C;
    constexpr uint32_t kRepeatedKanji = 0x2139;
    constexpr uint32_t kShime = 0x213A;
    constexpr uint32_t kFirstKanjiRow = 0x30;
    const uint32_t row = jis >> 8;
    if (jis == kLongVowelMark || row == 0x25) {
        return CharClass::kKatakana;
    }
    if (jis == kRepeatedKanji || jis == kShime || row >= kFirstKanjiRow) {
        return CharClass::kKanji;
    }
    return row == 0x24 ? CharClass::kHiragana : row == 0x23 ? CharClass::kWide : CharClass::kSymbol;
}

} // namespace

int32_t transition_cost(CharClass from, CharClass to) {
    return kTransitions[static_cast<int>(from)][static_cast<int>(to)] * kBit;
}

Character ascii_character(uint8_t byte) {
    constexpr uint8_t kDelete = 0x7F;
    if (byte == '\n' || byte == '\r') {
        return {CharClass::kEdge, 1, 0};
    }
    if (byte == ' ' || byte == '\t') {
        return {CharClass::kSpace, 1, 0};
    }
    if (byte < ' ' || byte == kDelete) {
        return {CharClass::kControl, 1, 0};
    }
    if (byte >= '0' && byte <= '9') {
        return {CharClass::kDigit, 1, kDigitBits * kBit};
    }
    if (byte >= 'a' && byte <= 'z') {
        return {CharClass::kLetter, 1, kLowerCaseBits * kBit};
    }
    if (byte >= 'A' && byte <= 'Z') {
        return {CharClass::kLetter, 1, kUpperCaseBits * kBit};
    }
    return {CharClass::kPunctuation, 1, kPunctuationBits * kBit};
}

Character half_width_katakana(uint8_t byte, uint8_t length) {
    return {class_of_half_width(byte), length, digit_value(kHalfWidthBits[byte - 0xA1]) * kBit};
}

Character rare_kanji(uint8_t length) { return {CharClass::kKanji, length, kRareBits * kBit}; }

Character jis_character(uint32_t jis, uint8_t length) {
    const size_t place = kRowOf[(jis >> 8) - kFirstRow];
    if (place == 0) {
        return rare_kanji(length);
    }
    const char digit = kCommonness[place - 1].digits[(jis & 0xFF) - kFirstRow];
    const int32_t bits = digit == '\0' || digit == ' ' ? kRareBits : digit_value(digit);
    return {class_of_jis(jis), length, bits * kBit};
}

Character unicode_character(uint32_t c, uint8_t length) {
    if (c < 0x80) {
        Character ascii = ascii_character(static_cast<uint8_t>(c));
        ascii.length = length;
        return ascii;
    }
    if (c < 0xA0) {
        return {CharClass::kControl, length, 0};
    }
    if (is_half_width_katakana(c)) {
        return half_width_katakana(static_cast<uint8_t>(c - kFirstHalfWidthKatakana + 0xA1), length);
    }
    if (c < 0xC0 || c == 0xD7 || c == 0xF7) {
        return {CharClass::kForeignSymbol, length, 5 * kBit};
    }
    if (c < 0x250) {
        return {CharClass::kForeignLetter, length, (c < 0x100 ? c >= 0xE0 ? 5 : 6 : 7) * kBit};
    }
    if (c >= 0x370 && c < 0x700) { // Greek, Cyrillic, Hebrew, Arabic
        return {CharClass::kOtherScript, length, kScriptLetterBits * kBit};
    }
    for (const uint16_t *table : {_unibe2euccommon_table, _unibe2euc51932_table}) {
        const uint32_t euc = c < _unibe2euccommon_table_size ? table[c] : 0;
        if (euc >= 0xA1A1) {
            return jis_character(euc & 0x7F7F, length);
        }
    }
    if (c >= 0x2010 && c <= 0x2BFF) {
        return {CharClass::kForeignSymbol, length, kUncommonScriptBits * kBit};
    }
    const bool private_or_none = (c >= 0xD800 && c < 0xF900) || (c & 0xFFFE) == 0xFFFE;
    if (private_or_none) {
        return {CharClass::kIllFormed, length, 0};
    }
    const bool ideograph = c >= 0x3400 && c < 0xA000;
    return {ideograph ? CharClass::kKanji : CharClass::kOtherScript, length,
            (ideograph ? kRareBits : kUncommonScriptBits) * kBit};
}

} // namespace jkc
