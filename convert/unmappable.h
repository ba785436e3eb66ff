// The record of unmappable characters and ill-formed bytes, which the context calls NoChar.
#pragma once

#include "judge/input/block_cursor.h"

namespace jkc {

constexpr int64_t kIllFormedBytes = 0; // the code recorded for them

inline void reset_unmappable(JkcContext &ctx) {
    ctx.nochar_count = 0;
    ctx.first_nochar_index = -1;
    ctx.last_nochar_index = -1;
    ctx.first_nochar = -1;
    ctx.last_nochar = -1;
}

[[gnu::cold]] inline void record_unmappable_at(JkcContext &ctx, int64_t position, int64_t code) {
    if (ctx.first_nochar_index < 0) {
        ctx.first_nochar_index = position;
        ctx.first_nochar = code;
    }
    ctx.last_nochar_index = position;
    ctx.last_nochar = code;
    ++ctx.nochar_count;
}

// For a character that begins at p in the current block.
[[gnu::cold]] inline void record_unmappable(JkcContext &ctx, const uint8_t *p, int64_t code) {
    record_unmappable_at(ctx, position_of(ctx, p), code);
}

} // namespace jkc
