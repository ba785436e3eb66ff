#include "translate.h"

#include <cstdarg>
#include <cstdio>
#include <cstring>

namespace jkc::cli {
namespace {

// The commonest texts of the system, marked for translation: its own translations are often not installed.
[[maybe_unused]] constexpr const char *kSystemTexts[] = {
    JKC_TEXT("No such file or directory"),
    JKC_TEXT("Permission denied"),
    JKC_TEXT("Operation not permitted"),
    JKC_TEXT("Is a directory"),
    JKC_TEXT("Not a directory"),
    JKC_TEXT("File exists"),
    JKC_TEXT("File name too long"),
    JKC_TEXT("File too large"),
    JKC_TEXT("No space left on device"),
    JKC_TEXT("Disk quota exceeded"),
    JKC_TEXT("Read-only file system"),
    JKC_TEXT("Input/output error"),
    JKC_TEXT("Too many levels of symbolic links"),
    JKC_TEXT("Bad file descriptor"),
};

} // namespace

std::string format(const char *pattern, ...) {
    va_list arguments;
    va_list again;
    va_start(arguments, pattern);
    va_copy(again, arguments);
    const int length = std::vsnprintf(nullptr, 0, pattern, arguments);
    std::string text(length < 0 ? 0 : static_cast<size_t>(length), '\0');
    std::vsnprintf(text.data(), text.size() + 1, pattern, again);
    va_end(again);
    va_end(arguments);
    return text;
}

std::string system_text(int error_number) { return tr(std::strerror(error_number)); }

} // namespace jkc::cli
