// What the encoders of byte encodings share: an ASCII character is a single byte. The functions call each other, so an
// encoder that keeps anything back hides all of them but ascii_wide(), which comes behind its ascii().
#pragma once

#include "convert/encoder_base.h"
#include "convert/line_type.h"
#include "core/wide.h"

namespace jkc {

class ByteEncoder : public EncoderBase {
public:
    static uint8_t *ascii(uint8_t *o, uint8_t b) {
        *o = b;
        return o + 1;
    }
    static uint8_t *ascii_wide(uint8_t *o, Bytes16 text) {
        memcpy(o, &text, kWide);
        return o + kWide;
    }
    static uint8_t *line_end(uint8_t *o, LineEnd end) {
        memcpy(o, end.bytes, sizeof end.bytes);
        return o + end.length;
    }
    static uint8_t *replacement(uint8_t *o) { return ascii(o, '?'); }
    // A code of one byte or two, without a branch that tells them apart.
    static uint8_t *one_or_two(uint8_t *o, uint32_t code) {
        *o = static_cast<uint8_t>(code >> 8);
        o += code > 0xFF;
        *o = static_cast<uint8_t>(code); // a code of one byte overwrites the first
        return o + 1;
    }
};

} // namespace jkc
