// Arithmetic on masks of 64 bits, one for each byte of a block.
#pragma once

#include <cstddef>
#include <cstdint>

namespace jkc::JKC_KERNEL_SET {

inline size_t lowest(uint64_t mask) { return static_cast<size_t>(__builtin_ctzll(mask)); }
inline size_t highest(uint64_t mask) { return static_cast<size_t>(63 - __builtin_clzll(mask)); }
inline int64_t count(uint64_t mask) { return __builtin_popcountll(mask); }

// The bits below the lowest one of a mask that is not 0.
inline uint64_t below_lowest(uint64_t mask) { return (mask & (0 - mask)) - 1; }

// The lowest bits, at most 63 of them.
inline uint64_t low_bits(size_t bits) { return (uint64_t{1} << bits) - 1; }

// Of the 32 units at a place, as many as there are.
inline uint32_t lanes_of(size_t units) { return static_cast<uint32_t>(low_bits(units < 32 ? units : 32)); }

constexpr uint16_t kLastAscii = 0x7F;

// Every second bit of each row of bits in `mask`, from its first on.
inline uint64_t every_second(uint64_t mask) {
    constexpr uint64_t kEven = 0x5555555555555555;
    const uint64_t begins = mask & ~(mask << 1);
    // Adding its first bit to a row carries through all of it.
    const uint64_t from_even = mask & ~(mask + (begins & kEven));
    return (from_even & kEven) | (mask & ~from_even & ~kEven);
}

} // namespace jkc::JKC_KERNEL_SET
