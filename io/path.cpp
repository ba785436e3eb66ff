// What stands at a path.
#include <sys/stat.h>

#include "io/path.h"

namespace {

enum PathKind : int32_t { kNothing = 0, kDirectory = 1, kRegularFile = 2, kOther = 9 };

} // namespace

int32_t __check_stat(const char *path) {
    struct stat found;
    if (stat(path, &found) != 0) {
        return kNothing;
    }
    return S_ISREG(found.st_mode) ? kRegularFile : S_ISDIR(found.st_mode) ? kDirectory : kOther;
}

namespace jkc {

int32_t require_regular_file(const char *path) {
    switch (__check_stat(path)) {
    case kNothing:
        return JKC_ENOTEXISTS;
    case kRegularFile:
        return JKC_SUCCESS;
    default:
        return JKC_ENOTFILE;
    }
}

} // namespace jkc

int64_t jkc_io_path(const char *path, int64_t preferred) {
    if (const int32_t status = jkc::require_regular_file(path); status != JKC_SUCCESS) {
        return status;
    }
    JkcContext *ctx = create_jkc();
    if (ctx == nullptr) {
        return JKC_EALLOC;
    }
    const int result = jkc_judges_file(ctx, nullptr, nullptr, path, static_cast<int>(preferred));
    release_jkc(ctx);
    return result;
}
