// The designations of ISO-2022-JP, by the numbers that the exported `_bits` tables hold.
#pragma once

#include <cstdint>

namespace jkc {

enum JisDesignation : uint8_t {
    kAscii = 0,                // ESC ( B
    kKatakana = 1,             // ESC ( I
    kRoman = 2,                // ESC ( J
    kJisX0208Of1978 = 3,       // ESC $ @
    kJisX0208 = 4,             // ESC $ B
    kNoDesignation = 5,        // no escape sequence
    kJisX0212 = 6,             // ESC $ ( D
    kJisX0213Plane1Of2000 = 7, // ESC $ ( O
    kJisX0213Plane1Of2004 = 8, // ESC $ ( Q, for what the edition of 2004 added
    kJisX0213Plane2 = 9,       // ESC $ ( P
    kJisDesignations,          // how many there are
    kOutsideJis = 255          // of characters that the code type lacks
};

} // namespace jkc
