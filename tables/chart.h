// The form of a chart: the characters of a character set by their codes.
#pragma once

#include <cstdint>
#include <span>

namespace jkc::tables {

// One line of a chart, as the standards print it: sixteen codes. A space, and what a line leaves off at its end, is a
// code without a character.
//
// The charts hold the characters themselves, so that they can be compared with the printed ones. A character that an
// editor could change (normalisation) or a reader could not see (a combining mark) is written as a \u escape.
struct ChartLine {
    uint32_t first_code;
    char32_t characters[17]; // sixteen and the end of the string
};

using Chart = std::span<const ChartLine>;

// Calls visit(code, character) for each character of a chart, in the order of its lines.
template <class Visit>
constexpr void for_each_character(Chart chart, Visit visit) {
    for (const ChartLine &line : chart) {
        for (uint32_t i = 0; i < 16; ++i) {
            if (line.characters[i] > U' ') {
                visit(line.first_code + i, line.characters[i]);
            }
        }
    }
}

} // namespace jkc::tables
