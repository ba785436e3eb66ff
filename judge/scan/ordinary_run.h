// What two_byte_run.h and utf8_run.h share, which count ordinary text for the scanners.
#pragma once

#include <cstddef>
#include <cstdint>

#include "core/wide.h"
#include "kernels/kernels.h"

namespace jkc {

// Two vectors, as a step must wait for the one before to tell where a character begins.
constexpr ptrdiff_t kStride = 2 * kWide;

// The top bits of both halves of a stride.
inline uint32_t movemask(Bytes16 left, Bytes16 right) { return movemask(left) | movemask(right) << kWide; }

// The bits below the lowest one of a mask that is not 0.
constexpr uint32_t below_lowest(uint32_t mask) { return (mask & (0U - mask)) - 1; }

// Counts the bits of pairs of masks, of 4095 pairs at most. (Not every x86-64 processor has an instruction for that.)
class MaskCounts {
public:
    void add(uint32_t left, uint32_t right) {
        uint64_t bits = left | uint64_t{right} << 32;
        bits -= bits >> 1 & 0x5555555555555555;
        bits = (bits & 0x3333333333333333) + (bits >> 2 & 0x3333333333333333);
        bits = (bits + (bits >> 4)) & 0x0F0F0F0F0F0F0F0F;
        sums_ += (bits & 0x00FF00FF00FF00FF) + (bits >> 8 & 0x00FF00FF00FF00FF);
    }
    int64_t left() const { return (sums_ & 0xFFFF) + (sums_ >> 16 & 0xFFFF); }
    int64_t right() const { return (sums_ >> 32 & 0xFFFF) + (sums_ >> 48); }

private:
    uint64_t sums_ = 0; // in four parts
};

// How far a scanner looks closely at what stopped a run from `begin` at p: after a long run at a single character,
// after a short one at more, as there more such characters follow.
inline const uint8_t *close_look_end(const uint8_t *begin, const uint8_t *p, const uint8_t *end) {
    const ptrdiff_t close = p - begin >= 2 * kStride ? 1 : 2 * kStride;
    return end - p > close ? p + close : end;
}

} // namespace jkc
