// The scanner for UTF-8. Judgement feeds it the blocks of non-ASCII input.
#pragma once

#include "judge/scan/evidence.h"

namespace jkc {

class Utf8Scanner {
public:
    // Takes the bytes from p to end. Returns where it stopped: at `end`, or at a character that `end` cuts.
    const uint8_t *scan(const uint8_t *p, const uint8_t *end, bool last);

    // To be called when a block has been scanned, before its memory goes.
    void settle();

    // What watch() still looks for.
    struct Wanted {
        bool four_byte;
        bool decomposed;
    };
    // As scan(), but looks only for what is wanted, and only whether there is any. For input of which UTF-8
    // is_eliminated().
    const uint8_t *watch(const uint8_t *p, const uint8_t *end, Wanted wanted);

    // Whether UTF-8 cannot win any more. One valid character keeps it in the set all the same: it must have been
    // counted, or not be there from p to end.
    bool is_eliminated(const uint8_t *p, const uint8_t *end) const;

    Origin origin;
    Evidence found;
    int64_t four_byte = 0;  // bytes of four-byte sequences
    int64_t decomposed = 0; // bytes of bases with their combining marks

private:
    struct Tally;

    // Where the scanner stands, and what it knows there.
    struct Place {
        const uint8_t *p;
        bool base;
    };
    static Place advance(Place from, const uint8_t *to, const uint8_t *end);

    // The last decisive character before known_at_ takes a combining mark. Null: before where the scanner stands, which is
    // at_ otherwise. Mostly nobody asks.
    bool base_ = false;
    const uint8_t *known_at_ = nullptr;
    const uint8_t *at_ = nullptr;
};

} // namespace jkc
