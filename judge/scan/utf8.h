// The scanner for UTF-8.
#pragma once

#include "judge/scan/evidence.h"

namespace jkc {

class Utf8Scanner {
public:
    // Takes the bytes from p to end. Returns where it stopped: at a character that goes on behind `end`.
    const uint8_t *scan(const uint8_t *p, const uint8_t *end, bool last);

    // What watch() still looks for.
    struct Wanted {
        bool four_byte;
        bool decomposed;
    };
    // As scan(), but counts only what is wanted, and of that only whether there is any. For text in which it is_out().
    const uint8_t *watch(const uint8_t *p, const uint8_t *end, Wanted wanted);

    // Whether UTF-8 cannot win any more, and has shown the valid character that keeps it in the set all the same, or does
    // not from p to end.
    bool is_out(const uint8_t *p, const uint8_t *end) const;

    Evidence found;
    int64_t four_byte = 0;  // bytes of four-byte sequences
    int64_t decomposed = 0; // bytes of bases with their marks

private:
    struct Tally;

    // Where the scanner stands, and what it knows there.
    struct Place {
        const uint8_t *p;
        bool base;
    };
    static Place advance(Place from, const uint8_t *to, const uint8_t *end);

    bool base_ = false; // the last character that tells can take a combining mark
};

} // namespace jkc
