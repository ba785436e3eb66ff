// Characters that have a meaning of their own in several places.
#pragma once

#include <cstdint>

namespace jkc {

// JIS X 0201 Roman has these where ASCII has the backslash and the tilde.
constexpr uint32_t kYenSign = 0x00A5;
constexpr uint32_t kOverline = 0x203E;

// The combining marks of decomposed Cyrillic letters and kana.
constexpr uint32_t kBreve = 0x0306;
constexpr uint32_t kDiaeresis = 0x0308;
constexpr uint32_t kVoicedMark = 0x3099;
constexpr uint32_t kSemiVoicedMark = 0x309A;

constexpr bool is_combining_mark(uint32_t c) {
    return c == kBreve || c == kDiaeresis || c == kVoicedMark || c == kSemiVoicedMark;
}

// Hiragana and katakana proper, with their marks but without the double hyphen and the middle dot.
constexpr bool is_kana_letter(uint32_t c) { return (c >= 0x3041 && c <= 0x309F) || (c >= 0x30A1 && c <= 0x30FF); }
constexpr bool is_vertical_repeat_mark(uint32_t c) { return c >= 0x3031 && c <= 0x3035; }
constexpr bool is_kana(uint32_t c) { return is_kana_letter(c) || is_vertical_repeat_mark(c); }

constexpr uint32_t kFirstHalfWidthKatakana = 0xFF61;
constexpr uint32_t kLastHalfWidthKatakana = 0xFF9F;
constexpr bool is_half_width_katakana(uint32_t c) {
    return c >= kFirstHalfWidthKatakana && c <= kLastHalfWidthKatakana;
}

// The replacement character, and what its bytes are in the other byte order.
constexpr uint32_t kReplacement = 0xFFFD;
constexpr uint32_t kSwappedReplacement = 0xFDFF;

constexpr bool is_surrogate(uint32_t unit) { return (unit & 0xF800) == 0xD800; }
constexpr bool is_high_surrogate(uint32_t unit) { return (unit & 0xFC00) == 0xD800; }
constexpr bool is_low_surrogate(uint32_t unit) { return (unit & 0xFC00) == 0xDC00; }

} // namespace jkc
