// Looks at sixteen bytes at once.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace jkc {

constexpr size_t kWide = 16;

#if defined(__SSE2__)

// One bit for each of the sixteen bytes that is 0x80 or more, or one of kStops.
template <uint8_t... kStops>
inline uint32_t stop_mask(const uint8_t *p) {
    const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i *>(p));
    __m128i hits = bytes; // movemask reads the top bits
    ((hits = _mm_or_si128(hits, _mm_cmpeq_epi8(bytes, _mm_set1_epi8(static_cast<char>(kStops))))), ...);
    return static_cast<uint32_t>(_mm_movemask_epi8(hits));
}

#else

template <uint8_t... kStops>
inline uint32_t stop_mask(const uint8_t *p) {
    uint32_t mask = 0;
    for (size_t i = 0; i < kWide; ++i) {
        const bool hit = p[i] >= 0x80 || ((p[i] == kStops) || ...);
        mask |= static_cast<uint32_t>(hit) << i;
    }
    return mask;
}

#endif

// Passes 7-bit bytes other than kStops, sixteen at a time while there are that many before `end`; returns where it
// stopped: at a stop byte, or with fewer than sixteen bytes left.
template <uint8_t... kStops>
inline const uint8_t *skip_plain(const uint8_t *p, const uint8_t *end) {
    while (static_cast<size_t>(end - p) >= kWide) {
        const uint32_t mask = stop_mask<kStops...>(p);
        if (mask != 0) {
            return p + __builtin_ctz(mask);
        }
        p += kWide;
    }
    return p;
}

} // namespace jkc
