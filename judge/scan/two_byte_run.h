// Counts runs of ordinary Japanese text in Shift_JIS and EUC, 32 bytes at a time.
//
// A trail byte may look like a lead byte. But in a row of bytes that all look like lead bytes, every second one is a
// lead byte, from the first on. The row ends at a byte that cannot be one: the trail byte of the last lead byte, or a
// character by itself.
#pragma once

#include "core/bytes.h"
#include "judge/scan/katakana_runs.h"
#include "judge/scan/ordinary_run.h"

namespace jkc {

// Which codes are ordinary: the rows that make up nearly all of a text, without the unmapped cells.
//
// single() tells which bytes are neither lead bytes nor ASCII; code() whether a lead byte and the byte behind it are an
// ordinary code; kana() whether an ordinary code is a kana; katakana() where half-width katakana begin, if not at a
// trail byte.
struct OrdinarySjis {
    using Katakana = KatakanaRuns<1>;
    static Bytes16 single(Bytes16 first) { return katakana(first, first) | equals(first, kEsc); }
    static Bytes16 katakana(Bytes16 first, Bytes16 /*second*/) { return between(first, 0xA1, 0xDF); }
    static Bytes16 code(Bytes16 first, Bytes16 second) {
        constexpr uint8_t kJoin = 0xA0; // joins the lead bytes 81 to 9F and E0 to FC
        const Ordered rows(first ^ splat16(kJoin));
        const Ordered trails(second);
        const Bytes16 begins_late = equals(first, 0x82) | equals(first, 0x88);
        const Bytes16 no_row = rows.above(0xE9 ^ kJoin) | equals_masked<0xFC>(first, 0x84);
        const Bytes16 no_trail = trails.above(0xFC) | equals(second, 0x7F);
        const Bytes16 no_symbol = equals(first, 0x81) & trails.above(0xAC);
        const Bytes16 no_hiragana = equals(first, 0x82) & trails.above(0xF1);
        const Bytes16 no_katakana = equals(first, 0x83) & trails.above(0x93);
        const Bytes16 between_levels = equals(first, 0x98) & trails.above(0x72);
        return rows.above(0x80 ^ kJoin) & trails.above(0x3F) &
               ~(no_row | no_trail | no_symbol | no_hiragana | no_katakana | between_levels |
                 (begins_late & ~trails.above(0x9E)));
    }
    static Bytes16 kana(Bytes16 first) { return equals_masked<0xFE>(first, 0x82); }
};

struct OrdinaryEuc {
    using Katakana = KatakanaRuns<2>;
    static Bytes16 single(Bytes16 /*first*/) { return Bytes16{}; }
    static Bytes16 katakana(Bytes16 first, Bytes16 second) { return equals(first, kSs2) & between(second, 0xA1, 0xDF); }
    static Bytes16 code(Bytes16 first, Bytes16 second) {
        const Ordered rows(first);
        const Ordered trails(second);
        const Bytes16 kanji = rows.above(0xAF) & ~rows.above(0xF3);
        const Bytes16 no_kana = kana(first) & trails.above(0xF3);
        const Bytes16 between_levels = equals(first, 0xCF) & trails.above(0xD3);
        return (kanji | kana(first) | equals(first, 0xA1)) & trails.above(0xA0) &
               ~(equals(second, 0xFF) | no_kana | between_levels);
    }
    static Bytes16 kana(Bytes16 first) { return equals_masked<0xFE>(first, 0xA4); }
};

// Every second bit of each row of bits in `mask`, from its first on.
template <class Mask>
constexpr Mask every_second(Mask mask) {
    constexpr auto kEven = static_cast<Mask>(0x5555555555555555);
    const Mask begins = mask & ~(mask << 1);
    // Adding its first bit to a row carries through all of it.
    const Mask from_even = mask & ~(mask + (begins & kEven));
    return (from_even & kEven) | (mask & ~from_even & ~kEven);
}
static_assert(every_second<uint32_t>(0b0011'1101'1011) == 0b0001'0100'1001);

// Counts from p, a boundary, to the first character that is neither ASCII nor an ordinary code nor a half-width
// katakana, or to the last 32 bytes. The text lies in one block; a byte behind `end` must be readable.
template <class Ordinary>
inline OrdinaryRun ordinary_two_byte_run(const uint8_t *p, const uint8_t *end,
                                         typename Ordinary::Katakana &katakana_runs) {
    MaskCounts counts;
    while (end - p >= kStride) {
        const Bytes16 left = load16(p);
        const Bytes16 right = load16(p + kWide);
        const uint32_t non_ascii = movemask(left, right);
        const uint32_t singles = movemask(Ordinary::single(left), Ordinary::single(right));
        if ((non_ascii | singles) == 0) {
            katakana_runs.add(0, kStride);
            p += kStride;
            continue;
        }
        const Bytes16 left_second = load16(p + 1);
        const Bytes16 right_second = load16(p + 1 + kWide);
        const uint32_t leads = every_second(non_ascii & ~singles);
        const uint32_t trails = leads << 1;
        const uint32_t codes = movemask(Ordinary::code(left, left_second), Ordinary::code(right, right_second));
        const uint32_t kana = movemask(Ordinary::kana(left), Ordinary::kana(right));
        const uint32_t katakana =
            movemask(Ordinary::katakana(left, left_second), Ordinary::katakana(right, right_second)) & ~trails;
        const uint32_t stops = ((leads & ~codes) | (singles & ~trails)) & ~katakana;
        const uint32_t two_byte = leads & codes;
        if (stops != 0) [[unlikely]] {
            const uint32_t before = below_lowest(stops);
            counts.add(two_byte & before, two_byte & before & kana);
            katakana_runs.add(katakana & before, static_cast<size_t>(__builtin_ctz(stops)));
            p += __builtin_ctz(stops);
            break;
        }
        // A lead byte in the last place is left to the next stride, with its trail byte.
        const uint32_t last = leads >> (kStride - 1);
        const uint32_t whole = ~(last << (kStride - 1));
        counts.add(two_byte & whole, two_byte & whole & kana);
        katakana_runs.add(katakana & whole, kStride - last);
        p += kStride - last;
    }
    return {p, 2 * counts.left(), 2 * counts.right()};
}

} // namespace jkc
