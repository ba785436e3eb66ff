/** The character sets of an ISO-2022-JP text, by the numbers that the tables of sets hold. */
#pragma once

#include <cstdint>

namespace jkc {

enum JisSet : uint8_t {
    kAscii = 0,             // ESC ( B
    kKatakana = 1,          // ESC ( I
    kRoman = 2,             // ESC ( J
    kJisC6226 = 3,          // ESC $ @
    kJisX0208 = 4,          // ESC $ B
    kNoSet = 5,             // no sequence
    kJisX0212 = 6,          // ESC $ ( D
    kJisX0213Plane1 = 7,    // ESC $ ( O
    kJisX0213Plane1New = 8, // ESC $ ( Q, for what the edition of 2004 added
    kJisX0213Plane2 = 9,    // ESC $ ( P
    kJisSets,               // how many there are
    kOutsideJis = 255       // of characters that the code type lacks
};

} // namespace jkc
