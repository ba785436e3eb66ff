// Whether bytes are Unicode text, by the standard's tables.
#pragma once

#include "tests/fuzz/support.h"

namespace jkc::fuzz {

inline bool is_utf8(const Bytes &text) {
    const uint8_t *p = text.data();
    for (size_t left = text.size(); left > 0;) {
        const size_t length = *p < 0x80 ? 1 : *p >= 0xC2 && *p <= 0xDF ? 2 : *p >= 0xE0 && *p <= 0xEF ? 3 : 4;
        if (length > left || (length == 4 && (*p < 0xF0 || *p > 0xF4))) {
            return false;
        }
        const uint8_t lowest = *p == 0xE0 ? 0xA0 : *p == 0xF0 ? 0x90 : 0x80;
        const uint8_t highest = *p == 0xED ? 0x9F : *p == 0xF4 ? 0x8F : 0xBF;
        for (size_t i = 1; i < length; ++i) {
            if (p[i] < (i == 1 ? lowest : 0x80) || p[i] > (i == 1 ? highest : 0xBF)) {
                return false;
            }
        }
        p += length;
        left -= length;
    }
    return true;
}

inline bool is_utf16(const Bytes &text, bool little_endian) {
    bool high_before = false;
    for (size_t i = little_endian ? 1 : 0; i < text.size(); i += 2) {
        const bool high = (text.data()[i] & 0xFC) == 0xD8;
        const bool low = (text.data()[i] & 0xFC) == 0xDC;
        if (low != high_before) {
            return false;
        }
        high_before = high;
    }
    return !high_before && text.size() % 2 == 0;
}

// The same text in the other byte order.
inline void swap_pairs(const Bytes &text) {
    for (size_t i = 0; i + 1 < text.size(); i += 2) {
        std::swap(text.data()[i], text.data()[i + 1]);
    }
}

} // namespace jkc::fuzz
