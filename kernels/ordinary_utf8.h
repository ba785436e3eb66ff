// Which characters are ordinary in UTF-8: U+2000 to U+203F and the arrows, and those of the lead bytes E3 to E9 and EF but for U+302A to U+3040, U+3097 to
// U+309A, U+30A0, U+3100 to U+4DFF, U+9F80 to U+9FFF and, of EF, everything but U+FF01 to U+FFBE. All of them are text,
// and from E3 81 to E3 83 they are kana.
#pragma once

#include "core/wide.h"

namespace jkc {

// For vectors of any width: those of core/wide.h, and those of the kernels.
struct OrdinaryUtf8 {
    template <class V>
    static auto lead(V first) {
        return between(first, 0xE2, 0xE9) | equals(first, 0xEF);
    }
    template <class V>
    static auto trail(V bytes) {
        return equals_masked<0xC0>(bytes, 0x80);
    }
    // Given that `first` is such a lead byte.
    template <class V>
    static auto character(V first, V second, V third) {
        const auto seconds = ordered(second);
        const auto thirds = ordered(third);
        const auto mark = equals(second, 0x80) & above(thirds, 0xA9);
        const auto no_hiragana = equals(second, 0x81) & equals(third, 0x80);
        const auto no_katakana =
            equals(second, 0x82) & ((above(thirds, 0x96) & ~above(thirds, 0x9A)) | equals(third, 0xA0));
        const auto not_of_e3 = equals(first, 0xE3) & (above(seconds, 0x83) | mark | no_hiragana | no_katakana);
        const auto arrow = equals(second, 0x86) & above(thirds, 0x8F);
        const auto not_of_e2 = equals(first, 0xE2) & ~(equals(second, 0x80) | arrow);
        const auto not_of_e4 = equals(first, 0xE4) & ~above(seconds, 0xB7);
        const auto not_of_e9 = equals(first, 0xE9) & above(seconds, 0xBD);
        const auto edges = (equals(second, 0xBC) & equals(third, 0x80)) | (equals(second, 0xBE) & equals(third, 0xBF));
        const auto not_of_ef = equals(first, 0xEF) & (~above(seconds, 0xBB) | above(seconds, 0xBE) | edges);
        return trail(second) & trail(third) & ~(not_of_e2 | not_of_e3 | not_of_e4 | not_of_e9 | not_of_ef);
    }
    template <class V>
    static auto kana(V first, V second) {
        return equals(first, 0xE3) & above(ordered(second), 0x80);
    }
};

} // namespace jkc
