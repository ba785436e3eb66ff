// Judges a whole source: called by the entry points in judge.cpp and, as _jkc_judges(), by the driver in convert/.
#pragma once

#include "judge/judgement.h"

namespace jkc {

// Judges the source that the context is set to. `type_out` and `line_out` may be null; with `keep` the input is in
// ctx->blocks afterwards. `counting` does not change the answers: tests compare them.
int judge(JkcContext *ctx, int *type_out, int *line_out, int preferred, bool plain_is_preferred, bool keep,
          Counting counting = Counting::kWhileItCounts);

} // namespace jkc
