#include "core/files.h"

#include <sys/stat.h>

#ifdef _WIN32
#include <cerrno>

#include <windows.h>
#endif

namespace jkc {

namespace {

#ifdef _WIN32

using Status = struct _stat64;

constexpr int kLongestPath = 4096; // in units of UTF-16, with the NUL

// Calls `use` with the UTF-16 form of a UTF-8 path. Answers `otherwise`, with errno, when that has none or a longer one.
template <class Use, class Result>
Result with_wide(const char *path, Result otherwise, Use use) {
    wchar_t wide[kLongestPath];
    if (MultiByteToWideChar(CP_UTF8, MB_ERR_INVALID_CHARS, path, -1, wide, kLongestPath) > 0) {
        return use(wide);
    }
    errno = GetLastError() == ERROR_INSUFFICIENT_BUFFER ? ENAMETOOLONG : EILSEQ;
    return otherwise;
}

bool look_at(const char *path, Status &found) {
    return with_wide(path, -1, [&found](const wchar_t *wide) { return _wstat64(wide, &found); }) == 0;
}

FILE *open_in_mode(const char *path, const wchar_t *mode) {
    return with_wide(path, static_cast<FILE *>(nullptr), [mode](const wchar_t *wide) { return _wfopen(wide, mode); });
}

#define JKC_MODE_TEXT(text) L##text

#else

using Status = struct stat;

bool look_at(const char *path, Status &found) { return stat(path, &found) == 0; }

FILE *open_in_mode(const char *path, const char *mode) { return fopen(path, mode); }

#define JKC_MODE_TEXT(text) text

#endif

} // namespace

PathKind kind_of(const char *path) {
    Status found;
    if (!look_at(path, found)) {
        return PathKind::kNothing;
    }
    return S_ISREG(found.st_mode)   ? PathKind::kRegularFile
           : S_ISDIR(found.st_mode) ? PathKind::kDirectory
                                    : PathKind::kOther;
}

FILE *open_to_read(const char *path) { return open_in_mode(path, JKC_MODE_TEXT("rb")); }
FILE *open_to_write(const char *path) { return open_in_mode(path, JKC_MODE_TEXT("wb")); }

} // namespace jkc
