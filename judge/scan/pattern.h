// Finds the few positions of a block that a scanner must look at closely, sixteen at a time.
#pragma once

#include "core/wide.h"

namespace jkc {

// Pattern::match(p) has a nonzero byte for each of the positions p to p + 15 at which the pattern begins. It reads at
// most kPatternReach bytes behind p. Pattern::may_match(p) is a quick test whether there may be any.
constexpr size_t kPatternReach = 16 + 3;

// The first position from p on at which the pattern begins, or end. Up to kPatternReach bytes behind `end` must be
// readable; they may match.
template <class Pattern>
inline const uint8_t *find_pattern(const uint8_t *p, const uint8_t *end) {
    for (; p < end; p += sizeof(Bytes16)) {
        if (!Pattern::may_match(p)) [[likely]] {
            continue;
        }
        const Bytes16 hits = Pattern::match(p);
        for (size_t i = 0; i < sizeof(Bytes16); ++i) {
            if (hits[i] != 0) {
                return p + i < end ? p + i : end;
            }
        }
    }
    return end;
}

// The last position before `end` at which the pattern may begin, or null when there is none from `begin` on.
template <class Pattern>
inline const uint8_t *find_last_pattern(const uint8_t *begin, const uint8_t *end) {
    constexpr ptrdiff_t kStep = sizeof(Bytes16);
    for (const uint8_t *p = end; p > begin; p -= kStep) {
        const uint8_t *from = p - begin > kStep ? p - kStep : begin;
        const Bytes16 hits = Pattern::match(from);
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
