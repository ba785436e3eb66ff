// What the readers of Shift_JIS, EUC and JIS share: a code is looked up in a source table, and the character found goes
// to the writer of the target family.
#pragma once

#include "convert/nochar.h"
#include "convert/to_euc.h"
#include "convert/to_jis.h"
#include "convert/to_sjis.h"
#include "convert/to_utf16.h"
#include "convert/to_utf8.h"

namespace jkc {

constexpr uint32_t kQuestionMark = '?';

// A code of the source: how targets and records see it.
struct SourceCode {
    uint32_t index;   // the 16-bit code, without a single shift
    int64_t recorded; // the code that the record gets
    const uint8_t *p; // where it begins
};

// For a character that Shift_JIS or EUC lacks, the record gets the question mark as high byte and the low byte of the
// code point. Callers that keep such records know them so.
constexpr int64_t lossy_nochar_code(uint32_t c) { return kQuestionMark << 8 | (c & 0xFF); }

// Looks an unmapped code's stand-in up: the question mark, recorded with the source code.
inline uint32_t stand_in(JkcContext &ctx, const SourceCode &code) {
    record_nochar(ctx, code.p, code.recorded);
    return kQuestionMark;
}

// A table target: the question mark itself falls to `suppress`, whether it was in the text or stands for a code.
template <class Writer>
inline uint8_t *write_character(JkcContext &ctx, uint8_t *o, Writer &w, uint32_t c, const SourceCode &code,
                                bool suppress) {
    if (c == 0) [[unlikely]] {
        c = stand_in(ctx, code);
    }
    if (c == kQuestionMark && suppress) [[unlikely]] {
        return o;
    }
    if (uint8_t *written = w.put(o, c)) [[likely]] {
        return written;
    }
    record_nochar(ctx, code.p, lossy_nochar_code(c));
    return suppress ? o : w.question_mark(o);
}

// A character that has no code or no set of its own goes to JIS X 0208, as the code that the table has for it or as the
// question mark.
inline uint8_t *write_in_jisx0208(JkcContext &ctx, uint8_t *o, JisWriter &w, uint64_t index, int64_t recorded,
                                  const uint8_t *p) {
    bool found = false;
    o = w.put_in_jisx0208(o, index, found);
    if (!found && recorded != kQuestionMark) {
        record_nochar(ctx, p, recorded);
    }
    return o;
}

// The JIS target of Shift_JIS and EUC. What has no character is looked up once more, by its source code: texts that
// were written so come out as they always did.
inline uint8_t *write_character(JkcContext &ctx, uint8_t *o, JisWriter &w, uint32_t c, const SourceCode &code,
                                bool suppress) {
    if (c == 0) [[unlikely]] {
        c = stand_in(ctx, code);
    }
    if (c == kQuestionMark) [[unlikely]] {
        return suppress ? o : write_in_jisx0208(ctx, o, w, code.index, code.index, code.p);
    }
    if (is_high_surrogate(c)) [[unlikely]] {
        return suppress ? o : write_in_jisx0208(ctx, o, w, 0, 0, code.p);
    }
    if (uint8_t *written = w.put(o, c)) [[likely]] {
        return written;
    }
    return suppress ? o : write_in_jisx0208(ctx, o, w, c, c, code.p);
}

} // namespace jkc
