// 64 bytes as two vectors of AVX2.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <immintrin.h>

namespace jkc::avx2 {

struct Block {
    __m256i left;
    __m256i right;
};
// All bits of the bytes for which something holds.
struct Flags {
    __m256i left;
    __m256i right;
};

constexpr size_t kHalf = 32;
constexpr size_t kBlock = 2 * kHalf;
constexpr size_t kUnits = kBlock / 2;

inline __m256i load_half(const uint8_t *p) { return _mm256_loadu_si256(reinterpret_cast<const __m256i *>(p)); }
inline Block load(const uint8_t *p) { return {load_half(p), load_half(p + kHalf)}; }
inline __m256i splat(uint8_t b) { return _mm256_set1_epi8(static_cast<char>(b)); }

inline Flags operator&(Flags a, Flags b) {
    return {_mm256_and_si256(a.left, b.left), _mm256_and_si256(a.right, b.right)};
}
inline Flags operator|(Flags a, Flags b) {
    return {_mm256_or_si256(a.left, b.left), _mm256_or_si256(a.right, b.right)};
}
inline Flags operator~(Flags a) {
    const __m256i ones = splat(0xFF);
    return {_mm256_xor_si256(a.left, ones), _mm256_xor_si256(a.right, ones)};
}

inline uint64_t mask_of(__m256i left, __m256i right) {
    return static_cast<uint32_t>(_mm256_movemask_epi8(left)) |
           uint64_t{static_cast<uint32_t>(_mm256_movemask_epi8(right))} << kHalf;
}
// A bit for each byte, that of the first one lowest.
inline uint64_t mask_of(Flags flags) { return mask_of(flags.left, flags.right); }
inline Flags none(Block /*v*/) { return {_mm256_setzero_si256(), _mm256_setzero_si256()}; }
inline Flags even_places(Block /*v*/) { return {_mm256_set1_epi16(0xFF), _mm256_set1_epi16(0xFF)}; }
inline Flags top_bits(Block v) { return {v.left, v.right}; }
inline Flags equals(Block v, uint8_t b) {
    return {_mm256_cmpeq_epi8(v.left, splat(b)), _mm256_cmpeq_epi8(v.right, splat(b))};
}
template <uint8_t kBits>
inline Block flipped(Block v) {
    return {_mm256_xor_si256(v.left, splat(kBits)), _mm256_xor_si256(v.right, splat(kBits))};
}
// Bytes are compared as signed ones, so these are shifted once.
struct Ordered {
    Block shifted;
};
inline Ordered ordered(Block v) { return {flipped<0x80>(v)}; }
inline Flags above(Ordered v, uint8_t b) {
    const __m256i limit = splat(b ^ 0x80);
    return {_mm256_cmpgt_epi8(v.shifted.left, limit), _mm256_cmpgt_epi8(v.shifted.right, limit)};
}
inline __m256i between(__m256i v, uint8_t first, uint8_t last) {
    const __m256i from_first = _mm256_sub_epi8(v, splat(first));
    return _mm256_cmpeq_epi8(_mm256_min_epu8(from_first, splat(static_cast<uint8_t>(last - first))), from_first);
}
inline Flags between(Block v, uint8_t first, uint8_t last) {
    return {between(v.left, first, last), between(v.right, first, last)};
}
template <uint8_t kMask>
inline Flags equals_masked(Block v, uint8_t b) {
    return equals({_mm256_and_si256(v.left, splat(kMask)), _mm256_and_si256(v.right, splat(kMask))}, b);
}

inline Block zeros() { return {_mm256_setzero_si256(), _mm256_setzero_si256()}; }
template <uint8_t kBits>
inline Block masked(Block v) {
    return {_mm256_and_si256(v.left, splat(kBits)), _mm256_and_si256(v.right, splat(kBits))};
}
template <int kBy>
inline Block shifted_left(Block v) {
    return masked<static_cast<uint8_t>(0xFF << kBy)>({_mm256_slli_epi16(v.left, kBy), _mm256_slli_epi16(v.right, kBy)});
}
template <int kBy>
inline Block shifted_right(Block v) {
    return masked<(0xFF >> kBy)>({_mm256_srli_epi16(v.left, kBy), _mm256_srli_epi16(v.right, kBy)});
}
inline Block joined(Block a, Block b) { return {_mm256_or_si256(a.left, b.left), _mm256_or_si256(a.right, b.right)}; }
inline Block chosen(Flags flags, Block then, Block otherwise) {
    return {_mm256_blendv_epi8(otherwise.left, then.left, flags.left),
            _mm256_blendv_epi8(otherwise.right, then.right, flags.right)};
}

constexpr size_t kQuarter = 16;

inline void store_quarter(void *o, __m128i quarter) { _mm_storeu_si128(static_cast<__m128i *>(o), quarter); }

// How the bytes of a quarter move when some are left out; 0x80 makes a zero.
struct Shuffle {
    alignas(kQuarter) uint8_t from[kQuarter];
};
inline __m128i shuffled(__m128i quarter, const Shuffle &shuffle) {
    return _mm_shuffle_epi8(quarter, _mm_load_si128(reinterpret_cast<const __m128i *>(shuffle.from)));
}
struct Shuffles {
    Shuffle of[0x100];
};
// `keeps(index, place)`: whether the byte stays.
constexpr Shuffles make_shuffles(auto keeps) {
    Shuffles made = {};
    for (size_t index = 0; index < 0x100; ++index) {
        size_t count = 0;
        for (size_t place = 0; place < kQuarter; ++place) {
            if (keeps(index, place)) {
                made.of[index].from[count++] = static_cast<uint8_t>(place);
            }
        }
        while (count < kQuarter) {
            made.of[index].from[count++] = 0x80;
        }
    }
    return made;
}
// Keeps the units whose bits are set.
constexpr Shuffles kUnitsOfMask =
    make_shuffles([](size_t mask, size_t place) { return (mask >> (place / 2) & 1) != 0; });
// Drops the first bytes of the units whose bits are set.
constexpr Shuffles kCodesOfMask =
    make_shuffles([](size_t mask, size_t place) { return place % 2 == 1 || (mask >> (place / 2) & 1) == 0; });
// Keeps of four times four bytes the first, two where the low bit is set, and three where the high bit is set too.
constexpr Shuffles kUtf8OfMask = make_shuffles([](size_t mask, size_t place) {
    const size_t character = place / 4;
    const size_t length = 1 + (mask >> character & 1) + (mask >> (character + 4) & 1);
    return place % 4 < length;
});

// Writes high << 8 | low of the bytes in the mask. May write as many units as a block has bytes.
inline uint16_t *put_units(uint16_t *o, Block high, Block low, uint64_t mask) {
    const auto put = [&o, &mask](__m128i units) {
        store_quarter(o, shuffled(units, kUnitsOfMask.of[mask & 0xFF]));
        o += __builtin_popcountll(mask & 0xFF);
        mask >>= 8;
    };
    const auto put_half = [&put](__m256i highs, __m256i lows) {
        const __m256i outer = _mm256_unpacklo_epi8(lows, highs);
        const __m256i inner = _mm256_unpackhi_epi8(lows, highs);
        put(_mm256_castsi256_si128(outer));
        put(_mm256_castsi256_si128(inner));
        put(_mm256_extracti128_si256(outer, 1));
        put(_mm256_extracti128_si256(inner, 1));
    };
    put_half(high.left, low.left);
    put_half(high.right, low.right);
    return o;
}

// 32 units of 16 bits.
struct Units {
    __m256i left;
    __m256i right;
};

inline __m256i splat_unit(int unit) { return _mm256_set1_epi16(static_cast<int16_t>(unit)); }
inline Units units_of(Block v) { return {v.left, v.right}; }
inline Units load_units(const void *p) {
    const auto *halves = static_cast<const __m256i *>(p);
    return {_mm256_loadu_si256(halves), _mm256_loadu_si256(halves + 1)};
}
inline void store_units(void *o, Units v) {
    auto *halves = static_cast<__m256i *>(o);
    _mm256_storeu_si256(halves, v.left);
    _mm256_storeu_si256(halves + 1, v.right);
}
inline __m256i swapped(__m256i v) { return _mm256_or_si256(_mm256_slli_epi16(v, 8), _mm256_srli_epi16(v, 8)); }
inline Units swapped(Units v) { return {swapped(v.left), swapped(v.right)}; }
// The low bytes of both, as one.
inline __m256i narrowed(__m256i left, __m256i right) {
    return _mm256_permute4x64_epi64(_mm256_packus_epi16(left, right), 0xD8);
}
// A bit for each unit, that of the first one lowest.
inline uint32_t unit_mask(__m256i left, __m256i right) {
    return static_cast<uint32_t>(_mm256_movemask_epi8(_mm256_permute4x64_epi64(_mm256_packs_epi16(left, right), 0xD8)));
}
inline uint32_t units_equal(Units v, uint16_t unit) {
    return unit_mask(_mm256_cmpeq_epi16(v.left, splat_unit(unit)), _mm256_cmpeq_epi16(v.right, splat_unit(unit)));
}
inline __m256i units_between(__m256i v, uint16_t first, uint16_t last) {
    const __m256i beyond = _mm256_subs_epu16(_mm256_sub_epi16(v, splat_unit(first)), splat_unit(last - first));
    return _mm256_cmpeq_epi16(beyond, _mm256_setzero_si256());
}
inline uint32_t units_between(Units v, uint16_t first, uint16_t last) {
    return unit_mask(units_between(v.left, first, last), units_between(v.right, first, last));
}
// The bits of kMask in which units differ from `unit`.
template <uint16_t kMask>
inline Units differing(Units v, uint16_t unit) {
    const __m256i mask = splat_unit(static_cast<int16_t>(kMask));
    return {_mm256_and_si256(_mm256_xor_si256(v.left, splat_unit(unit)), mask),
            _mm256_and_si256(_mm256_xor_si256(v.right, splat_unit(unit)), mask)};
}
inline Units least(Units a, Units b) { return {_mm256_min_epu16(a.left, b.left), _mm256_min_epu16(a.right, b.right)}; }
inline Units either(Units a, Units b) { return {_mm256_or_si256(a.left, b.left), _mm256_or_si256(a.right, b.right)}; }
inline uint32_t zero_units(Units v) { return units_equal(v, 0); }
// All bits of the units whose bits are set.
inline __m256i spread(uint32_t mask) {
    const __m256i bits = _mm256_set_epi16(int16_t(0x8000), 0x4000, 0x2000, 0x1000, 0x800, 0x400, 0x200, 0x100, 0x80,
                                          0x40, 0x20, 0x10, 8, 4, 2, 1);
    return _mm256_cmpeq_epi16(_mm256_and_si256(splat_unit(static_cast<int16_t>(mask)), bits), bits);
}
inline Units units_chosen(uint32_t mask, Units then, Units otherwise) {
    return {_mm256_blendv_epi8(otherwise.left, then.left, spread(mask)),
            _mm256_blendv_epi8(otherwise.right, then.right, spread(mask >> 16))};
}
// Writes the low bytes. May write as many bytes as a block has.
inline void put_low_bytes(uint8_t *o, Units v) {
    const __m256i low = splat_unit(0xFF);
    _mm256_storeu_si256(reinterpret_cast<__m256i *>(o),
                        narrowed(_mm256_and_si256(v.left, low), _mm256_and_si256(v.right, low)));
}
// Writes the first `count` codes, the high byte first, those in the mask without it. May write as many bytes as a block
// has.
inline uint8_t *put_codes(uint8_t *o, Units codes, uint32_t one_byte, size_t count) {
    const Units bytes = swapped(codes);
    const uint32_t counted = count < kUnits ? one_byte & ((uint32_t{1} << count) - 1) : one_byte;
    uint8_t *const end = o + 2 * count - static_cast<size_t>(__builtin_popcount(counted));
    const auto put = [&o, &one_byte](__m128i quarter) {
        store_quarter(o, shuffled(quarter, kCodesOfMask.of[one_byte & 0xFF]));
        o += kQuarter - static_cast<size_t>(__builtin_popcount(one_byte & 0xFF));
        one_byte >>= 8;
    };
    put(_mm256_castsi256_si128(bytes.left));
    put(_mm256_extracti128_si256(bytes.left, 1));
    put(_mm256_castsi256_si128(bytes.right));
    put(_mm256_extracti128_si256(bytes.right, 1));
    return end;
}

// Writes the first `count` characters in UTF-8. May write a block's bytes behind them.
inline uint8_t *put_utf8(uint8_t *o, const uint16_t *units, size_t count) {
    constexpr size_t kTogether = 8;
    const auto all = [](uint32_t value) { return _mm256_set1_epi32(static_cast<int>(value)); };
    const __m256i trail_bits = all(0x3F);
    for (size_t i = 0; i < count; i += kTogether) {
        const __m256i c = _mm256_cvtepu16_epi32(_mm_loadu_si128(reinterpret_cast<const __m128i *>(units + i)));
        const __m256i third = _mm256_and_si256(c, trail_bits);
        const __m256i second = _mm256_and_si256(_mm256_srli_epi32(c, 6), trail_bits);
        const __m256i of_three =
            _mm256_or_si256(_mm256_or_si256(_mm256_srli_epi32(c, 12), _mm256_slli_epi32(second, 8)),
                            _mm256_or_si256(_mm256_slli_epi32(third, 16), all(0x8080E0)));
        const __m256i of_two =
            _mm256_or_si256(_mm256_or_si256(_mm256_srli_epi32(c, 6), _mm256_slli_epi32(third, 8)), all(0x80C0));
        const __m256i beyond_one = _mm256_cmpgt_epi32(c, all(0x7F));
        const __m256i beyond_two = _mm256_cmpgt_epi32(c, all(0x7FF));
        const __m256i bytes = _mm256_blendv_epi8(_mm256_blendv_epi8(c, of_two, beyond_one), of_three, beyond_two);
        uint32_t longer = static_cast<uint32_t>(_mm256_movemask_ps(_mm256_castsi256_ps(beyond_one)));
        uint32_t longest = static_cast<uint32_t>(_mm256_movemask_ps(_mm256_castsi256_ps(beyond_two)));
        const size_t left = count - i < kTogether ? count - i : kTogether;
        longer &= (1U << left) - 1;
        longest &= (1U << left) - 1;
        uint8_t *const end = o + left + __builtin_popcount(longer | longest << kTogether);
        const auto put = [&o](__m128i quarter, uint32_t mask) {
            store_quarter(o, shuffled(quarter, kUtf8OfMask.of[mask]));
            o += 4 + __builtin_popcount(mask);
        };
        put(_mm256_castsi256_si128(bytes), (longer & 0x0F) | (longest & 0x0F) << 4);
        put(_mm256_extracti128_si256(bytes, 1), longer >> 4 | (longest & 0xF0));
        o = end;
    }
    return o;
}

// The bytes from p on, with zeros behind the last of them.
class Tail {
public:
    Tail(const uint8_t *p, size_t length) { memcpy(bytes_, p, length < sizeof bytes_ ? length : sizeof bytes_); }
    Block at(size_t offset) const { return load(bytes_ + offset); }

private:
    uint8_t bytes_[kBlock + 8] = {};
};

} // namespace jkc::avx2
