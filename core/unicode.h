// Facts about Unicode that several parts need.
#pragma once

#include <cstdint>

#include "core/code_types.h"

namespace jkc {

// Class bits of a BMP code point (_unibe_def_table).
enum ClassBits : uint16_t {
    kEvidence = 0x0003,            // speaks for Japanese text
    kPossible = 0x0200,            // may stand in a text, with kEvidence: says little
    kAnyText = 0x0203,             // any of both: the code point matters at all
    kTakesVoicedMark = 0x0010,     // composes with U+3099
    kTakesSemiVoicedMark = 0x0020, // composes with U+309A
    kTakesDiaeresis = 0x0040,      // composes with U+0308
    kTakesBreve = 0x0080,          // composes with U+0306
    kKanaBase = kTakesVoicedMark | kTakesSemiVoicedMark,
    kCyrillicBase = kTakesDiaeresis | kTakesBreve,
    kAnyBase = kKanaBase | kCyrillicBase
};

constexpr uint32_t kBreve = 0x0306;
constexpr uint32_t kDiaeresis = 0x0308;
constexpr uint32_t kVoicedMark = 0x3099;
constexpr uint32_t kSemiVoicedMark = 0x309A;

constexpr bool is_combining_mark(uint32_t c) {
    return c == kBreve || c == kDiaeresis || c == kVoicedMark || c == kSemiVoicedMark;
}

constexpr bool is_high_surrogate(uint32_t unit) { return (unit & 0xFC00) == 0xD800; }
constexpr bool is_low_surrogate(uint32_t unit) { return (unit & 0xFC00) == 0xDC00; }
constexpr uint32_t high_surrogate(uint32_t c) { return ((c - 0x10000) >> 10 | 0xD800) & 0xFFFF; }
constexpr uint32_t low_surrogate(uint32_t c) { return (c & 0x3FF) | 0xDC00; }
constexpr uint32_t combine_surrogates(uint32_t high, uint32_t low) {
    return 0x10000 + ((high - 0xD800) << 10) + (low - 0xDC00);
}

// Hiragana and katakana proper, with their marks but without the double hyphen and the middle dot.
constexpr bool is_kana_letter(uint32_t c) { return (c >= 0x3041 && c <= 0x309F) || (c >= 0x30A1 && c <= 0x30FF); }
constexpr bool is_vertical_repeat_mark(uint32_t c) { return c >= 0x3031 && c <= 0x3035; }
constexpr bool is_kana(uint32_t c) { return is_kana_letter(c) || is_vertical_repeat_mark(c); }

// Half-width katakana, U+FF61 to U+FF9F, have the bytes A1 to DF in Shift_JIS, and the same less 80 in JIS.
constexpr bool is_half_width_katakana(uint32_t c) { return c >= 0xFF61 && c <= 0xFF9F; }
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
