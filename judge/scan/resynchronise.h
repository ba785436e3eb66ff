// Resynchronises a scanner that no longer counts.
//
// The scanner of an eliminated encoding must still tell where the next character begins, and what its last decisive
// character was. Both depend on the last stretch of text only. Of as many positions in a row as a character may have
// bytes, one at least is a boundary between characters, and passing characters from all of them mostly soon leads to
// the same position.
#pragma once

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <numeric>

#include "core/wide.h"

namespace jkc {

// The boundary at which characters passed from each of the first kLongest positions from `from` on meet; null when they
// do not meet before `to`.
template <class Tracker>
const uint8_t *common_boundary(const Tracker &tracker, const uint8_t *from, const uint8_t *to, const uint8_t *end) {
    const uint8_t *places[Tracker::kLongest];
    std::iota(std::begin(places), std::end(places), from);
    for (;;) {
        const auto [first, last] = std::minmax_element(std::begin(places), std::end(places));
        if (*first == *last) {
            return *first;
        }
        typename Tracker::State unused = Tracker::kUnknown;
        *first = *first < to ? tracker.pass(*first, end, unused) : nullptr;
        if (*first == nullptr) {
            return nullptr;
        }
    }
}

// A boundary not far before `to`; `begin` is one.
template <class Tracker>
const uint8_t *boundary_before(const Tracker &tracker, const uint8_t *begin, const uint8_t *to, const uint8_t *end) {
    for (ptrdiff_t distance = 32; to - begin > distance; distance *= 4) {
        const uint8_t *boundary = common_boundary(tracker, to - distance, to, end);
        if (boundary != nullptr && boundary < to) {
            return boundary;
        }
    }
    return begin;
}

// Passes a long run of ASCII bytes before `to` backwards. Returns a boundary, or `to` without such a run. The character
// in front of the run may take its first two bytes.
inline const uint8_t *before_ascii_run(const uint8_t *begin, const uint8_t *to) {
    const uint8_t *p = to;
    while (static_cast<size_t>(p - begin) >= kWide && stop_mask<>(load16(p - kWide)) == 0) {
        p -= kWide;
    }
    return p == to ? to : p + 2;
}

// Takes a scanner that stands at `begin`, with `state`, to `to`, looking at no more text than it must. Returns where it
// then stands: at `to`, behind it if a character reaches over it, or at a character that `end` cuts. `state` becomes
// its state there.
//
// Tracker::pass(p, end, state) returns the end of the character at p, null when `end` cuts it, and sets the state if
// the character is decisive. Tracker::kUnknown is the state before any decisive character.
// Tracker::last_decisive(begin, to) is the last position before `to` at which a decisive character may begin, null if
// there is none. Tracker::kLongest is the most bytes that a character has.
template <class Tracker>
const uint8_t *resynchronise(const Tracker &tracker, const uint8_t *begin, const uint8_t *to, const uint8_t *end,
                             typename Tracker::State &state) {
    const uint8_t *stands = nullptr;
    const uint8_t *until = before_ascii_run(begin, to);
    if (until != to) {
        stands = to;
    }
    for (;;) {
        const uint8_t *from = until > begin ? boundary_before(tracker, begin, until, end) : begin;
        typename Tracker::State found = Tracker::kUnknown;
        const uint8_t *p = from;
        while (p < until) {
            const uint8_t *next = tracker.pass(p, end, found);
            if (next == nullptr) {
                break;
            }
            p = next;
        }
        if (stands == nullptr) {
            stands = p;
        }
        if (found != Tracker::kUnknown) {
            state = found;
            return stands;
        }
        const uint8_t *decisive = tracker.last_decisive(begin, from);
        if (decisive == nullptr) {
            return stands;
        }
        until = decisive + 1;
    }
}

} // namespace jkc
