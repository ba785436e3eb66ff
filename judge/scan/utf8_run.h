// Counts runs of ordinary Japanese text in UTF-8, 32 bytes at a time.
#pragma once

#include "judge/scan/ordinary_run.h"

namespace jkc {

// Which characters are ordinary: those of the lead bytes E3 to E9 and EF but for U+302A to U+3040, U+3097 to U+309A,
// U+30A0, U+3100 to U+4DFF, U+9F80 to U+9FFF and, of EF, everything but U+FF01 to U+FFBE. All of them are text, and
// from E3 81 to E3 83 they are kana.
struct OrdinaryUtf8 {
    static Bytes16 lead(Bytes16 first) { return between(first, 0xE3, 0xE9) | equals(first, 0xEF); }
    static Bytes16 trail(Bytes16 bytes) { return equals_masked<0xC0>(bytes, 0x80); }
    // Given that `first` is such a lead byte.
    static Bytes16 character(Bytes16 first, Bytes16 second, Bytes16 third) {
        const Ordered seconds(second);
        const Ordered thirds(third);
        const Bytes16 mark = equals(second, 0x80) & thirds.above(0xA9);
        const Bytes16 no_hiragana = equals(second, 0x81) & equals(third, 0x80);
        const Bytes16 no_katakana =
            equals(second, 0x82) & ((thirds.above(0x96) & ~thirds.above(0x9A)) | equals(third, 0xA0));
        const Bytes16 not_of_e3 = equals(first, 0xE3) & (seconds.above(0x83) | mark | no_hiragana | no_katakana);
        const Bytes16 not_of_e4 = equals(first, 0xE4) & ~seconds.above(0xB7);
        const Bytes16 not_of_e9 = equals(first, 0xE9) & seconds.above(0xBD);
        const Bytes16 edges =
            (equals(second, 0xBC) & equals(third, 0x80)) | (equals(second, 0xBE) & equals(third, 0xBF));
        const Bytes16 not_of_ef = equals(first, 0xEF) & (~seconds.above(0xBB) | seconds.above(0xBE) | edges);
        return trail(second) & trail(third) & ~(not_of_e3 | not_of_e4 | not_of_e9 | not_of_ef);
    }
    static Bytes16 kana(Bytes16 first, Bytes16 second) { return equals(first, 0xE3) & Ordered(second).above(0x80); }
};

// Counts from p, a boundary, to the first character that is neither ASCII nor ordinary, or to the last 32 bytes. The
// text lies in one block; two bytes behind `end` must be readable.
inline OrdinaryRun ordinary_utf8_run(const uint8_t *p, const uint8_t *end) {
    MaskCounts counts;
    while (end - p >= kStride) {
        const Bytes16 left = load16(p);
        const Bytes16 right = load16(p + kWide);
        const uint32_t non_ascii = movemask(left, right);
        if (non_ascii == 0) {
            p += kStride;
            continue;
        }
        const Bytes16 left_second = load16(p + 1);
        const Bytes16 right_second = load16(p + 1 + kWide);
        const uint32_t leads = movemask(OrdinaryUtf8::lead(left), OrdinaryUtf8::lead(right));
        const uint32_t trails = leads << 1 | leads << 2;
        const uint32_t characters = movemask(OrdinaryUtf8::character(left, left_second, load16(p + 2)),
                                             OrdinaryUtf8::character(right, right_second, load16(p + 2 + kWide)));
        const uint32_t kana = movemask(OrdinaryUtf8::kana(left, left_second), OrdinaryUtf8::kana(right, right_second));
        const uint32_t stops = (leads & ~characters) | (non_ascii & ~(leads | trails));
        if (stops != 0) [[unlikely]] {
            const uint32_t before = leads & below_lowest(stops);
            counts.add(before, before & kana);
            p += __builtin_ctz(stops);
            break;
        }
        // A lead byte in the last two places is left to the next stride.
        const uint32_t last = leads >> (kStride - 2);
        const uint32_t whole = leads & ~(last << (kStride - 2));
        counts.add(whole, whole & kana);
        p += kStride - (last != 0 ? 3 - last : 0);
    }
    return {p, 3 * counts.left(), 3 * counts.right()};
}

} // namespace jkc
