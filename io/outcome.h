// What the last open or file conversion found and did. One for the process, as is the conversion itself.
#pragma once

#include "core/code_types.h"

namespace jkc {

struct Outcome {
    int64_t code_type; // of the source, as judged; or the status of a file conversion that failed
    bool decided;
    int64_t operation; // JkcOperation
};
extern Outcome outcome;

// For a request that has not judged its source yet, which counts as ASCII until then.
constexpr Outcome kNothingYet = {JKC_TYPE_ASCII, false, JKC_OPERATION_NONE};

// Whether an observer takes this for the code type of the source: neither empty input nor JIS X 0213.
bool is_decided_type(int32_t code_type);

// What an observer answers to any other: a set of code types ends the conversion.
int32_t answer_undecided(int32_t code_type);

// `source` is what the target is compared with for its BOM.
JkcOperation operation_between(int64_t judged, int64_t source, int64_t target);

} // namespace jkc
