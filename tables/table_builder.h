/** What the code types' tables are built with, at compile time. */
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "tables/code_forms.h"

namespace jkc::tables {

/** The size of a decoding table that any two bytes may index. */
inline constexpr std::size_t kTwoByteCodes = 0x10000;

/** U+FFE5, the full-width yen sign, is the last character of the BMP that a code type has. */
inline constexpr std::size_t kEncodedCharacters = 0xFFE6;

inline constexpr char16_t kYenSign = 0x00A5;
inline constexpr char16_t kOverline = 0x203E;

template <class Entry>
using EncodingTable = std::array<Entry, kEncodedCharacters>;

/**
 * A decoding table in the making. A character goes to the first code that claims it, so that it comes
 * back from Unicode as the code it was; what claims it later stays unmapped.
 */
template <std::size_t count>
struct DecodingTable {
    std::array<uint16_t, count> characters{};
    std::array<bool, 0x10000> claimed{};

    constexpr void add(uint32_t code, char32_t character) {
        if (!claimed[character]) {
            claimed[character] = true;
            characters[code] = static_cast<uint16_t>(character);
        }
    }

    constexpr void add_identical(uint32_t first, uint32_t last) {
        for (uint32_t code = first; code <= last; code++) {
            add(code, code);
        }
    }

    constexpr void add_katakana(uint32_t first_code) {
        for (uint32_t i = 0; i < kKatakanaCount; i++) {
            add(first_code + i, kFirstKatakana + i);
        }
    }
};

/** Encodes each character to the code that decodes to it. @param prefix stands before the code */
template <class Entry, std::size_t count>
constexpr void add_inverse(EncodingTable<Entry> &table, const std::array<uint16_t, count> &decoding,
                           uint32_t prefix = 0) {
    for (uint32_t code = 0; code < count; code++) {
        if (decoding[code] != 0) {
            table[decoding[code]] = static_cast<Entry>(prefix | code);
        }
    }
}

} // namespace jkc::tables
