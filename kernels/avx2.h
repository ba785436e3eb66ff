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

// The bytes from p on, with zeros behind the last of them.
class Tail {
public:
    Tail(const uint8_t *p, size_t length) { memcpy(bytes_, p, length < sizeof bytes_ ? length : sizeof bytes_); }
    Block at(size_t offset) const { return load(bytes_ + offset); }

private:
    uint8_t bytes_[kBlock + 8] = {};
};

} // namespace jkc::avx2
