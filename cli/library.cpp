#include "library.h"

#include <new>

#include "translate.h"

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
        return system_text(error_number);
    case JKC_EALLOC:
        return tr("out of memory");
    case JKC_EUEXPEOD:
        return tr("the text ends inside a character");
    case JKC_ECTYPE:
        return tr("this conversion is not supported");
    default:
        return format(tr("failed with status %d"), static_cast<int>(status));
    }
}

} // namespace jkc::cli
