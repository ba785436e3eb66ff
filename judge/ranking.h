// Ranks the candidates and names the winner.
#pragma once

#include "judge/candidates.h"

namespace jkc {

struct Verdict {
    int result;    // a code type, a set of code types, or -1
    int line_type; // code type for the line-end check; kNoLineCheck: none
};

constexpr int kNoLineCheck = -1;

// `possible` is the set of candidates that may win, `total` the bytes scanned. Changes the candidates' scores.
Verdict rank(Candidate (&candidates)[kCandidates], int32_t possible, int64_t total, int preferred);

} // namespace jkc
