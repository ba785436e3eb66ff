// Counts runs of ordinary Japanese text in UTF-8, 32 bytes at a time.
#pragma once

#include "judge/scan/ordinary_run.h"
#include "kernels/ordinary_utf8.h"

namespace jkc {

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

// The same by the kernel, where there is one.
inline OrdinaryRun count_ordinary_utf8(const uint8_t *p, const uint8_t *end) {
    CountRun *const kernel = kernels().count_utf8;
    return kernel != nullptr ? kernel(p, end) : ordinary_utf8_run(p, end);
}

} // namespace jkc
