// A conversion as java.nio has it: it takes what is whole, stops in front of each loss and can go on behind it, and
// keeps neither input nor output, so that what is taken is always what is written.
#pragma once

#include "convert/conversion.h"

namespace jkc {

class Codec {
public:
    enum Result : uint8_t {
        kUnderflow,  // all is taken but what may be the beginning of a character
        kOverflow,   // the next character does not fit
        kIllFormed,  // `loss_length` bytes here
        kUnmappable, // the same
    };

    // From or to the UTF-16 of this machine, and a code type that exists. The memory is filled with zeros.
    void init(int32_t from, int32_t to);
    void reset();

    // Moves both places on.
    Result run(const uint8_t *&p, const uint8_t *end, uint8_t *&o, const uint8_t *o_end);
    // Closes the output: kUnderflow, or kOverflow with nothing written.
    Result flush(uint8_t *&o, const uint8_t *o_end);

    uint32_t loss_length() const { return loss_length_; }

private:
    // All that a run changes, but for the output that is pending.
    struct State {
        JkcContext ctx;
        Losses losses;
        ConversionRoom room;
    };

    size_t window(const uint8_t *p, const uint8_t *end, size_t room) const;
    bool ends_with_half_a_pair(const uint8_t *p, const uint8_t *end) const;
    bool pass_bom(const uint8_t *&p, const uint8_t *end) const;
    Result run_window(const uint8_t *&p, const uint8_t *end, uint8_t *&o, const uint8_t *o_end);
    Result run_one(const uint8_t *&p, const uint8_t *end, uint8_t *&o, const uint8_t *o_end);
    bool hand_over(uint8_t *&o, const uint8_t *o_end);

    State state_;
    Conversion *conversion_; // in state_.room
    int32_t from_;
    int32_t to_;
    bool encodes_;
    bool at_begin_;   // where a byte-order mark is passed, or written
    size_t per_unit_; // the most bytes that a unit of output, or of input, becomes
    size_t besides_;  // and what may come besides
    uint32_t loss_length_;
    uint8_t area_[sizeof(JkcBlock)];
};

// The code type of UTF-16 as this machine has it.
int32_t native_utf16();

} // namespace jkc
