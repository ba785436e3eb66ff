// JIS X 0208 and its extensions in Microsoft's mapping. Each function calls visit(jis_code, character).
#pragma once

#include <cstdint>

#include "tables/charts.h"
#include "tables/code_forms.h"
#include "tables/look_alikes.h"

namespace jkc::tables {

// JIS X 0208, with Microsoft's character where that differs from the standard's.
template <class Visit>
constexpr void for_each_microsoft_0208(Visit visit) {
    for_each_character(kJisX0208, [&](uint32_t jis, char32_t character) {
        for (const LookAlike &pair : kLookAlikes) {
            if (jis == pair.jis) {
                character = pair.microsoft;
            }
        }
        visit(jis, character);
    });
}

// Rows 89 to 92, NEC's selection of the IBM extension: its kanji, then ⅰ to ⅹ, then ￢￤＇＂.
template <class Visit>
constexpr void for_each_nec_selected(Visit visit) {
    uint32_t kanji_cell = (89 - 1) * kCellsPerRow;
    uint32_t symbol = 0x7C71;
    for_each_character(kIbmExtension, [&](uint32_t sjis, char32_t character) {
        if (sjis >= 0xFA5C) {
            visit(jis_code(kanji_cell++), character);
        } else if (sjis <= 0xFA49 || (sjis >= 0xFA54 && sjis <= 0xFA57)) {
            visit(symbol++, character);
        }
    });
}

// All of these, in the order of their codes.
template <class Visit>
constexpr void for_each_microsoft_jis(Visit visit) {
    for_each_microsoft_0208(visit);
    for_each_character(kNecRow13, visit);
    for_each_nec_selected(visit);
}

} // namespace jkc::tables
