// Builds decoding and encoding tables at compile time.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "tables/code_forms.h"

namespace jkc::tables {

// The size of a decoding table that any two bytes may index.
constexpr size_t kTwoByteCodes = 0x10000;

// Up to U+FFE5, the full-width yen sign, the last BMP character of any code type.
constexpr size_t kEncodedCharacters = 0xFFE6;

template <class Entry>
using EncodingTable = std::array<Entry, kEncodedCharacters>;

// A decoding table in the making. The first code that claims a character gets it, so that a code survives the way to
// Unicode and back; codes that claim it later stay unmapped.
template <size_t kCount>
struct DecodingTable {
    std::array<uint16_t, kCount> characters{};
    std::array<bool, 0x10000> claimed{};

    constexpr void add(uint32_t code, char32_t character) {
        if (!claimed[character]) {
            claimed[character] = true;
            characters[code] = static_cast<uint16_t>(character);
        }
    }

    constexpr void add_identical(uint32_t first, uint32_t last) {
        for (uint32_t code = first; code <= last; ++code) {
            add(code, code);
        }
    }

    constexpr void add_katakana(uint32_t first_code) {
        for (uint32_t i = 0; i < kHalfWidthKatakanaCount; ++i) {
            add(first_code + i, kFirstHalfWidthKatakana + i);
        }
    }
};

// Encodes each character to the code that decodes to it, behind `prefix`.
template <class Entry, size_t kCount>
constexpr void add_inverse(EncodingTable<Entry> &table, const std::array<uint16_t, kCount> &decoding,
                           uint32_t prefix = 0) {
    for (uint32_t code = 0; code < kCount; ++code) {
        if (decoding[code] != 0) {
            table[decoding[code]] = static_cast<Entry>(prefix | code);
        }
    }
}

} // namespace jkc::tables
