#include "library.h"

#include <cstring>
#include <new>

namespace jkc::cli {

Context make_context() {
    Context ctx(create_jkc());
    if (!ctx) {
        throw std::bad_alloc();
    }
    return ctx;
}

bool is_undecided(int judged) {
    constexpr int kNoneFits = -1;
    return judged == kNoneFits || judged >= JKC_LOWEST_SET;
}

std::string status_reason(int32_t status, int error_number) {
    switch (status) {
    case JKC_EROPEN:
    case JKC_EREAD:
        return std::strerror(error_number);
    case JKC_EALLOC:
        return "out of memory";
    case JKC_EUEXPEOD:
        return "the text ends inside a character";
    case JKC_ECTYPE:
        return "this conversion is not supported";
    default:
        return "failed with status " + std::to_string(status);
    }
}

} // namespace jkc::cli
