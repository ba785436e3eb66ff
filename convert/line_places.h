// The line and column that a conversion has got to, in constant memory.
#pragma once

#include "convert/codec.h"

namespace jkc {

// Both from 1 on, the column in characters.
struct Place {
    uint64_t line;
    uint64_t column;
};

class LinePlaces {
public:
    // The memory is filled with zeros.
    void init(int32_t code_type);
    // For a text that begins at this offset, behind any byte-order mark.
    void start(uint64_t offset);

    // Passes what is in front of p, which stands at `offset`. What is not passed yet lies there as a whole.
    void pass(const uint8_t *p, uint64_t offset);
    // The place of a loss at p.
    Place at(const uint8_t *p, uint64_t offset);

private:
    void take(const uint8_t *p, const uint8_t *end);
    void count(const uint8_t *p, const uint8_t *end);
    size_t count_whole(const uint8_t *p, const uint8_t *end);

    Codec counter_; // reads the line
    Family family_;
    uint64_t passed_; // the offset up to which all is counted
    uint64_t line_;
    uint64_t characters_; // of this line
    bool behind_cr_;
    uint8_t cut_[4]; // the beginning of a character that is not counted yet
    size_t cut_length_;
};

} // namespace jkc
