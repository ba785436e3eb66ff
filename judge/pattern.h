// Finds the few places of a block that a scanner must look at closely, sixteen positions at a time.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>

namespace jkc {

// Sixteen bytes on which comparisons work at once. Every compiler that we know of has these.
using Bytes16 = uint8_t __attribute__((vector_size(16)));

inline Bytes16 load16(const uint8_t *p) {
    Bytes16 bytes;
    memcpy(&bytes, p, sizeof bytes);
    return bytes;
}

constexpr Bytes16 all16(uint8_t b) { return Bytes16{b, b, b, b, b, b, b, b, b, b, b, b, b, b, b, b}; }

// All bits of each byte that equals b, or that equals b where kMask has bits.
inline Bytes16 equals(Bytes16 bytes, uint8_t b) { return reinterpret_cast<Bytes16>(bytes == all16(b)); }
template <uint8_t kMask>
inline Bytes16 equals_masked(Bytes16 bytes, uint8_t b) {
    return equals(bytes & all16(kMask), b);
}

inline bool any(Bytes16 bytes) {
    uint64_t halves[2];
    memcpy(halves, &bytes, sizeof halves);
    return (halves[0] | halves[1]) != 0;
}

// A pattern tells with match(p) at which of the positions p to p + 15 it begins, by nonzero bytes; it reads at most
// kPatternReach bytes behind p. With may_match(p) it tells at once of most positions that it does not.
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
