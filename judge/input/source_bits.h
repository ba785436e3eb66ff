// The bits of JkcContext::mode that tell of what kind the source is.
#pragma once

#include "core/internal.h"

namespace jkc {

// Sets the kind of the source, unless the caller has prepared another one.
inline void set_source(JkcContext *ctx, uint32_t bits) {
    if ((ctx->mode & JKC_MODE_SOURCE) == 0) {
        ctx->mode |= bits;
    }
}

inline void clear_source(JkcContext *ctx) { ctx->mode &= ~static_cast<uint32_t>(JKC_MODE_SOURCE); }

} // namespace jkc
