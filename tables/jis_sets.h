#pragma once

#include <cstdint>

namespace jkc::tables {

/** What the tables of character sets hold: the designation that an ISO-2022-JP text needs for a character. */
enum class JisSet : uint8_t {
    kAscii = 0,             // ESC ( B
    kKatakana = 1,          // ESC ( I
    kRoman = 2,             // ESC ( J
    kJisX0208 = 4,          // ESC $ B
    kJisX0212 = 6,          // ESC $ ( D
    kJisX0213Plane1 = 7,    // ESC $ ( O
    kJisX0213Plane1New = 8, // ESC $ ( Q, for what the edition of 2004 added
    kJisX0213Plane2 = 9,    // ESC $ ( P
    kNoSet = 255
};

} // namespace jkc::tables
