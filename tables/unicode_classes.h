// The class bits of a BMP code point, which _unibe_def_table holds.
#pragma once

#include <cstdint>

namespace jkc {

enum ClassBits : uint16_t {
    kEvidence = 0x0003,            // speaks for Japanese text
    kPossible = 0x0200,            // with kEvidence: may stand in a text, but says little
    kAnyText = 0x0203,             // either of the two
    kTakesVoicedMark = 0x0010,     // composes with U+3099
    kTakesSemiVoicedMark = 0x0020, // composes with U+309A
    kTakesDiaeresis = 0x0040,      // composes with U+0308
    kTakesBreve = 0x0080,          // composes with U+0306
    kTakesAnyMark = 0x0400,        // set beside each of the four; only programs outside read it
    kKanaBase = kTakesVoicedMark | kTakesSemiVoicedMark,
    kCyrillicBase = kTakesDiaeresis | kTakesBreve,
    kAnyBase = kKanaBase | kCyrillicBase
};

} // namespace jkc
