#include "io/outcome.h"

#include <atomic>

namespace jkc {

namespace {

std::atomic<int64_t> last_code_type;
std::atomic<bool> last_decided;
std::atomic<int64_t> last_operation;

bool is_decided_type(int32_t code_type) {
    return family_of(code_type) != Family::kNone && code_type != JKC_TYPE_JIS2004;
}

} // namespace

Outcome last_outcome() { return {last_code_type, last_decided, last_operation}; }

void set_last_outcome(const Outcome &outcome) {
    last_code_type = outcome.code_type;
    last_decided = outcome.decided;
    last_operation = outcome.operation;
}

bool take_judged(Outcome &outcome, int32_t code_type) {
    outcome.code_type = code_type;
    return is_decided_type(code_type);
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

int64_t jkc_io_is_decided() { return jkc::last_outcome().decided ? 1 : 0; }
int64_t jkc_io_get_ctype() { return jkc::last_outcome().code_type; }
int64_t jkc_io_get_ope_type() { return jkc::last_outcome().operation; }
