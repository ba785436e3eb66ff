// Sixteen bytes at once.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>

#if defined(__SSE2__)
#include <emmintrin.h>
#elif defined(__wasm_simd128__)
#include <wasm_simd128.h>
#endif

namespace jkc {

constexpr size_t kWide = 16;

// gcc and clang have operators for these.
using Bytes16 = uint8_t __attribute__((vector_size(kWide)));

inline Bytes16 load16(const uint8_t *p) {
    Bytes16 bytes;
    memcpy(&bytes, p, sizeof bytes);
    return bytes;
}

constexpr Bytes16 splat16(uint8_t b) { return Bytes16{b, b, b, b, b, b, b, b, b, b, b, b, b, b, b, b}; }

// Each of the following returns all bits of the bytes for which it holds.
inline Bytes16 equals(Bytes16 bytes, uint8_t b) { return reinterpret_cast<Bytes16>(bytes == splat16(b)); }
inline Bytes16 above(Bytes16 bytes, uint8_t b) { return reinterpret_cast<Bytes16>(bytes > splat16(b)); }
inline Bytes16 between(Bytes16 bytes, uint8_t first, uint8_t last) {
    return reinterpret_cast<Bytes16>(bytes - splat16(first) <= splat16(static_cast<uint8_t>(last - first)));
}
// Where kMask has bits, they equal those of b.
template <uint8_t kMask>
inline Bytes16 equals_masked(Bytes16 bytes, uint8_t b) {
    return equals(bytes & splat16(kMask), b);
}

inline Bytes16 none(Bytes16 /*bytes*/) { return Bytes16{}; }
// Every second place, from the first on.
inline Bytes16 even_places(Bytes16 /*bytes*/) {
    return Bytes16{0xFF, 0, 0xFF, 0, 0xFF, 0, 0xFF, 0, 0xFF, 0, 0xFF, 0, 0xFF, 0, 0xFF, 0};
}

template <uint8_t kBits>
inline Bytes16 flipped(Bytes16 bytes) {
    return bytes ^ splat16(kBits);
}

// Compares bytes in one instruction each: SSE2 compares signed bytes only, so these are shifted once.
struct Ordered {
    using Signed16 = int8_t __attribute__((vector_size(kWide)));
    Signed16 shifted;
};
inline Ordered ordered(Bytes16 bytes) { return {reinterpret_cast<Ordered::Signed16>(bytes ^ splat16(0x80))}; }
inline Bytes16 above(Ordered bytes, uint8_t b) {
    return reinterpret_cast<Bytes16>(bytes.shifted > reinterpret_cast<Ordered::Signed16>(splat16(b ^ 0x80)));
}

// The top bit of each byte, that of the first one lowest.
inline uint32_t movemask(Bytes16 bytes) {
#if defined(__SSE2__)
    return static_cast<uint32_t>(_mm_movemask_epi8(reinterpret_cast<__m128i>(bytes)));
#elif defined(__wasm_simd128__)
    return wasm_i8x16_bitmask(reinterpret_cast<v128_t>(bytes));
#else
    uint32_t mask = 0;
    for (size_t i = 0; i < kWide; ++i) {
        mask |= static_cast<uint32_t>(bytes[i] >> 7) << i;
    }
    return mask;
#endif
}

// Whether any byte has its top bit.
inline bool any(Bytes16 bytes) { return movemask(bytes) != 0; }

// One bit for each of the sixteen bytes that is one of kStops, or that has a top bit in `hits`.
template <uint8_t... kStops>
inline uint32_t stop_mask([[maybe_unused]] Bytes16 bytes, Bytes16 hits) {
    ((hits |= equals(bytes, kStops)), ...);
    return movemask(hits);
}

// The same for each byte that is 0x80 or more, or one of kStops.
template <uint8_t... kStops>
inline uint32_t stop_mask(Bytes16 bytes) {
    return stop_mask<kStops...>(bytes, bytes);
}

// Passes 7-bit bytes other than kStops, sixteen at a time while there are that many before `end`; returns where it
// stopped: at a stop byte, or with fewer than sixteen bytes left.
template <uint8_t... kStops>
inline const uint8_t *skip_ascii(const uint8_t *p, const uint8_t *end) {
    while (static_cast<size_t>(end - p) >= kWide) {
        const uint32_t mask = stop_mask<kStops...>(load16(p));
        if (mask != 0) {
            return p + __builtin_ctz(mask);
        }
        p += kWide;
    }
    return p;
}

} // namespace jkc
