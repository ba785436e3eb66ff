// The kernel that counts the code units of UTF-16 for the scanner.
#pragma once

#include "kernels/kernels.h"
#include "kernels/masks.h"
#include "tables/scan_classes.h"

namespace jkc::JKC_KERNEL_SET {

// Of as many code units as do not overflow the sum.
template <size_t kUnitsTogether>
inline uint32_t sum_of_classes(const uint8_t *classes, const uint16_t *units) {
    uint32_t sum = 0;
    for (size_t i = 0; i < kUnitsTogether; ++i) {
        sum += classes[units[i]] & (kScanEvidence | kScanKana);
    }
    return sum;
}

// Compilers would take single units out of the vector that was stored, which is slower than loading them.
inline void keep_in_memory(uint16_t (&units)[kUnits]) { __asm__("" : "+m"(units)); }

// Has zeros where a combining mark may be, in either byte order.
inline Units differing_from_marks(Units v) {
    return least(least(differing<0xFFF1>(v, 0x0300), differing<0xF1FF>(v, 0x0003)),
                 least(differing<0xFFFC>(v, 0x3098), differing<0xFCFF>(v, 0x9830)));
}

template <bool kBig>
UnitRun count_units(const uint8_t *p, const uint8_t *end, const uint8_t *classes) {
    constexpr ptrdiff_t kBehind = 2; // the code unit behind the last one may be its combining mark
    constexpr size_t kTogether = 8;
    static_assert(kTogether * kScanEvidence < kScanKana);
    // How the high and the low byte of a code unit, and of one of the other byte order, lie in a unit as it is loaded.
    constexpr unsigned kHighBy = kBig ? 0 : 8;
    constexpr unsigned kLowBy = 8 - kHighBy;
    constexpr uint16_t kSurrogate = 0xFC;
    UnitRun run = {p, 0, 0};
    for (; end - p >= static_cast<ptrdiff_t>(kBlock) + kBehind; p += kBlock) {
        const Units units = load_units(p);
        // ASCII but NUL is evidence, and no part of a pair in the other byte order either.
        const Units beyond_ascii = differing<static_cast<uint16_t>(0xFF << kHighBy | 0x80 << kLowBy)>(units, 0);
        if (zero_units(beyond_ascii) == ~uint32_t{0} && zero_units(units) == 0) {
            run.evidence += static_cast<int64_t>(kUnits);
            continue;
        }
        const Units behind = load_units(p + 2);
        const Units special =
            least(differing<kSurrogate << kHighBy>(units, 0xD8 << kHighBy), differing<0xFDFD>(units, 0xFDFD));
        const Units pairs = either(differing<kSurrogate << kLowBy>(units, 0xD8 << kLowBy),
                                   differing<kSurrogate << kLowBy>(behind, 0xDC << kLowBy));
        if (zero_units(least(differing_from_marks(behind), least(special, pairs))) != 0) [[unlikely]] {
            break;
        }
        alignas(kBlock) uint16_t stored[kUnits];
        store_units(stored, kBig ? swapped(units) : units);
        keep_in_memory(stored);
        for (size_t i = 0; i < kUnits; i += kTogether) {
            const uint32_t sum = sum_of_classes<kTogether>(classes, stored + i);
            run.evidence += sum % kScanKana;
            run.kana += sum / kScanKana;
        }
    }
    run.end = p;
    return run;
}

} // namespace jkc::JKC_KERNEL_SET
