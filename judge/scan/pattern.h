// Finds the few positions of a block that a scanner must look at closely, sixteen at a time.
#pragma once

#include "core/wide.h"
#include "kernels/kernels.h"

namespace jkc {

// Patterns are as in kernels/patterns.h. They read at most kPatternReach bytes behind p.
constexpr size_t kPatternReach = 16 + 3;

// The first position from p on at which the pattern begins, or end. Up to kPatternReach bytes behind `end` must be
// readable; they may match.
template <class Pattern>
inline const uint8_t *find_plain_pattern(const uint8_t *p, const uint8_t *end) {
    for (; p < end; p += sizeof(Bytes16)) {
        const auto at = [p](size_t offset) { return load16(p + offset); };
        if (!any(Pattern::may_match(at))) [[likely]] {
            continue;
        }
        const Bytes16 hits = Pattern::match(at);
        for (size_t i = 0; i < sizeof(Bytes16); ++i) {
            if (hits[i] != 0) {
                return p + i < end ? p + i : end;
            }
        }
    }
    return end;
}

// The same by the kernel, where there is one.
template <class Pattern>
inline const uint8_t *find_pattern(const uint8_t *p, const uint8_t *end) {
    Find *const kernel = kernels().*Pattern::kKernel;
    return find_plain_pattern<Pattern>(kernel != nullptr ? kernel(p, end) : p, end);
}

// The last position before `end` at which the pattern may begin, or null when there is none from `begin` on.
template <class Pattern>
inline const uint8_t *find_last_pattern(const uint8_t *begin, const uint8_t *end) {
    if (FindLast *const kernel = kernels().*Pattern::kKernel; kernel != nullptr) {
        end = kernel(begin, end);
    }
    constexpr ptrdiff_t kStep = sizeof(Bytes16);
    for (const uint8_t *p = end; p > begin; p -= kStep) {
        const uint8_t *from = p - begin > kStep ? p - kStep : begin;
        const Bytes16 hits = Pattern::match([from](size_t offset) { return load16(from + offset); });
        if (any(hits)) {
            for (ptrdiff_t i = p - from; i-- > 0;) {
                if (hits[i] != 0) {
                    return from + i;
                }
            }
        }
    }
    return nullptr;
}

} // namespace jkc
