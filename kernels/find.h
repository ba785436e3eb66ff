// Kernels that look for the few places of a block at which a scanner must look closely.
#pragma once

#include "kernels/masks.h"
#include "kernels/patterns.h"

namespace jkc::JKC_KERNEL_SET {

// Where the pattern begins first, or where less than a block is left.
template <class Pattern>
const uint8_t *find(const uint8_t *p, const uint8_t *end) {
    constexpr ptrdiff_t kBehind = 3; // bytes that a pattern has behind its first one
    for (; end - p >= static_cast<ptrdiff_t>(kBlock) + kBehind; p += kBlock) {
        const auto at = [p](size_t offset) { return load(p + offset); };
        if (mask_of(Pattern::may_match(at)) == 0) {
            continue;
        }
        const uint64_t hits = mask_of(Pattern::match(at));
        if (hits != 0) [[unlikely]] {
            return p + lowest(hits);
        }
    }
    return p;
}

// The last place in front of `end` at which the pattern may begin, or where less than a block is left behind `begin`.
template <class Pattern>
const uint8_t *find_last(const uint8_t *begin, const uint8_t *end) {
    for (; end - begin >= static_cast<ptrdiff_t>(kBlock); end -= kBlock) {
        const uint8_t *const p = end - kBlock;
        const uint64_t hits = mask_of(Pattern::match([p](size_t offset) { return load(p + offset); }));
        if (hits != 0) {
            return p + highest(hits) + 1;
        }
    }
    return end;
}

} // namespace jkc::JKC_KERNEL_SET
