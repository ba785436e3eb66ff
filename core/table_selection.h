// Puts the mapping tables of a code type into the context. Code types that need none leave it as it is.
#pragma once

#include "core/internal.h"

namespace jkc {

void select_source_tables(JkcContext &ctx, int32_t src_type);

// For JIS it depends on ctx.srg_exists which tables these are.
void select_target_tables(JkcContext &ctx, int32_t dst_type);

} // namespace jkc
