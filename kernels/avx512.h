// 64 bytes as one vector of AVX-512.
#pragma once

#include <cstddef>
#include <cstdint>
#include <immintrin.h>

#include "kernels/masks.h"

namespace jkc::avx512 {

struct Block {
    __m512i bytes;
};
// A bit for each byte, that of the first one lowest.
using Flags = uint64_t;

constexpr size_t kBlock = 64;
constexpr size_t kUnits = kBlock / 2;

inline Block load(const uint8_t *p) { return {_mm512_loadu_si512(p)}; }
inline __m512i splat(uint8_t b) { return _mm512_set1_epi8(static_cast<char>(b)); }

inline uint64_t mask_of(Flags flags) { return flags; }
inline Flags none(Block /*v*/) { return 0; }
inline Flags even_places(Block /*v*/) { return 0x5555555555555555; }
inline Flags top_bits(Block v) { return _mm512_movepi8_mask(v.bytes); }
inline Flags equals(Block v, uint8_t b) { return _mm512_cmpeq_epi8_mask(v.bytes, splat(b)); }
inline Block ordered(Block v) { return v; }
inline Flags above(Block v, uint8_t b) { return _mm512_cmpgt_epu8_mask(v.bytes, splat(b)); }
inline Flags between(Block v, uint8_t first, uint8_t last) {
    return _mm512_cmple_epu8_mask(_mm512_sub_epi8(v.bytes, splat(first)), splat(static_cast<uint8_t>(last - first)));
}
template <uint8_t kMask>
inline Flags equals_masked(Block v, uint8_t b) {
    return _mm512_cmpeq_epi8_mask(_mm512_and_si512(v.bytes, splat(kMask)), splat(b));
}
template <uint8_t kBits>
inline Block flipped(Block v) {
    return {_mm512_xor_si512(v.bytes, splat(kBits))};
}

inline Block zeros() { return {_mm512_setzero_si512()}; }
template <uint8_t kBits>
inline Block masked(Block v) {
    return {_mm512_and_si512(v.bytes, splat(kBits))};
}
template <int kBy>
inline Block shifted_left(Block v) {
    return masked<static_cast<uint8_t>(0xFF << kBy)>({_mm512_slli_epi16(v.bytes, kBy)});
}
template <int kBy>
inline Block shifted_right(Block v) {
    return masked<(0xFF >> kBy)>({_mm512_srli_epi16(v.bytes, kBy)});
}
inline Block joined(Block a, Block b) { return {_mm512_or_si512(a.bytes, b.bytes)}; }
inline Block chosen(Flags flags, Block then, Block otherwise) {
    return {_mm512_mask_blend_epi8(flags, otherwise.bytes, then.bytes)};
}

// Where the low and the high byte of a unit are in two vectors.
struct Order {
    alignas(kBlock) uint16_t of[2 * kUnits];
};
constexpr Order kByTurns = [] {
    Order order = {};
    for (size_t i = 0; i < 2 * kUnits; ++i) {
        order.of[i] = static_cast<uint16_t>(i | (i + kBlock) << 8);
    }
    return order;
}();
inline __m512i load_order(const uint16_t *order) { return _mm512_load_si512(order); }

// Writes high << 8 | low of the bytes in the mask. May write as many units as a block has bytes.
inline uint16_t *put_units(uint16_t *o, Block high, Block low, uint64_t mask) {
    const __m512i highs = _mm512_maskz_compress_epi8(mask, high.bytes);
    const __m512i lows = _mm512_maskz_compress_epi8(mask, low.bytes);
    const __m512i front = load_order(kByTurns.of);
    const __m512i back = load_order(kByTurns.of + kUnits);
    _mm512_storeu_si512(o, _mm512_permutex2var_epi8(lows, front, highs));
    _mm512_storeu_si512(o + kUnits, _mm512_permutex2var_epi8(lows, back, highs));
    return o + __builtin_popcountll(mask);
}

// 32 units of 16 bits.
struct Units {
    __m512i units;
};

inline Units units_of(Block v) { return {v.bytes}; }
inline Units load_units(const void *p) { return {_mm512_loadu_si512(p)}; }
inline void store_units(void *o, Units v) { _mm512_storeu_si512(o, v.units); }
inline Units swapped(Units v) {
    const __m512i order = _mm512_broadcast_i32x4(_mm_set_epi8(14, 15, 12, 13, 10, 11, 8, 9, 6, 7, 4, 5, 2, 3, 0, 1));
    return {_mm512_shuffle_epi8(v.units, order)};
}
// A bit for each unit, that of the first one lowest.
inline uint32_t units_equal(Units v, uint16_t unit) {
    return _mm512_cmpeq_epi16_mask(v.units, _mm512_set1_epi16(static_cast<int16_t>(unit)));
}
inline uint32_t units_between(Units v, uint16_t first, uint16_t last) {
    return _mm512_cmple_epu16_mask(_mm512_sub_epi16(v.units, _mm512_set1_epi16(static_cast<int16_t>(first))),
                                   _mm512_set1_epi16(static_cast<int16_t>(last - first)));
}
// The bits of kMask in which units differ from `unit`.
template <uint16_t kMask>
inline Units differing(Units v, uint16_t unit) {
    return {_mm512_and_si512(_mm512_xor_si512(v.units, _mm512_set1_epi16(static_cast<int16_t>(unit))),
                             _mm512_set1_epi16(static_cast<int16_t>(kMask)))};
}
inline Units least(Units a, Units b) { return {_mm512_min_epu16(a.units, b.units)}; }
inline Units either(Units a, Units b) { return {_mm512_or_si512(a.units, b.units)}; }
inline uint32_t zero_units(Units v) { return _mm512_testn_epi16_mask(v.units, v.units); }
inline Units units_chosen(uint32_t mask, Units then, Units otherwise) {
    return {_mm512_mask_blend_epi16(mask, otherwise.units, then.units)};
}
// Writes the low bytes. May write as many bytes as a block has.
inline void put_low_bytes(uint8_t *o, Units v) {
    _mm256_storeu_si256(reinterpret_cast<__m256i *>(o), _mm512_cvtepi16_epi8(v.units));
}
// Writes the first `count` codes, the high byte first, those in the mask without it. May write as many bytes as a block
// has.
inline uint8_t *put_codes(uint8_t *o, Units codes, uint32_t one_byte, size_t count) {
    constexpr uint64_t kHighBytes = 0x5555555555555555;
    _mm512_storeu_si512(o, _mm512_maskz_compress_epi8(~_pdep_u64(one_byte, kHighBytes), swapped(codes).units));
    const uint32_t counted = count < kUnits ? one_byte & ((uint32_t{1} << count) - 1) : one_byte;
    return o + 2 * count - static_cast<size_t>(__builtin_popcount(counted));
}

// Writes the first `count` codes, whose bytes are swapped: those of `two` as two bytes, the others as one, and in front
// of those in `changes` the escape sequence that designates their set. May write as many bytes as a block has.
inline uint8_t *put_designated(uint8_t *o, Units codes, uint32_t two, uint32_t changes, size_t count) {
    constexpr size_t kTogether = 8;
    constexpr uint64_t kEachFirst = 0x0101010101010101;
    constexpr int64_t kToAscii = 0x42281B; // ESC ( B
    constexpr int64_t kToTwoBytes = 0x42241B;
    for (size_t i = 0; i < count; i += kTogether, two >>= kTogether, changes >>= kTogether) {
        const __m512i wide = _mm512_slli_epi64(_mm512_cvtepu16_epi64(_mm512_castsi512_si128(codes.units)), 24);
        codes.units = _mm512_alignr_epi64(codes.units, codes.units, 2);
        const __m512i escapes = _mm512_mask_blend_epi64(static_cast<__mmask8>(two), _mm512_set1_epi64(kToAscii),
                                                        _mm512_set1_epi64(kToTwoBytes));
        const uint64_t lanes = count - i < kTogether ? low_bits(8 * (count - i)) : ~uint64_t{0};
        const uint64_t kept =
            (_pdep_u64(changes, kEachFirst) * 0x07 | _pdep_u64(two, kEachFirst << 3) | kEachFirst << 4) & lanes;
        _mm512_storeu_si512(o, _mm512_maskz_compress_epi8(kept, _mm512_or_si512(wide, escapes)));
        o += __builtin_popcountll(kept);
    }
    return o;
}

// Writes the first `count` characters in UTF-8. May write a block's bytes behind them.
inline uint8_t *put_utf8(uint8_t *o, const uint16_t *units, size_t count) {
    constexpr size_t kTogether = 16;
    const auto all = [](uint32_t value) { return _mm512_set1_epi32(static_cast<int>(value)); };
    // The lowest bits of what becomes each byte, of two characters.
    const auto from_bits = [](int64_t first, int64_t second, int64_t third) {
        const int64_t bits = first | second << 8 | third << 16;
        return _mm512_set1_epi64(bits | (bits + 0x202020) << 32);
    };
    const __m512i of_three = from_bits(12, 6, 0);
    const __m512i of_two = from_bits(6, 0, 0);
    for (size_t i = 0; i < count; i += kTogether) {
        const __m512i c = _mm512_cvtepu16_epi32(_mm256_loadu_si256(reinterpret_cast<const __m256i *>(units + i)));
        const auto lanes = static_cast<__mmask16>(count - i < kTogether ? (1U << (count - i)) - 1 : 0xFFFFU);
        const __mmask16 beyond_one = _mm512_cmpge_epu32_mask(c, all(0x80));
        const __mmask16 beyond_two = _mm512_cmpge_epu32_mask(c, all(0x800));
        const auto assembled = [c](__m512i from, __m512i kept, __m512i marks) {
            constexpr int kAAndBOrC = 0xEA;
            return _mm512_ternarylogic_epi32(_mm512_multishift_epi64_epi8(from, c), kept, marks, kAAndBOrC);
        };
        const __m512i two = assembled(of_two, all(0x3F1F), all(0x80C0));
        const __m512i three = assembled(of_three, all(0x3F3F0F), all(0x8080E0));
        const __m512i bytes = _mm512_mask_mov_epi32(_mm512_mask_mov_epi32(c, beyond_one, two), beyond_two, three);
        // Only a first byte may be 0.
        const uint64_t kept =
            (_mm512_test_epi8_mask(bytes, bytes) | 0x1111111111111111) & _mm512_movepi8_mask(_mm512_movm_epi32(lanes));
        _mm512_storeu_si512(o, _mm512_maskz_compress_epi8(kept, bytes));
        o += __builtin_popcountll(kept);
    }
    return o;
}

// The bytes from p on, with zeros behind the last of them.
class Tail {
public:
    Tail(const uint8_t *p, size_t length) : p_(p), length_(length) {}
    Block at(size_t offset) const {
        const size_t left = length_ > offset ? length_ - offset : 0;
        return {_mm512_maskz_loadu_epi8(left < kBlock ? (uint64_t{1} << left) - 1 : ~uint64_t{0}, p_ + offset)};
    }

private:
    const uint8_t *p_;
    size_t length_;
};

} // namespace jkc::avx512
