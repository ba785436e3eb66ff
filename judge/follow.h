// Where a scanner stands that no longer counts.
//
// What stays of a scanner whose encoding is out of the question is little: at which byte the next character begins, and
// what its last telling character was. Both depend on the last stretch of text only. Two 7-bit bytes in a row bring
// every scanner into step, whatever came before: the first may be the end of a character, the second is one by itself
// or the end of the same one.
#pragma once

#include <cstdint>

#include "core/bytes.h"
#include "core/wide.h"

namespace jkc {

// The last position before `to` that is surely the begin of a character; `begin` is one.
inline const uint8_t *in_step_before(const uint8_t *begin, const uint8_t *to) {
    const uint8_t *p = to - 1;
    while (p - begin >= 2 && !(is_plain(p[-1]) && is_plain(p[-2]))) {
        --p;
    }
    return p - begin >= 2 ? p : begin;
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
// the last position before `to` at which a telling character may begin, null when there is none.
template <class Follower>
const uint8_t *follow(const Follower &follower, const uint8_t *begin, const uint8_t *to, const uint8_t *end,
                      typename Follower::State &state) {
    const uint8_t *stands = nullptr;
    const uint8_t *until = before_plain_run(begin, to);
    if (until != to) {
        stands = to;
    }
    for (;;) {
        const uint8_t *from = until > begin ? in_step_before(begin, until) : begin;
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
