// Recoding of short messages in place.
#pragma once

#include "core/internal.h"

namespace jkc {

// As _convert_buf(), for a text in an area of `capacity` bytes, its NUL included.
uint32_t recode_message(JkcContext *ctx, char *text, uint64_t len, int32_t dst_type, uint64_t capacity);

} // namespace jkc
