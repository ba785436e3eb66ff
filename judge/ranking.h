// Ranks the candidates and names the winner. Judgement::decide() calls it.
#pragma once

#include "judge/candidates.h"

namespace jkc {

struct Verdict {
    enum class Kind : uint8_t {
        kSingle,     // one code type, whose line ends can be told
        kSet,        // several code types, or none
        kCheckedSet, // ASCII or UTF-16: line ends are asked for all the same, and refused
    };
    int result;
    Kind kind;
};

// `possible` is the set of candidates that may win, `total` the bytes scanned. Sets the candidates' scores.
Verdict rank(Candidate (&candidates)[kCandidates], int32_t possible, int64_t total, int preferred);

} // namespace jkc
