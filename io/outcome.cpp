#include "io/outcome.h"

namespace jkc {

Outcome outcome;

bool is_decided_type(int32_t code_type) {
    return family_of(code_type) != Family::kNone && code_type != JKC_TYPE_JIS2004;
}

int32_t answer_undecided(int32_t code_type) { return is_set(code_type) ? -1 : 0; }

JkcOperation operation_between(int64_t judged, int64_t source, int64_t target) {
    if (judged == target) {
        return JKC_OPERATION_COPY;
    }
    switch (jkc_cmp_bom(static_cast<int>(source), static_cast<int>(target))) {
    case 1:
        return JKC_OPERATION_ADD_MARK;
    case -1:
        return JKC_OPERATION_REMOVE_MARK;
    default:
        return JKC_OPERATION_CONVERT;
    }
}

} // namespace jkc

int64_t jkc_io_is_decided() { return jkc::outcome.decided ? 1 : 0; }
int64_t jkc_io_get_ctype() { return jkc::outcome.code_type; }
int64_t jkc_io_get_ope_type() { return jkc::outcome.operation; }
