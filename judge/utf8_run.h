// Counts runs of ordinary Japanese UTF-8 text, sixteen bytes at a time.
#pragma once

#include "core/wide.h"

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace jkc {

struct Utf8Run {
    const uint8_t *end; // of the run, the begin of a character
    int64_t valid;      // bytes of characters that are not ASCII
    int64_t kana;       // bytes of kana
};

#if defined(__SSE2__)

// Three-byte characters that need a closer look, told by their first byte (which is E3 to E9, or EF), second and third:
// all of the rest are text, of E3 those from E3 81 on are kana and the others are not. Left out are U+302A to U+3040,
// U+3097 to U+309A, U+30A0, U+3100 to U+4DFF, U+9F80 to U+9FFF, and of EF everything but U+FF01 to U+FF3F.
inline Bytes16 uncommon(Bytes16 first, Bytes16 second, Bytes16 third) {
    const Bytes16 symbol = equals(second, 0x80) & above(third, 0xA9);
    const Bytes16 hiragana = equals(second, 0x81) & equals(third, 0x80);
    const Bytes16 katakana = equals(second, 0x82) & (between(third, 0x97, 0x9A) | equals(third, 0xA0));
    return (equals(first, 0xE3) & (symbol | hiragana | katakana | above(second, 0x83))) |
           (equals(first, 0xE4) & ~above(second, 0xB7)) | (equals(first, 0xE9) & above(second, 0xBD)) |
           (equals(first, 0xEF) & ~(equals(second, 0xBC) & ~equals(third, 0x80)));
}

// Adds up how many of the sixteen bytes have their lowest bit.
class ByteCount {
public:
    void add(Bytes16 bits) {
        sums_ = _mm_add_epi64(sums_, _mm_sad_epu8(reinterpret_cast<__m128i>(bits & all16(1)), _mm_setzero_si128()));
    }
    int64_t total() const {
        int64_t halves[2];
        memcpy(halves, &sums_, sizeof halves);
        return halves[0] + halves[1];
    }

private:
    __m128i sums_ = _mm_setzero_si128();
};

// Counts from p, the begin of a character, to the first sixteen bytes that hold something else than ASCII and common
// three-byte characters, or to the last sixteen bytes. Two bytes behind `end` must be readable.
inline Utf8Run common_run(const uint8_t *p, const uint8_t *end) {
    constexpr uint32_t kAll = 0xFFFF;
    // A lead in the last two places reaches over the sixteen bytes: it is counted the next time.
    constexpr Bytes16 kWhole = {0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF,
                                0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0,    0};
    ByteCount characters;
    ByteCount kana;
    while (end - p >= static_cast<ptrdiff_t>(sizeof(Bytes16))) {
        const Bytes16 first = load16(p);
        const uint32_t coded = mask_of(first);
        if (coded == 0) { // ASCII alone
            p += sizeof(Bytes16);
            continue;
        }
        const Bytes16 second = load16(p + 1);
        const Bytes16 third = load16(p + 2);
        const Bytes16 lead = between(first, 0xE3, 0xE9) | equals(first, 0xEF);
        const Bytes16 whole = lead & kWhole;
        const uint32_t leads = mask_of(lead);
        const uint32_t trails = mask_of(equals_masked<0xC0>(first, 0x80));
        if ((leads | trails) != coded || trails != ((leads << 1 | leads << 2) & kAll) ||
            any(whole & uncommon(first, second, third))) {
            break;
        }
        characters.add(whole);
        kana.add(whole & equals(first, 0xE3) & above(second, 0x80));
        p += (leads & 0x4000) != 0 ? 14 : (leads & 0x8000) != 0 ? 15 : 16;
    }
    return {p, 3 * characters.total(), 3 * kana.total()};
}

#else

inline Utf8Run common_run(const uint8_t *p, const uint8_t * /*end*/) { return {p, 0, 0}; }

#endif

} // namespace jkc
