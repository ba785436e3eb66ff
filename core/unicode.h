// Facts about Unicode that several parts need.
#pragma once

#include <cstdint>

#include "core/code_types.h"
#include "tables/characters.h"
#include "tables/unicode_classes.h"

namespace jkc {

constexpr uint32_t high_surrogate(uint32_t c) { return ((c - 0x10000) >> 10 | 0xD800) & 0xFFFF; }
constexpr uint32_t low_surrogate(uint32_t c) { return (c & 0x3FF) | 0xDC00; }
constexpr uint32_t combine_surrogates(uint32_t high, uint32_t low) {
    return 0x10000 + ((high - 0xD800) << 10) + (low - 0xDC00);
}

// Half-width katakana have the bytes A1 to DF in Shift_JIS, and the same less 80 in JIS.
constexpr uint8_t sjis_katakana_byte(uint32_t c) { return static_cast<uint8_t>(c - 0xFEC0); }
constexpr uint32_t half_width_katakana(uint8_t jis_byte) { return 0xFF40U + jis_byte; }

constexpr bool is_trail(uint8_t b) { return (b & 0xC0) == 0x80; }
// Bytes that a lead byte announces; 1 for what is none.
constexpr size_t utf8_length(uint8_t lead) {
    if (lead < 0xC0 || lead > 0xF7) {
        return 1;
    }
    return lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
}
constexpr uint32_t utf8_code_point(uint8_t b0, uint8_t b1) {
    return static_cast<uint32_t>(b0 & 0x1F) << 6 | (b1 & 0x3FU);
}
constexpr uint32_t utf8_code_point(uint8_t b0, uint8_t b1, uint8_t b2) {
    return static_cast<uint32_t>(b0 & 0x0F) << 12 | static_cast<uint32_t>(b1 & 0x3F) << 6 | (b2 & 0x3FU);
}
constexpr uint32_t utf8_code_point(uint8_t b0, uint8_t b1, uint8_t b2, uint8_t b3) {
    return static_cast<uint32_t>(b0 & 0x07) << 18 | static_cast<uint32_t>(b1 & 0x3F) << 12 |
           static_cast<uint32_t>(b2 & 0x3F) << 6 | (b3 & 0x3FU);
}

// The byte orders of UTF-16.
struct BigEndian {
    static constexpr Family kFamily = Family::kUtf16Be;
    static constexpr uint32_t unit(const uint8_t *p) { return static_cast<uint32_t>(p[0]) << 8 | p[1]; }
    static constexpr void put(uint8_t *o, uint32_t unit) {
        o[0] = static_cast<uint8_t>(unit >> 8);
        o[1] = static_cast<uint8_t>(unit);
    }
};
struct LittleEndian {
    static constexpr Family kFamily = Family::kUtf16Le;
    static constexpr uint32_t unit(const uint8_t *p) { return static_cast<uint32_t>(p[1]) << 8 | p[0]; }
    static constexpr void put(uint8_t *o, uint32_t unit) {
        o[0] = static_cast<uint8_t>(unit);
        o[1] = static_cast<uint8_t>(unit >> 8);
    }
};

} // namespace jkc
