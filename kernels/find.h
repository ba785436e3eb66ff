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
        const uint64_t hits = mask_of(Pattern::match([p](size_t offset) { return load(p + offset); }));
        if (hits != 0) [[unlikely]] {
            return p + lowest(hits);
        }
    }
    return p;
}

} // namespace jkc::JKC_KERNEL_SET
