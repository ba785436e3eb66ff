// The kernel that counts the code units of UTF-16 for the scanner.
#pragma once

#include "kernels/masks.h"
#include "kernels/patterns.h"
#include "tables/scan_classes.h"

namespace jkc::JKC_KERNEL_SET {

// Of as many code units as do not overflow the sum.
template <bool kBig>
inline uint32_t sum_of_classes(const uint8_t *classes, const uint8_t *p, size_t units) {
    uint32_t sum = 0;
    for (size_t i = 0; i < 2 * units; i += 2) {
        const size_t unit = static_cast<size_t>(kBig ? p[i] : p[i + 1]) << 8 | (kBig ? p[i + 1] : p[i]);
        sum += classes[unit] & (kScanEvidence | kScanKana);
    }
    return sum;
}

template <bool kBig>
UnitRun count_units(const uint8_t *p, const uint8_t *end, const uint8_t *classes) {
    constexpr ptrdiff_t kBehind = 3; // the code unit behind the last one may be its combining mark
    constexpr uint64_t kEven = 0x5555555555555555;
    constexpr size_t kTogether = 8;
    static_assert(kTogether * kScanEvidence < kScanKana);
    UnitRun run = {p, 0, 0};
    for (; end - p >= static_cast<ptrdiff_t>(kBlock) + kBehind; p += kBlock) {
        const Block first = load(p);
        const Block second = load(p + 1);
        const Block &high = kBig ? first : second;
        const Block &low = kBig ? second : first;
        // ASCII but NUL is evidence, and no part of a pair in the other byte order either.
        if ((mask_of(equals(high, 0) & between(low, 0x01, 0x7F)) & kEven) == kEven) {
            run.evidence += static_cast<int64_t>(kBlock / 2);
            continue;
        }
        const auto behind = [p](size_t offset) { return load(p + 2 + offset); };
        const auto special = equals_masked<0xFC>(high, 0xD8) | (equals(first, 0xFF) & equals(second, 0xFD)) |
                             (equals(first, 0xFD) & equals(second, 0xFF));
        const uint64_t pairs = mask_of(PairPattern::match([p](size_t offset) { return load(p + offset); }));
        const uint64_t stops = (mask_of(Utf16MarkPattern::match(behind) | special) & kEven) | pairs;
        if (stops != 0) [[unlikely]] {
            break;
        }
        for (size_t i = 0; i < kBlock; i += 2 * kTogether) {
            const uint32_t sum = sum_of_classes<kBig>(classes, p + i, kTogether);
            run.evidence += sum % kScanKana;
            run.kana += sum / kScanKana;
        }
    }
    run.end = p;
    return run;
}

} // namespace jkc::JKC_KERNEL_SET
