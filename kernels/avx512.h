// 64 bytes as one vector of AVX-512.
#pragma once

#include <cstddef>
#include <cstdint>
#include <immintrin.h>

namespace jkc::avx512 {

struct Block {
    __m512i bytes;
};
// A bit for each byte, that of the first one lowest.
using Flags = uint64_t;

constexpr size_t kBlock = 64;

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
