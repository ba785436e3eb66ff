// The codes of a cell of a 94 by 94 chart in JIS, Shift_JIS and EUC.
#pragma once

#include <cstdint>

#include "tables/characters.h"

namespace jkc::tables {

constexpr uint32_t kCellsPerRow = 94;

// Half-width katakana stand in one run in every code type.
constexpr uint32_t kHalfWidthKatakanaCount = kLastHalfWidthKatakana - kFirstHalfWidthKatakana + 1;

// Cells are counted from 0, row after row.
constexpr uint32_t jis_code(uint32_t cell) { return (cell / kCellsPerRow + 0x21) << 8 | (cell % kCellsPerRow + 0x21); }

// Unlike JIS codes, Shift_JIS codes go on behind row 94, with the user-defined characters.
constexpr uint32_t sjis_code(uint32_t cell) {
    const uint32_t row = cell / kCellsPerRow;
    const uint32_t column = cell % kCellsPerRow;
    const uint32_t lead = row / 2 + (row < 62 ? 0x81 : 0xC1); // A0 to DF are no lead bytes
    if (row % 2 != 0) {
        return lead << 8 | (column + 0x9F);
    }
    return lead << 8 | (column + (column < 63 ? 0x40 : 0x41)); // 7F is no trail byte
}

constexpr uint32_t sjis_from_jis(uint32_t jis) {
    return sjis_code(((jis >> 8) - 0x21) * kCellsPerRow + (jis & 0xFF) - 0x21);
}

constexpr uint32_t euc_from_jis(uint32_t jis) { return jis | 0x8080; }

} // namespace jkc::tables
