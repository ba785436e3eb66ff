// What a conversion must know of input that no scanner sees.
#pragma once

#include "core/code_types.h"
#include "judge/input/line_ends.h"

namespace jkc {

// Looks through text for surrogates and combining marks, piece by piece, as far as the code type has them.
class UnicodeFeatures {
public:
    // What the context knows already is not looked for.
    UnicodeFeatures(const JkcContext &ctx, int code_type)
        : ctx_(&ctx), family_(family_of(code_type)), surrogates_(ctx.srg_exists != 0),
          decomposed_(ctx.utfmac_exists != 0) {}

    // Returns where it stopped: at `end`, or in front of a few bytes that the next piece must begin with. Three bytes
    // in front of a piece must be readable.
    const uint8_t *take(const uint8_t *p, const uint8_t *end, bool last);

    // Puts what was found into the context. EUEXPEOD when the text ends inside a character that was looked at.
    int tell(JkcContext &ctx) const;

private:
    template <class Order>
    const uint8_t *take_utf16(const uint8_t *p, const uint8_t *end, bool last);
    const uint8_t *take_utf8(const uint8_t *p, const uint8_t *end, bool last);
    const uint8_t *skip_ordinary_text(const uint8_t *p, const uint8_t *end);
    ptrdiff_t take_sequence(const uint8_t *p);
    void two_byte(uint32_t c);
    void three_byte(uint32_t c);
    bool is_text(uint32_t c) const;
    bool has(uint32_t c, uint16_t bits) const;
    bool both_found() const { return surrogates_ && decomposed_; }

    const JkcContext *ctx_;
    Family family_;
    bool surrogates_;
    bool decomposed_;
    bool base_ = false; // the last character takes a combining mark (UTF-8)
    int status_ = JKC_SUCCESS;
};

// As _fill_buffer(), reading through the block.
int fill_buffer(JkcContext *ctx, JkcBlock &block, int code_type);

// The same without keeping the input. Also gathers the line ends.
int look_through_rest(JkcContext *ctx, JkcBlock &block, int code_type, LineEnds &line_ends);

} // namespace jkc
