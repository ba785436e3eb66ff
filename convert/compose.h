// Composes a base character and a combining mark.
#pragma once

#include "core/unicode.h"

namespace jkc {

// Whether the conversion composes: the caller wants it, and the judgement saw something to compose.
inline bool composes(const JkcContext &ctx) { return ctx.utfmac_to != 0 && ctx.utfmac_exists != 0; }

// The composed character, or 0 when the pair does not compose. `bits` are the class bits of the base.
constexpr uint32_t compose(uint32_t base, uint16_t bits, uint32_t mark) {
    switch (mark) {
    case kVoicedMark:
        if ((bits & kTakesVoicedMark) == 0) {
            return 0;
        }
        switch (base) { // whose voiced form is not the next code point
        case 0x3046:
            return 0x3094;
        case 0x30A6:
            return 0x30F4;
        case 0x30EF:
            return 0x30F7;
        case 0x30F0:
            return 0x30F8;
        case 0x30F1:
            return 0x30F9;
        case 0x30F2:
            return 0x30FA;
        default:
            return base + 1;
        }
    case kSemiVoicedMark:
        return (bits & kTakesSemiVoicedMark) != 0 ? base + 2 : 0;
    case kBreve:
        if ((bits & kTakesBreve) == 0) {
            return 0;
        }
        return base == 0x0438 ? 0x0439 : base == 0x0418 ? 0x0419 : 0;
    case kDiaeresis:
        if ((bits & kTakesDiaeresis) == 0) {
            return 0;
        }
        return base == 0x0435 ? 0x0451 : base == 0x0415 ? 0x0401 : 0;
    default:
        return 0;
    }
}

} // namespace jkc
