// Counts runs of ordinary Japanese text in Shift_JIS and EUC, 32 bytes at a time.
//
// A trail byte may look like a lead byte. But in a row of bytes that all look like lead bytes, every second one is a
// lead byte, from the first on. The row ends at a byte that cannot be one: the trail byte of the last lead byte, or a
// character by itself.
#pragma once

#include "judge/scan/ordinary_run.h"
#include "kernels/ordinary_two_byte.h"

namespace jkc {

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

// The same by the kernel, where there is one, which leaves half-width katakana to the plain run.
template <class Ordinary>
inline OrdinaryRun count_ordinary_two_byte(CountRun *kernel, const uint8_t *p, const uint8_t *end,
                                           typename Ordinary::Katakana &katakana_runs) {
    if (kernel == nullptr) {
        return ordinary_two_byte_run<Ordinary>(p, end, katakana_runs);
    }
    const OrdinaryRun run = kernel(p, end);
    if (run.end != p) {
        katakana_runs.close();
    }
    constexpr ptrdiff_t kClose = 4 * kStride;
    const OrdinaryRun close =
        ordinary_two_byte_run<Ordinary>(run.end, end - run.end > kClose ? run.end + kClose : end, katakana_runs);
    return {close.end, run.valid + close.valid, run.kana + close.kana};
}

} // namespace jkc
