// Whether a text is UTF-8 by the standard: the shortest form, no surrogates, nothing above U+10FFFF. (Utf8Scanner asks
// whether it is Japanese text in UTF-8, and takes such sequences.)
#pragma once

#include <cstddef>
#include <cstdint>

namespace jkc {

class Utf8Validity {
public:
    // Looks at the next piece, which is at `offset` in the text. Returns where it stopped: at `end`, or at a character
    // that `end` cuts.
    const uint8_t *take(const uint8_t *p, const uint8_t *end, bool last, int64_t offset);

    int64_t first_error = -1; // offset of the first ill-formed sequence, behind which nothing is looked at; -1: none
    uint64_t two_byte = 0;    // characters of two bytes before that
    uint64_t longer = 0;      // of three and four bytes

private:
    const uint8_t *take_many(const uint8_t *p, const uint8_t *end);
};

} // namespace jkc
