// Which converter takes one family of encodings to another.
#pragma once

#include "core/code_types.h"

namespace jkc {

// Runs the converter of a pair. A pair without one converts nothing and gives 0.
int32_t run_route(JkcContext *ctx, int32_t src_type, int32_t dst_type);

} // namespace jkc
