// Judges a whole source: called by the entry points in judge.cpp and by the driver in convert/.
#pragma once

#include "core/work_area.h"
#include "judge/judgement.h"

namespace jkc {

// Judges the source that the context is set to, reading through the area. `type_out` and `line_out` may be null; with
// `keep` the input is in ctx->blocks afterwards. `counting` does not change the answers: tests compare them.
int judge(JkcContext *ctx, const WorkArea &area, int *type_out, int *line_out, int preferred, bool plain_is_preferred,
          bool keep, Counting counting = Counting::kWhileItCounts);

} // namespace jkc

// The judgement of a conversion, which keeps the input. By a plain name, so that tests can put another in its place.
extern "C" int jkc_judge_for_conversion(JkcContext *ctx, const jkc::WorkArea *area, int preferred,
                                        bool plain_is_preferred);
