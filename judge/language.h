// How likely a Japanese text is, as a number: the fewer bits tell it, the likelier it is. The cost of a character is that
// of its class behind the class before it, and that of the character within its class.
#pragma once

#include <cstdint>

namespace jkc {

enum class CharClass : uint8_t {
    kEdge, // a line end
    kSpace,
    kLetter, // ASCII
    kDigit,
    kPunctuation,
    kHiragana,
    kKatakana,
    kKanji,
    kSymbol,    // other characters of Japanese charts
    kWide,      // full-width letters and digits
    kHalf,      // half-width katakana: those that a word may begin with and that take no mark,
    kVoiced,    // those that take the voiced mark,
    kBothMarks, // those that take the semi-voiced mark too,
    kFollower,  // those that no word begins with,
    kVoicedMark,
    kSemiVoicedMark,
    kHalfPunctuation,
    kForeignLetter, // Latin with a diacritic
    kForeignSymbol,
    kOtherScript,
    kControl, // what no text has
    kIllFormed,
    kStart, // in front of the first character
};
constexpr int kCharClasses = static_cast<int>(CharClass::kStart) + 1;

// Costs are in quarters of a bit.
constexpr int32_t kBit = 4;

struct Character {
    CharClass char_class;
    uint8_t length; // in bytes; 0: the end of the text cuts it
    int32_t cost;   // within its class
};

int32_t transition_cost(CharClass from, CharClass to);

Character ascii_character(uint8_t byte);
Character half_width_katakana(uint8_t byte, uint8_t length); // A1 to DF
Character jis_character(uint32_t jis, uint8_t length);       // 2121 to 7E7E
Character unicode_character(uint32_t code_point, uint8_t length);
Character rare_kanji(uint8_t length);

} // namespace jkc
