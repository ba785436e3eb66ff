// The encoder of ISO-2022-JP.
#pragma once

#include "convert/encoder_base.h"
#include "convert/line_type.h"
#include "core/jis_escape.h"
#include "core/wide.h"

namespace jkc {

struct EscapeSequence {
    uint8_t bytes[4];
    uint8_t length;
};

constexpr EscapeSequence kEscapes[kJisDesignations] = {
    {{kEsc, '(', 'B', 0}, 3},   {{kEsc, '(', 'I', 0}, 3},   {{kEsc, '(', 'J', 0}, 3},   {{kEsc, '$', '@', 0}, 3},
    {{kEsc, '$', 'B', 0}, 3},   {{0, 0, 0, 0}, 0},          {{kEsc, '$', '(', 'D'}, 4}, {{kEsc, '$', '(', 'O'}, 4},
    {{kEsc, '$', '(', 'Q'}, 4}, {{kEsc, '$', '(', 'P'}, 4},
};

// The replacement: the full-width question mark of JIS X 0208.
constexpr uint32_t kJisQuestionMark = 0x2129;

class JisEncoder : public EncoderBase {
public:
    // Control characters that mean something else to who reads JIS text. ascii() writes them as they are.
    static constexpr bool is_lossy(uint32_t c) { return c == kEsc || c == kSo || c == kSi; }

    static constexpr size_t kFlushAbove = 8159;
    static constexpr size_t kLongestStep = 6; // an escape sequence of four bytes and a code of two

    explicit JisEncoder(JkcContext *ctx)
        : ctx_(ctx), table_(ctx->jis_dst_table), bits_(ctx->jis_dst_bits),
          designated_(ctx->jis_dst_count < ctx->jis_dst_bits_count ? ctx->jis_dst_count : ctx->jis_dst_bits_count) {}

    uint8_t *ascii(uint8_t *o, uint8_t b) {
        o = enter(o, kAscii);
        *o = b;
        return o + 1;
    }
    uint8_t *ascii_wide(uint8_t *o, Bytes16 text) { // behind an ASCII byte, which has designated ASCII
        memcpy(o, &text, kWide);
        return o + kWide;
    }
    // Designates ASCII also for a line end that is dropped.
    uint8_t *line_end(uint8_t *o, LineEnd end) {
        o = enter(o, kAscii);
        memcpy(o, end.bytes, sizeof end.bytes);
        return o + end.length;
    }
    // A half-width katakana, given as its Shift_JIS byte or its 7-bit code.
    uint8_t *katakana(uint8_t *o, uint8_t b) {
        o = enter(o, kKatakana);
        *o = b & 0x7F;
        return o + 1;
    }

    // Writes a BMP character in its own designation, as two bytes whatever the code; null, with nothing written, when it
    // has no code or no designation of its own.
    uint8_t *put(uint8_t *o, uint32_t c) {
        const uint32_t code = c < designated_ ? table_[c] : 0;
        return code != 0 ? put_code(o, code, bits_[c]) : nullptr;
    }
    // As put(), for ASCII too.
    uint8_t *put_mixed(uint8_t *o, uint32_t c) { return c < 0x80 ? ascii(o, static_cast<uint8_t>(c)) : put(o, c); }
    uint8_t *put_code(uint8_t *o, uint32_t code, uint8_t set) { return two_bytes(enter(o, set), code); }

    // Writes a character beyond the BMP; null, with nothing written, when it is unmappable.
    uint8_t *put_supplementary(uint8_t *o, uint32_t c) {
        const uint32_t index = c - 0x20000; // wraps below plane 2
        if (c > 0x2FFFF || index >= ctx_->jis_dst_srg_count || ctx_->jis_dst_srg_table[index] == 0) {
            return nullptr;
        }
        return put_code(o, ctx_->jis_dst_srg_table[index], ctx_->jis_dst_srg_bits[index]);
    }

    // Writes the code that the table has at `index` in JIS X 0208, or the question mark: `found` tells which.
    uint8_t *put_in_jisx0208(uint8_t *o, uint64_t index, bool &found) {
        const uint32_t code = entry(index);
        found = code != 0;
        return two_bytes(enter(o, kJisX0208), found ? code : kJisQuestionMark);
    }
    uint8_t *replacement(uint8_t *o) { return two_bytes(enter(o, kJisX0208), kJisQuestionMark); }

    uint32_t entry(uint64_t index) const { return index < ctx_->jis_dst_count ? table_[index] : 0; }

    // The replacement that the table has in the entry of U+0000, or 0.
    uint32_t table_replacement() const { return entry(0); }
    uint8_t *put_table_replacement(uint8_t *o) { return two_bytes(enter(o, kJisX0208), entry(0)); }

    uint8_t *enter(uint8_t *o, uint8_t set) {
        if (set == set_) [[likely]] {
            return o;
        }
        set_ = set;
        if (set < kJisDesignations) { // a number beyond the sets has no sequence
            memcpy(o, kEscapes[set].bytes, sizeof kEscapes[set].bytes);
            o += kEscapes[set].length;
        }
        return o;
    }

    uint8_t *finish(uint8_t *o) { return enter(o, kAscii); }

    static bool has_kernel() { return kernels().encode_jis != nullptr; }
    Encoded encode(const uint16_t *units, size_t count, uint8_t *o) {
        if (set_ != kAscii && set_ != kJisX0208) {
            return {0, o};
        }
        const EncodedJis encoded =
            kernels().encode_jis(units, count, o, {table_, bits_, designated_}, set_ == kJisX0208);
        set_ = encoded.two_byte ? kJisX0208 : kAscii;
        return {encoded.count, encoded.o};
    }

private:
    static uint8_t *two_bytes(uint8_t *o, uint32_t code) {
        o[0] = static_cast<uint8_t>(code >> 8);
        o[1] = static_cast<uint8_t>(code);
        return o + 2;
    }

    const JkcContext *ctx_;
    const uint16_t *table_;
    const uint8_t *bits_;
    uint64_t designated_; // characters below this may have a set of their own
    uint8_t set_ = kAscii;
};

} // namespace jkc
