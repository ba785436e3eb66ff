#include "windows/wide.h"

#include <windows.h>

#include <io.h>

#include <cerrno>

namespace jkc::cli {

std::optional<std::wstring> wide(const std::string &text) {
    if (text.empty()) {
        return L"";
    }
    const auto convert = [&](wchar_t *units, int room) {
        return MultiByteToWideChar(CP_UTF8, MB_ERR_INVALID_CHARS, text.data(), static_cast<int>(text.size()), units,
                                   room);
    };
    const int length = convert(nullptr, 0);
    if (length == 0) {
        errno = EILSEQ;
        return std::nullopt;
    }
    std::wstring units(static_cast<size_t>(length), L'\0');
    convert(units.data(), length);
    return units;
}

std::string narrow(const std::wstring &text) {
    const auto convert = [&](DWORD flags, char *bytes, int room) {
        return WideCharToMultiByte(CP_UTF8, flags, text.data(), static_cast<int>(text.size()), bytes, room, nullptr,
                                   nullptr);
    };
    std::string bytes(static_cast<size_t>(convert(0, nullptr, 0)), '\0');
    convert(0, bytes.data(), static_cast<int>(bytes.size()));
    if (!text.empty() && convert(WC_ERR_INVALID_CHARS, nullptr, 0) == 0) {
        constexpr char kReplacement[] = "\xEF\xBF\xBD";
        constexpr char kSurrogate[] = "\xED\xA0\x80";
        for (size_t at = 0; (at = bytes.find(kReplacement, at)) != std::string::npos;) {
            bytes.replace(at, sizeof kReplacement - 1, kSurrogate);
        }
    }
    return bytes;
}

int errno_of(unsigned long error) {
    switch (error) {
    case ERROR_FILE_NOT_FOUND:
    case ERROR_PATH_NOT_FOUND:
    case ERROR_INVALID_NAME:
    case ERROR_INVALID_DRIVE:
    case ERROR_BAD_PATHNAME:
    case ERROR_BAD_NETPATH:
    case ERROR_BAD_NET_NAME:
        return ENOENT;
    case ERROR_ACCESS_DENIED:
    case ERROR_SHARING_VIOLATION:
    case ERROR_LOCK_VIOLATION:
    case ERROR_PRIVILEGE_NOT_HELD:
        return EACCES;
    case ERROR_ALREADY_EXISTS:
    case ERROR_FILE_EXISTS:
        return EEXIST;
    case ERROR_DIRECTORY:
        return ENOTDIR;
    case ERROR_FILENAME_EXCED_RANGE:
        return ENAMETOOLONG;
    case ERROR_DISK_FULL:
    case ERROR_HANDLE_DISK_FULL:
        return ENOSPC;
    case ERROR_FILE_TOO_LARGE:
        return EFBIG;
    case ERROR_WRITE_PROTECT:
        return EROFS;
    case ERROR_BROKEN_PIPE:
    case ERROR_NO_DATA:
    case ERROR_PIPE_NOT_CONNECTED:
        return EPIPE;
    case ERROR_INVALID_HANDLE:
        return EBADF;
    case ERROR_INVALID_FUNCTION:
    case ERROR_NOT_SUPPORTED:
    case ERROR_TOO_MANY_LINKS:
        return ENOTSUP;
    case ERROR_NOT_ENOUGH_MEMORY:
        return ENOMEM;
    default:
        return EIO;
    }
}

void *handle_of(int descriptor) { return reinterpret_cast<void *>(_get_osfhandle(descriptor)); }

} // namespace jkc::cli
