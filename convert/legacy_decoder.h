// What the decoders of Shift_JIS, EUC and JIS share: a code is looked up in a source table, and the character found goes
// to the encoder.
#pragma once

#include "convert/ascii_text.h"
#include "convert/encoders.h"

namespace jkc {

constexpr uint32_t kQuestionMark = '?';

// A code of the source, as encoders and the record see it.
struct SourceCode {
    uint32_t index;   // the 16-bit code, without a single shift
    int64_t recorded; // the code that the record gets
    const uint8_t *p; // where it begins
};

// What the record gets for a character that is unmappable in Shift_JIS or EUC: the question mark as high byte and the
// low byte of the code point. Callers rely on it.
constexpr int64_t lossy_unmappable_code(uint32_t c) { return kQuestionMark << 8 | (c & 0xFF); }

// What replaces a code without a character, which is recorded.
inline uint32_t replacement_for(JkcContext &ctx, const SourceCode &code) {
    record_unmappable(ctx, code.p, code.recorded);
    return kQuestionMark;
}

// A character that is put without a loss; null for any other.
template <class Encoder>
inline uint8_t *put_found(uint8_t *o, Encoder &e, uint32_t c) {
    const bool is_lost = c <= kQuestionMark || (std::is_same_v<Encoder, JisEncoder> && is_high_surrogate(c));
    return is_lost ? nullptr : e.put(o, c);
}
template <class Encoder>
inline uint8_t *put_any(uint8_t *o, Encoder &e, uint32_t c) {
    uint8_t *written = e.put(o, c);
    return written != nullptr ? written : e.put_lossy(o, c);
}

// With a table as target, `suppress` drops every question mark, also one that stood in the text.
template <class Encoder>
inline uint8_t *write_character(JkcContext &ctx, uint8_t *o, Encoder &e, uint32_t c, const SourceCode &code,
                                bool suppress) {
    if (c == 0) [[unlikely]] {
        c = replacement_for(ctx, code);
    }
    if (c == kQuestionMark && suppress) [[unlikely]] {
        return o;
    }
    if (uint8_t *written = put_any(o, e, c)) {
        return written;
    }
    record_unmappable(ctx, code.p, lossy_unmappable_code(c));
    return suppress ? o : e.replacement(o);
}

// Writes a character that has no code or no designation of its own in JIS X 0208: as the code that the table has at
// `index`, else as the question mark.
inline uint8_t *write_in_jisx0208(JkcContext &ctx, uint8_t *o, JisEncoder &e, uint64_t index, int64_t recorded,
                                  const uint8_t *p) {
    bool found = false;
    o = e.put_in_jisx0208(o, index, found);
    if (!found && recorded != kQuestionMark) {
        record_unmappable(ctx, p, recorded);
    }
    return o;
}

// From Shift_JIS and EUC to JIS. A code without a character is looked up as if the code itself were the character: old
// texts that rely on it come out as they always did.
inline uint8_t *write_character(JkcContext &ctx, uint8_t *o, JisEncoder &e, uint32_t c, const SourceCode &code,
                                bool suppress) {
    if (c == 0) [[unlikely]] {
        c = replacement_for(ctx, code);
    }
    if (c == kQuestionMark) [[unlikely]] {
        return suppress ? o : write_in_jisx0208(ctx, o, e, code.index, code.index, code.p);
    }
    if (is_high_surrogate(c)) [[unlikely]] {
        return suppress ? o : write_in_jisx0208(ctx, o, e, 0, 0, code.p);
    }
    if (uint8_t *written = put_any(o, e, c)) {
        return written;
    }
    return suppress ? o : write_in_jisx0208(ctx, o, e, c, c, code.p);
}

// For told_step.h.
template <class Encoder>
uint8_t *put_character_of_any_width(uint8_t *o, Encoder &e, uint32_t c) {
    if constexpr (!Encoder::kIsUnicode) {
        if (is_half_width_katakana(c)) {
            return e.katakana(o, sjis_katakana_byte(c));
        }
    }
    return c > 0xFFFF ? e.put_supplementary(o, c) : e.put(o, c);
}

// One step with every check. A character at in.p that is not ASCII needs `needed` bytes, and take() takes it then, also
// with a loss.
template <class Decoder, class Encoder>
Flow take_one_character(Decoder &d, const AsciiText<Bytes> &text, size_t needed, Input &in, uint8_t *&o, Encoder &e) {
    const uint8_t *p = in.p;
    size_t one = 1;
    if (is_ascii(*p)) {
        text.take(p, o, e, one, in.left() > 1);
    } else if (in.left() >= needed) {
        d.take(p, o, e);
    } else {
        return d.end(JKC_EUEXPEOD);
    }
    in.p = p;
    return Flow::kNext;
}

} // namespace jkc
