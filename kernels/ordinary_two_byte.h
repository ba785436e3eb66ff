// Which codes are ordinary in Shift_JIS and EUC: the rows that make up nearly all of a text, without the unmapped
// cells. For vectors of any width: those of core/wide.h, and those of the kernels.
//
// single() tells which bytes are neither lead bytes nor ASCII; code() whether a lead byte and the byte behind it are an
// ordinary code; kana() whether an ordinary code is a kana; katakana() where half-width katakana begin, if not at a
// trail byte.
#pragma once

#include "core/bytes.h"
#include "core/wide.h"
#include "judge/scan/katakana_runs.h"

namespace jkc {

struct OrdinarySjis {
    using Katakana = KatakanaRuns<1>;

    template <class V>
    static auto single(V first) {
        return katakana(first, first) | equals(first, kEsc);
    }
    template <class V>
    static auto katakana(V first, V /*second*/) {
        return between(first, 0xA1, 0xDF);
    }
    template <class V>
    static auto code(V first, V second) {
        constexpr uint8_t kJoin = 0xA0; // joins the lead bytes 81 to 9F and E0 to FC
        const auto rows = ordered(flipped<kJoin>(first));
        const auto trails = ordered(second);
        const auto begins_late = equals(first, 0x82) | equals(first, 0x88);
        const auto no_row = above(rows, 0xE9 ^ kJoin) | equals_masked<0xFC>(first, 0x84);
        const auto no_trail = above(trails, 0xFC) | equals(second, 0x7F);
        const auto no_symbol = equals(first, 0x81) & above(trails, 0xAC);
        const auto no_hiragana = equals(first, 0x82) & above(trails, 0xF1);
        const auto no_katakana = equals(first, 0x83) & above(trails, 0x93);
        const auto between_levels = equals(first, 0x98) & above(trails, 0x72);
        return above(rows, 0x80 ^ kJoin) & above(trails, 0x3F) &
               ~(no_row | no_trail | no_symbol | no_hiragana | no_katakana | between_levels |
                 (begins_late & ~above(trails, 0x9E)));
    }
    template <class V>
    static auto kana(V first) {
        return equals_masked<0xFE>(first, 0x82);
    }
};

struct OrdinaryEuc {
    using Katakana = KatakanaRuns<2>;

    template <class V>
    static auto single(V first) {
        return none(first);
    }
    template <class V>
    static auto katakana(V first, V second) {
        return equals(first, kSs2) & between(second, 0xA1, 0xDF);
    }
    template <class V>
    static auto code(V first, V second) {
        const auto rows = ordered(first);
        const auto trails = ordered(second);
        const auto kanji = above(rows, 0xAF) & ~above(rows, 0xF3);
        const auto no_kana = kana(first) & above(trails, 0xF3);
        const auto between_levels = equals(first, 0xCF) & above(trails, 0xD3);
        return (kanji | kana(first) | equals(first, 0xA1)) & above(trails, 0xA0) &
               ~(equals(second, 0xFF) | no_kana | between_levels);
    }
    template <class V>
    static auto kana(V first) {
        return equals_masked<0xFE>(first, 0xA4);
    }
};

} // namespace jkc
