// Where a scanner stands that no longer counts.
//
// What stays of a scanner whose encoding is out of the question is little: at which byte the next character begins, and
// what its last telling character was. Both depend on the last stretch of text only. Of as many places in a row as a
// character may have bytes, the scanner stands at one at least, and followed from all of them it mostly soon comes to the
// same place.
#pragma once

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <numeric>

#include "core/wide.h"

namespace jkc {

// Where the scanner comes by, wherever in the first bytes from `from` on a character begins; null when that is not told
// up to `to`.
template <class Follower>
const uint8_t *meeting_place(const Follower &follower, const uint8_t *from, const uint8_t *to, const uint8_t *end) {
    const uint8_t *places[Follower::kLongest];
    std::iota(std::begin(places), std::end(places), from);
    for (;;) {
        const auto [first, last] = std::minmax_element(std::begin(places), std::end(places));
        if (*first == *last) {
            return *first;
        }
        typename Follower::State unused = Follower::kUnknown;
        *first = *first < to ? follower.pass(*first, end, unused) : nullptr;
        if (*first == nullptr) {
            return nullptr;
        }
    }
}

// A position before `to`, and not far, that is surely the begin of a character; `begin` is one.
template <class Follower>
const uint8_t *in_step_before(const Follower &follower, const uint8_t *begin, const uint8_t *to, const uint8_t *end) {
    for (ptrdiff_t distance = 32; to - begin > distance; distance *= 4) {
        const uint8_t *place = meeting_place(follower, to - distance, to, end);
        if (place != nullptr && place < to) {
            return place;
        }
    }
    return begin;
}

// Passes the end of a long run of 7-bit bytes backwards; what it returns is the begin of a character, or `to`.
inline const uint8_t *before_plain_run(const uint8_t *begin, const uint8_t *to) {
    const uint8_t *p = to;
    while (static_cast<size_t>(p - begin) >= kWide && stop_mask<>(load16(p - kWide)) == 0) {
        p -= kWide;
    }
    return p == to ? to : p + 2;
}

// Follows a scanner from `begin`, where it stands with `state`, to `to`, without looking at more than it must. Returns
// where it stands: at `to` or, if a character reaches over that, behind it; at a character that `end` cuts. `state`
// becomes its state there.
//
// Follower::pass(p, end, state) returns the end of the character at p, null when `end` cuts it, and sets the state when
// the character tells it; Follower::kUnknown is the state that nothing has told. Follower::last_telling(begin, to) is
// the last position before `to` at which a telling character may begin, null when there is none. Follower::kLongest are
// the bytes of a character at most.
template <class Follower>
const uint8_t *follow(const Follower &follower, const uint8_t *begin, const uint8_t *to, const uint8_t *end,
                      typename Follower::State &state) {
    const uint8_t *stands = nullptr;
    const uint8_t *until = before_plain_run(begin, to);
    if (until != to) {
        stands = to;
    }
    for (;;) {
        const uint8_t *from = until > begin ? in_step_before(follower, begin, until, end) : begin;
        typename Follower::State found = Follower::kUnknown;
        const uint8_t *p = from;
        while (p < until) {
            const uint8_t *next = follower.pass(p, end, found);
            if (next == nullptr) {
                break;
            }
            p = next;
        }
        if (stands == nullptr) {
            stands = p;
        }
        if (found != Follower::kUnknown) {
            state = found;
            return stands;
        }
        const uint8_t *telling = follower.last_telling(begin, from);
        if (telling == nullptr) {
            return stands;
        }
        until = telling + 1;
    }
}

} // namespace jkc
