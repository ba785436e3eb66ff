// Writes UTF-8.
#pragma once

#include <cstring>

#include "convert/byte_writer.h"
#include "core/bytes.h"

namespace jkc {

class Utf8Writer : public ByteWriter {
public:
    static constexpr size_t kFlushAbove = 8187;
    static constexpr size_t kLongestStep = 4;
    static constexpr bool kHasMark = true;

    explicit Utf8Writer(const JkcContext * /*ctx*/) {}

    uint8_t *mark(uint8_t *o) { return put(o, 0xFEFF); }

    uint8_t *put(uint8_t *o, uint32_t c) {
        if (c >= 0x800) [[likely]] {
            // In one store of four bytes, the last of which is written over.
            put_four_bytes(o, 0x8080E0 | c >> 12 | (c & 0xFC0) << 2 | (c & 0x3F) << 16);
            return o + 3;
        }
        if (c >= 0x80) {
            o[0] = static_cast<uint8_t>(0xC0 | c >> 6);
            o[1] = static_cast<uint8_t>(0x80 | (c & 0x3F));
            return o + 2;
        }
        return plain(o, static_cast<uint8_t>(c));
    }
    uint8_t *put_supplementary(uint8_t *o, uint32_t c) {
        o[0] = static_cast<uint8_t>(0xF0 | c >> 18);
        o[1] = static_cast<uint8_t>(0x80 | (c >> 12 & 0x3F));
        o[2] = static_cast<uint8_t>(0x80 | (c >> 6 & 0x3F));
        o[3] = static_cast<uint8_t>(0x80 | (c & 0x3F));
        return o + 4;
    }

    // Bytes that are written as they stand.
    uint8_t *raw(uint8_t *o, const uint8_t *p, size_t length) {
        memcpy(o, p, length);
        return o + length;
    }
};

} // namespace jkc
