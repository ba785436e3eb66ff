// What stands at a path.
#include "io/path.h"

#include "core/files.h"

int32_t __check_stat(const char *path) { return static_cast<int32_t>(jkc::kind_of(path)); }

namespace jkc {

int32_t require_regular_file(const char *path) {
    switch (kind_of(path)) {
    case PathKind::kNothing:
        return JKC_ENOTEXISTS;
    case PathKind::kRegularFile:
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
