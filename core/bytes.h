// Names of bytes, and arithmetic on them.
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>

#include "tables/single_shifts.h"

namespace jkc {

constexpr uint8_t kLf = 0x0A;
constexpr uint8_t kCr = 0x0D;
constexpr uint8_t kSo = 0x0E;
constexpr uint8_t kSi = 0x0F;
constexpr uint8_t kEsc = 0x1B;

constexpr bool is_ascii(uint8_t b) { return b < 0x80; }

// Shift_JIS: a half-width katakana is one byte of this range.
constexpr bool is_sjis_katakana(uint8_t b) { return b >= 0xA1 && b <= 0xDF; }

constexpr uint32_t two_byte_code(uint8_t high, uint8_t low) { return static_cast<uint32_t>(high) << 8 | low; }

// One of two values without a branch. Compilers make one of the operator ?:, which is slow where it is mispredicted.
constexpr uint32_t select(bool condition, uint32_t then, uint32_t otherwise) {
    return otherwise ^ ((then ^ otherwise) & (0U - static_cast<uint32_t>(condition)));
}

// A length as the C library takes it: one that no memory has stays one, also where addresses have 32 bits.
constexpr size_t as_size(uint64_t length) { return length < SIZE_MAX ? static_cast<size_t>(length) : SIZE_MAX; }

// Four bytes as a number, the first one lowest, whatever the processor's order.
constexpr uint32_t lowest_first(uint32_t value) {
    return std::endian::native == std::endian::little ? value : __builtin_bswap32(value);
}
inline uint32_t get_four_bytes(const uint8_t *p) {
    uint32_t value;
    memcpy(&value, p, sizeof value);
    return lowest_first(value);
}
inline void put_four_bytes(uint8_t *o, uint32_t value) {
    value = lowest_first(value);
    memcpy(o, &value, sizeof value);
}

} // namespace jkc
