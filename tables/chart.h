#pragma once

#include <cstdint>
#include <span>

namespace jkc::tables {

/**
 * One line of a character set's chart, as the standards print them: sixteen codes a line. A space, and what a
 * line leaves off at its end, is a code without a character.
 *
 * The charts hold the characters themselves, so that they can be compared with the printed ones. Those that an
 * editor could change (normalisation) or a reader could not see (combining marks) are written as \u escapes.
 */
struct ChartLine {
    uint32_t first_code;
    char32_t characters[17]; // sixteen and the end of the string
};

using Chart = std::span<const ChartLine>;

/** Calls visit(code, character) for each character of a chart, in the order of its lines. */
template <class Visit>
constexpr void for_each_character(Chart chart, Visit visit) {
    for (const ChartLine &line : chart) {
        for (uint32_t i = 0; i < 16; i++) {
            if (line.characters[i] > U' ') {
                visit(line.first_code + i, line.characters[i]);
            }
        }
    }
}

} // namespace jkc::tables
