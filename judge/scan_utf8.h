// The scanner for UTF-8.
#pragma once

#include "judge/candidates.h"

namespace jkc {

class Utf8Scanner {
public:
    explicit Utf8Scanner(const JkcContext &ctx) : classes_(ctx.uni_def_table) {}

    // Takes the bytes from p to end. Returns where it stopped: at a character that goes on behind `end`.
    const uint8_t *scan(const uint8_t *p, const uint8_t *end, bool last);

    Evidence found;
    int64_t four_byte = 0;  // bytes of four-byte sequences
    int64_t decomposed = 0; // bytes of bases with their marks

private:
    size_t two_byte(const uint8_t *p);
    size_t three_byte(const uint8_t *p);
    size_t four_byte_or_error(const uint8_t *p);

    const uint16_t *classes_;
    bool base_ = false; // the last character that tells can take a combining mark
};

} // namespace jkc
