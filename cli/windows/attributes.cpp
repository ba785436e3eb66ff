#include "attributes.h"

#include <windows.h>

#include <cerrno>
#include <memory>
#include <string_view>
#include <vector>

#include "descriptor.h"
#include "report.h"
#include "translate.h"
#include "windows/wide.h"

namespace jkc::cli {
namespace {

std::wstring wide_or_throw(const std::string &path) {
    const auto name = wide(path);
    if (!name) {
        throw FileError(path, errno);
    }
    return *name;
}

// As it is, with what it has from its folder or had from an earlier one: nobody gets more rights than before.
void copy_access_list(HANDLE to, const std::wstring &from, const std::string &name) {
    DWORD size = 0;
    GetFileSecurityW(from.c_str(), DACL_SECURITY_INFORMATION, nullptr, 0, &size);
    std::vector<uint64_t> security(size / sizeof(uint64_t) + 1);
    if (GetFileSecurityW(from.c_str(), DACL_SECURITY_INFORMATION, security.data(), size, &size) != 0) {
        // Without this the system would take what is inherited for the file's own.
        SetSecurityDescriptorControl(security.data(), SE_DACL_AUTO_INHERIT_REQ, SE_DACL_AUTO_INHERIT_REQ);
        if (SetKernelObjectSecurity(to, DACL_SECURITY_INFORMATION, security.data()) != 0) {
            return;
        }
    }
    const int error = errno_of(GetLastError());
    if (error != ENOTSUP) {
        throw FileError(name, format(tr("its access control list cannot be kept: %s"), system_text(error).c_str()));
    }
}

// Whether it is hidden and the like, and when it was made. Where that cannot be set the text is kept all the same.
void copy_basic_attributes(HANDLE to, const std::wstring &from) {
    WIN32_FILE_ATTRIBUTE_DATA old;
    if (GetFileAttributesExW(from.c_str(), GetFileExInfoStandard, &old) != 0) {
        FILE_BASIC_INFO basic{}; // times of 0 stay as they are
        basic.CreationTime.LowPart = old.ftCreationTime.dwLowDateTime;
        basic.CreationTime.HighPart = static_cast<LONG>(old.ftCreationTime.dwHighDateTime);
        basic.FileAttributes = old.dwFileAttributes & (FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM |
                                                       FILE_ATTRIBUTE_ARCHIVE | FILE_ATTRIBUTE_NOT_CONTENT_INDEXED);
        SetFileInformationByHandle(to, FileBasicInfo, &basic, sizeof basic);
    }
}

// What stands beside the text, such as from where it was fetched.
void copy_streams(HANDLE to, const std::string &from, const std::string &name) {
    WIN32_FIND_STREAM_DATA stream;
    const HANDLE search = FindFirstStreamW(wide_or_throw(from).c_str(), FindStreamInfoStandard, &stream, 0);
    if (search == INVALID_HANDLE_VALUE) {
        return; // a file system without them
    }
    const std::unique_ptr<void, BOOL (*)(HANDLE)> owner(search, FindClose);
    do {
        if (std::wstring_view(stream.cStreamName) == L"::$DATA") {
            continue; // the text itself
        }
        std::wstring path(GetFinalPathNameByHandleW(to, nullptr, 0, VOLUME_NAME_DOS), L'\0');
        path.resize(GetFinalPathNameByHandleW(to, path.data(), static_cast<DWORD>(path.size()), VOLUME_NAME_DOS));
        const std::string part = narrow(stream.cStreamName);
        const Descriptor old(open_to_read(from + part));
        const Descriptor copy(old.number() < 0 ? -1 : create_file(narrow(path) + part, Access::kOwner));
        if (copy.number() < 0 || !copy_content(old.number(), copy.number())) {
            throw FileError(name, format(tr("its extended attribute %s cannot be kept: %s"), part.c_str(),
                                         system_text(errno).c_str()));
        }
    } while (FindNextStreamW(search, &stream) != 0);
}

} // namespace

void take_over_attributes(int descriptor, const std::string &old_path, const FileStatus &, const std::string &name) {
    const std::wstring old = wide_or_throw(old_path);
    copy_access_list(handle_of(descriptor), old, name);
    copy_basic_attributes(handle_of(descriptor), old);
    copy_streams(handle_of(descriptor), old_path, name);
}

void check_replaceable(const std::string &, const FileStatus &, const std::string &) {}

} // namespace jkc::cli
