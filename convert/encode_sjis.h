// The encoder of Shift_JIS.
#pragma once

#include "convert/byte_encoder.h"
#include "core/bytes.h"

namespace jkc {

class SjisEncoder : public ByteEncoder {
public:
    static constexpr size_t kFlushAbove = 8189;
    static constexpr size_t kLongestStep = 2;

    explicit SjisEncoder(JkcContext *ctx) : table_(ctx->sjis_dst_table), count_(ctx->sjis_dst_count) {}

    // A half-width katakana, given as its Shift_JIS byte.
    uint8_t *katakana(uint8_t *o, uint8_t b) { return ascii(o, b); }

    // Writes a BMP character; null, with nothing written, when it is unmappable.
    uint8_t *put(uint8_t *o, uint32_t c) {
        const uint32_t code = c < count_ ? table_[c] : 0;
        if (code > 0xFF) {
            o[0] = static_cast<uint8_t>(code >> 8);
            o[1] = static_cast<uint8_t>(code);
            return o + 2;
        }
        const auto byte = static_cast<uint8_t>(code);
        return code != 0 && (is_ascii(byte) || is_sjis_katakana(byte)) ? ascii(o, byte) : nullptr;
    }
    // U+0080 and four private-use characters become single bytes that begin no character, or are none.
    static constexpr bool is_lossy(uint32_t c) { return c == 0x80 || (c >= 0xF8F0 && c <= 0xF8F3); }
    uint8_t *put_lossy(uint8_t *o, uint32_t c) {
        const uint32_t code = c < count_ ? table_[c] : 0;
        return code != 0 ? ascii(o, static_cast<uint8_t>(code)) : nullptr;
    }

    // As put(), for text in which ASCII, which needs no table, and other characters alternate.
    uint8_t *put_mixed(uint8_t *o, uint32_t c) {
        const uint32_t found = c < count_ ? table_[c] : 0;
        const uint32_t code = select(c < 0x80, c, found);
        return code == 0 && c != 0 ? nullptr : one_or_two(o, code);
    }

    // The replacement that the table has in the entry of U+0000, or 0.
    uint32_t table_replacement() const { return count_ > 0 ? table_[0] : 0; }
    uint8_t *put_table_replacement(uint8_t *o) {
        uint8_t *written = put(o, 0);
        return written != nullptr ? written : put_lossy(o, 0);
    }

private:
    const uint16_t *table_;
    uint64_t count_;
};

} // namespace jkc
