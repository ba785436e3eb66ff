// The judgement of a whole source.
#pragma once

#include "judge/judgement.h"

namespace jkc {

// Judges the source that the context is set to. `type_out` and `line_out` may be null; with `keep` the input is in
// ctx->blocks afterwards. The answers are the same whatever `counting` says: it is there to compare.
int judge(JkcContext *ctx, int *type_out, int *line_out, int preferred, bool plain_is_preferred, bool keep,
          Counting counting = Counting::kWhileItCounts);

} // namespace jkc
