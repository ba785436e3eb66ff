// Puts the mapping tables of a pair of code types into the context.
#pragma once

#include "core/internal.h"

namespace jkc {

void select_source_tables(JkcContext &ctx, int32_t src_type);
void select_target_tables(JkcContext &ctx, int32_t dst_type);

} // namespace jkc
