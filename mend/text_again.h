// Bytes read in the encoding that they were in.
#pragma once

#include <span>

#include "convert/sequences.h"
#include "mend/text_buffer.h"

namespace jkc {

class TextAgain {
public:
    explicit TextAgain(JkcMisreading misreading);

    // Reads the characters of which all bytes are there; `last`: all. Puts back what of the bytes is certain. Returns
    // where it stopped; null: memory is short, the buffer is full, or there are many errors.
    uint8_t *take(uint8_t *p, const uint8_t *end, bool last, TextBuffer &text);

    // Noise has more than any text.
    bool has_many_errors() const;

    uint64_t characters = 0; // beyond ASCII
    uint64_t errors = 0;     // ill-formed stretches in which no byte is known to be lost
    uint64_t destroyed = 0;  // bytes that no character was made of, without those that were lost before

private:
    Sequence look(const uint8_t *p, size_t left) const;
    int32_t cost_of_two(const uint8_t *p, size_t left) const;
    int32_t cost_of_run(const uint8_t *p, const uint8_t *end) const;
    bool is_trail_of_lost(const uint8_t *p, const uint8_t *end) const;
    void prefer_other_code(uint8_t *p, size_t left) const;
    bool put_back(uint8_t *p, size_t left) const;
    bool put_back_lost(uint8_t *p, size_t left) const;
    bool put_back_other_code(uint8_t *p, size_t left) const;
    size_t damaged_length(const uint8_t *p, size_t left) const;

    JkcMisreading misreading_;
    Family family_;
    std::span<const uint8_t> lost_bytes_; // those that may stand for a lost one
    JkcContext ctx_ = {};
};

} // namespace jkc
