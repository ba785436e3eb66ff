// The encoder of UTF-8.
#pragma once

#include "convert/byte_encoder.h"
#include "core/bytes.h"

namespace jkc {

class Utf8Encoder : public ByteEncoder {
public:
    static constexpr size_t kFlushAbove = 8187;
    static constexpr size_t kLongestStep = 4;
    static constexpr bool kIsUnicode = true;

    explicit Utf8Encoder(const JkcContext * /*ctx*/) {}

    uint8_t *bom(uint8_t *o) { return put(o, 0xFEFF); }

    uint8_t *put(uint8_t *o, uint32_t c) {
        if (c >= 0x800) [[likely]] {
            put_four_bytes(o, three_bytes(c));
            return o + 3;
        }
        if (c >= 0x80) {
            o[0] = static_cast<uint8_t>(0xC0 | c >> 6);
            o[1] = static_cast<uint8_t>(0x80 | (c & 0x3F));
            return o + 2;
        }
        return ascii(o, static_cast<uint8_t>(c));
    }
    // As put(), for text in which characters of one byte and of three alternate: without a branch that tells them apart.
    uint8_t *put_mixed(uint8_t *o, uint32_t c) {
        if (c - 0x80 < 0x800 - 0x80) [[unlikely]] {
            return put(o, c);
        }
        const bool ascii = c < 0x80;
        put_four_bytes(o, select(ascii, c, three_bytes(c)));
        return o + select(ascii, 1, 3);
    }
    uint8_t *put_supplementary(uint8_t *o, uint32_t c) {
        o[0] = static_cast<uint8_t>(0xF0 | c >> 18);
        o[1] = static_cast<uint8_t>(0x80 | (c >> 12 & 0x3F));
        o[2] = static_cast<uint8_t>(0x80 | (c >> 6 & 0x3F));
        o[3] = static_cast<uint8_t>(0x80 | (c & 0x3F));
        return o + 4;
    }

    static Encoded encode(const uint16_t *units, size_t count, uint8_t *o) {
        return {count, kernels().encode_utf8(units, count, o)};
    }

private:
    // The lowest byte comes first. The fourth one is written over later.
    static uint32_t three_bytes(uint32_t c) { return 0x8080E0 | c >> 12 | (c & 0xFC0) << 2 | (c & 0x3F) << 16; }
};

} // namespace jkc
