// The line and column of places in a text that comes in pieces, in constant memory.
#pragma once

#include "jni/codec.h"

namespace jkc {

// Both from 1 on, the column in characters.
struct Place {
    int64_t line;
    int64_t column;
};

class LinePlaces {
public:
    // The memory is filled with zeros.
    void init(int32_t code_type);
    void reset();

    // The text goes on with these bytes, which must stay until pass_piece().
    void next(const uint8_t *data, size_t length);
    // The place of a loss, by its offset behind any byte-order mark. Offsets never go back.
    Place at(uint64_t offset);
    // Passes the piece but for its end, where a converter may still find a loss.
    void pass_piece();

private:
    static constexpr size_t kReach = 64; // as much as a converter keeps back

    void pass_bom();
    void pass(uint64_t length);
    void take(const uint8_t *p, const uint8_t *end);
    void count(const uint8_t *p, const uint8_t *end);
    size_t count_whole(const uint8_t *p, const uint8_t *end);

    Codec counter_; // reads the line
    int32_t code_type_;
    bool at_begin_;
    uint64_t passed_; // the offset up to which all is counted
    int64_t line_;
    int64_t characters_; // of this line
    bool behind_cr_;
    uint8_t cut_[4]; // the beginning of a character that is not counted yet
    size_t cut_length_;
    uint8_t held_[kReach + 1]; // the end of earlier pieces, not passed yet
    size_t held_length_;
    const uint8_t *data_; // the rest of this piece
    size_t length_;
};

} // namespace jkc
