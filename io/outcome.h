// What an open or file conversion found and did.
#pragma once

#include "core/code_types.h"

namespace jkc {

// For a request that has not judged its source yet, which counts as ASCII until then.
struct Outcome {
    int64_t code_type = JKC_TYPE_ASCII; // of the source, as judged; or the status of a file conversion that failed
    bool decided = false;
    int64_t operation = JKC_OPERATION_NONE;
};

// The last one of the process. Each request has its own while it runs; of several that end at once, each part is one's.
Outcome last_outcome();
void set_last_outcome(const Outcome &outcome);

// Stores what an observer is told. Whether it is the code type of the source: neither empty input nor JIS X 0213.
bool take_judged(Outcome &outcome, int32_t code_type);

// What an observer answers to any other: a set of code types ends the conversion.
int32_t answer_undecided(int32_t code_type);

// `source` is what the target is compared with for its BOM.
JkcOperation operation_between(int64_t judged, int64_t source, int64_t target);

} // namespace jkc
