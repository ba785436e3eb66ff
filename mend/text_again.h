// Bytes read in the encoding that they were in.
#pragma once

#include "convert/sequences.h"
#include "mend/text_buffer.h"

namespace jkc {

class TextAgain {
public:
    explicit TextAgain(int32_t was);

    // Reads the characters of which all bytes are there; `last`: all. Returns where it stopped: null, memory is short
    // or the buffer is full.
    const uint8_t *take(const uint8_t *p, const uint8_t *end, bool last, TextBuffer &text);

    uint64_t characters = 0; // beyond ASCII
    uint64_t errors = 0;     // ill-formed stretches in which no byte is known to be lost

private:
    Sequence look(const uint8_t *p, size_t left) const;
    size_t damaged_length(const uint8_t *p, size_t left) const;

    int32_t was_;
    Family family_;
    JkcContext ctx_ = {};
};

} // namespace jkc
