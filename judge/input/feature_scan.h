// What a conversion must know of input that no scanner sees.
#pragma once

#include "core/internal.h"

namespace jkc {

// As _fill_buffer(), reading through the block.
int fill_buffer(JkcContext *ctx, JkcBlock &block, int code_type);

} // namespace jkc
