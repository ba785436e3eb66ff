// The scanner for UTF-16 in both byte orders. Judgement feeds it every block.
#pragma once

#include "judge/scan/evidence.h"

namespace jkc {

class Utf16Scanner {
public:
    // With `drops_sides` the byte order that is eliminated is not counted any further.
    explicit Utf16Scanner(bool drops_sides) : drops_sides_(drops_sides) {}

    // What one byte order finds.
    struct Side {
        Evidence found;
        int64_t surrogates = 0; // bytes of surrogate pairs
        int64_t decomposed = 0; // bytes of bases with their combining marks
    };

    // Takes the bytes from p to end. Returns where it stopped: at `end`, or at a code unit that needs bytes behind it.
    const uint8_t *scan(const uint8_t *p, const uint8_t *end, bool last);

    // What watch() still looks for.
    struct Wanted {
        bool surrogates;
        bool decomposed;
    };
    // As scan(), but looks only for what is wanted. For input of which UTF-16 is_eliminated().
    const uint8_t *watch(const uint8_t *p, const uint8_t *end, bool last, Wanted wanted);

    // Whether neither byte order can win any more.
    bool is_eliminated() const { return is_eliminated(big) && is_eliminated(little); }

    Origin origin;
    Side big;
    Side little;

    static bool is_eliminated(const Side &side) { return side.found.errors >= kTooManyErrors; }

private:
    const uint8_t *take_singles(const uint8_t *p, const uint8_t *end);

    bool drops_sides_;
};

} // namespace jkc
