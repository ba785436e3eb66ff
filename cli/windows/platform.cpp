#include "platform.h"

#include <windows.h>

#include <fcntl.h>
#include <io.h>
#include <shlwapi.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cwctype>
#include <vector>

#include "windows/wide.h"

// Of the C library's start: the arguments, with the patterns among them replaced by the names that match.
extern "C" int __wgetmainargs(int *count, wchar_t ***arguments, wchar_t ***environment, int expand, int *new_mode);

namespace jkc::cli {
namespace {

constexpr DWORD kShared = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
constexpr uint64_t kNoVolume = ~uint64_t{0};

// False, with errno.
bool fail(DWORD error = GetLastError()) {
    errno = errno_of(error);
    return false;
}

bool succeeded(BOOL result) { return result != 0 || fail(); }

class Handle {
public:
    // Of a file or folder; invalid, with errno, where it cannot be opened.
    Handle(const std::string &path, DWORD access, DWORD creation, DWORD flags) {
        if (const auto name = wide(path)) {
            handle_ = CreateFileW(name->c_str(), access, kShared, nullptr, creation, flags, nullptr);
            if (!valid()) {
                fail();
            }
        }
    }
    ~Handle() {
        if (valid()) {
            CloseHandle(handle_);
        }
    }
    Handle(const Handle &) = delete;
    Handle &operator=(const Handle &) = delete;

    bool valid() const { return handle_ != INVALID_HANDLE_VALUE; }
    HANDLE get() const { return handle_; }
    // Makes it a descriptor, which owns it then; -1: it is not valid.
    int release(int flags) {
        const int descriptor =
            valid() ? _open_osfhandle(reinterpret_cast<intptr_t>(handle_), flags | _O_BINARY | _O_NOINHERIT) : -1;
        if (descriptor >= 0) {
            handle_ = INVALID_HANDLE_VALUE;
        }
        return descriptor;
    }

private:
    HANDLE handle_ = INVALID_HANDLE_VALUE;
};

// The system counts from 1601 on, in units of 100 ns.
constexpr int64_t kUnitsInSecond = 10'000'000;
constexpr int64_t kSecondsTo1970 = 11'644'473'600;

FileTime time_of(const FILETIME &time) {
    const int64_t units = static_cast<int64_t>(time.dwHighDateTime) << 32 | time.dwLowDateTime;
    return {units / kUnitsInSecond - kSecondsTo1970, units % kUnitsInSecond * 100};
}

FILETIME system_time(const FileTime &time) {
    const int64_t units = (time.seconds + kSecondsTo1970) * kUnitsInSecond + time.nanoseconds / 100;
    return {static_cast<DWORD>(units), static_cast<DWORD>(units >> 32)};
}

uint64_t joined(DWORD high, DWORD low) { return uint64_t{high} << 32 | low; }

std::optional<FileStatus> status_of_handle(HANDLE handle) {
    SetLastError(NO_ERROR);
    const DWORD type = GetFileType(handle);
    if (type == FILE_TYPE_UNKNOWN && GetLastError() != NO_ERROR) {
        fail();
        return std::nullopt;
    }
    FileStatus status{};
    status.kind = FileKind::kOther;
    BY_HANDLE_FILE_INFORMATION file;
    if (type != FILE_TYPE_DISK || GetFileInformationByHandle(handle, &file) == 0) {
        // A device or a pipe is the same as itself only.
        status.volume = kNoVolume;
        status.number = reinterpret_cast<uintptr_t>(handle);
        return status;
    }
    const bool is_folder = (file.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
    status.kind = is_folder ? FileKind::kFolder : FileKind::kRegular;
    status.volume = file.dwVolumeSerialNumber;
    status.number = joined(file.nFileIndexHigh, file.nFileIndexLow);
    status.size = joined(file.nFileSizeHigh, file.nFileSizeLow);
    status.links = file.nNumberOfLinks;
    status.accessed = time_of(file.ftLastAccessTime);
    status.modified = time_of(file.ftLastWriteTime);
    return status;
}

// Not every reparse point is: a file that is kept in a cloud has one, too.
bool is_link(HANDLE handle) {
    FILE_ATTRIBUTE_TAG_INFO info{};
    return GetFileInformationByHandleEx(handle, FileAttributeTagInfo, &info, sizeof info) != 0 &&
           (info.FileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0 && IsReparseTagNameSurrogate(info.ReparseTag);
}

// How many bytes of a text in UTF-8 were shown; 0: it is in another code type.
ptrdiff_t show(HANDLE console, const char *text, size_t length) {
    constexpr size_t kMost = 8192;
    constexpr size_t kLongestCut = 3; // of a character at the end
    std::vector<wchar_t> units(kMost);
    const size_t most = std::min(length, kMost);
    for (size_t cut = 0; cut <= kLongestCut && cut < most; ++cut) {
        const int count = MultiByteToWideChar(CP_UTF8, MB_ERR_INVALID_CHARS, text, static_cast<int>(most - cut),
                                              units.data(), static_cast<int>(kMost));
        if (count > 0) {
            DWORD written = 0;
            const bool shown =
                succeeded(WriteConsoleW(console, units.data(), static_cast<DWORD>(count), &written, nullptr));
            return shown ? static_cast<ptrdiff_t>(most - cut) : -1;
        }
    }
    return 0;
}

DWORD at_most_a_gigabyte(size_t length) { return static_cast<DWORD>(std::min(length, size_t{1} << 30)); }

} // namespace

std::optional<FileStatus> status_of(const std::string &path) {
    const Handle file(path, FILE_READ_ATTRIBUTES, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS);
    return file.valid() ? status_of_handle(file.get()) : std::nullopt;
}

std::optional<FileStatus> status_of(int descriptor) {
    const HANDLE handle = handle_of(descriptor);
    if (reinterpret_cast<intptr_t>(handle) < 0) { // one of two numbers for none
        errno = EBADF;
        return std::nullopt;
    }
    return status_of_handle(handle);
}

std::optional<FileStatus> status_of_link(const std::string &path) {
    const Handle file(path, FILE_READ_ATTRIBUTES, OPEN_EXISTING,
                      FILE_FLAG_BACKUP_SEMANTICS | FILE_FLAG_OPEN_REPARSE_POINT);
    if (!file.valid()) {
        return std::nullopt;
    }
    auto status = status_of_handle(file.get());
    if (status && is_link(file.get())) {
        status->kind = FileKind::kOther;
    }
    return status;
}

std::optional<std::string> link_target(const std::string &) { return std::nullopt; }

std::optional<std::string> real_path(const std::string &path) {
    const Handle file(path, FILE_READ_ATTRIBUTES, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS);
    if (!file.valid()) {
        return std::nullopt;
    }
    std::wstring name(GetFinalPathNameByHandleW(file.get(), nullptr, 0, VOLUME_NAME_DOS), L'\0');
    const DWORD length =
        GetFinalPathNameByHandleW(file.get(), name.data(), static_cast<DWORD>(name.size()), VOLUME_NAME_DOS);
    if (length == 0 || length >= name.size()) {
        return path; // a file system that does not tell
    }
    name.resize(length);
    const std::wstring network = L"\\\\?\\UNC\\";
    const std::wstring disk = L"\\\\?\\";
    if (name.compare(0, network.size(), network) == 0) {
        name.replace(0, network.size(), L"\\\\");
    } else if (name.compare(0, disk.size(), disk) == 0) {
        name.erase(0, disk.size());
    }
    return native_name(narrow(name));
}

bool may_write(const std::string &path) {
    const auto name = wide(path);
    const DWORD attributes = name ? GetFileAttributesW(name->c_str()) : 0;
    if (!name || attributes == INVALID_FILE_ATTRIBUTES) {
        return name && fail();
    }
    return (attributes & FILE_ATTRIBUTE_READONLY) == 0 || fail(ERROR_ACCESS_DENIED);
}

int open_to_read(const std::string &path) {
    // Folders, too, which their status tells.
    return Handle(path, GENERIC_READ, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS).release(_O_RDONLY);
}

int open_to_write(const std::string &path) {
    const auto file = status_of(path);
    if (file && file->kind == FileKind::kFolder) {
        errno = EISDIR;
        return -1;
    }
    return Handle(path, GENERIC_WRITE, OPEN_EXISTING, 0).release(_O_WRONLY);
}

int create_file(const std::string &path, Access) {
    return Handle(path, GENERIC_READ | GENERIC_WRITE | READ_CONTROL | WRITE_DAC, CREATE_NEW, FILE_ATTRIBUTE_NORMAL)
        .release(_O_RDWR);
}

int open_temporary() {
    wchar_t folder[MAX_PATH + 1];
    wchar_t path[MAX_PATH + 1];
    if (GetTempPathW(MAX_PATH + 1, folder) == 0 || GetTempFileNameW(folder, L"jkc", 0, path) == 0) {
        fail();
        return -1;
    }
    return Handle(narrow(path), GENERIC_READ | GENERIC_WRITE, OPEN_EXISTING,
                  FILE_ATTRIBUTE_TEMPORARY | FILE_FLAG_DELETE_ON_CLOSE)
        .release(_O_RDWR);
}

std::optional<int> open_named_descriptor(const std::string &) { return std::nullopt; }

bool close_descriptor(int descriptor) { return _close(descriptor) == 0; }

ptrdiff_t read_some(int descriptor, void *data, size_t room) {
    DWORD count = 0;
    if (ReadFile(handle_of(descriptor), data, at_most_a_gigabyte(room), &count, nullptr) == 0) {
        const DWORD error = GetLastError();
        return error == ERROR_BROKEN_PIPE || error == ERROR_HANDLE_EOF || fail(error) ? 0 : -1;
    }
    return static_cast<ptrdiff_t>(count);
}

ptrdiff_t read_some_at(int descriptor, void *data, size_t room, uint64_t offset) {
    OVERLAPPED place{};
    place.Offset = static_cast<DWORD>(offset);
    place.OffsetHigh = static_cast<DWORD>(offset >> 32);
    DWORD count = 0;
    if (ReadFile(handle_of(descriptor), data, at_most_a_gigabyte(room), &count, &place) == 0) {
        const DWORD error = GetLastError();
        return error == ERROR_HANDLE_EOF || fail(error) ? 0 : -1;
    }
    return static_cast<ptrdiff_t>(count);
}

ptrdiff_t write_some(int descriptor, const void *data, size_t length) {
    const HANDLE file = handle_of(descriptor);
    if (is_terminal(descriptor)) {
        // Whatever code page the console has; text that is in none of Unicode's code types is for that code page.
        if (const ptrdiff_t shown = show(file, static_cast<const char *>(data), length); shown != 0) {
            return shown;
        }
    }
    DWORD count = 0;
    return succeeded(WriteFile(file, data, at_most_a_gigabyte(length), &count, nullptr)) ? static_cast<ptrdiff_t>(count)
                                                                                         : -1;
}

int64_t position_of(int descriptor) {
    return GetFileType(handle_of(descriptor)) == FILE_TYPE_DISK ? _lseeki64(descriptor, 0, SEEK_CUR) : -1;
}

bool sync_to_disk(int descriptor) { return succeeded(FlushFileBuffers(handle_of(descriptor))); }

void sync_folder(const std::string &) {} // a file is on the disk under its new name when it is replaced

bool set_times(int descriptor, const FileTime *accessed, const FileTime *modified) {
    const FILETIME access = accessed == nullptr ? FILETIME{} : system_time(*accessed);
    const FILETIME write = modified == nullptr ? FILETIME{} : system_time(*modified);
    return succeeded(SetFileTime(handle_of(descriptor), nullptr, accessed == nullptr ? nullptr : &access,
                                 modified == nullptr ? nullptr : &write));
}

bool make_folder(const std::string &path) {
    const auto name = wide(path);
    if (!name || CreateDirectoryW(name->c_str(), nullptr) != 0) {
        return name.has_value();
    }
    const DWORD error = GetLastError();
    const DWORD there = GetFileAttributesW(name->c_str());
    const bool is_folder = there != INVALID_FILE_ATTRIBUTES && (there & FILE_ATTRIBUTE_DIRECTORY) != 0;
    // Neither drives nor the servers and shares of a network can be made.
    const bool is_network = path.compare(0, 2, "//") == 0;
    return fail(is_folder || is_network ? ERROR_ALREADY_EXISTS : error);
}

bool remove_file(const std::string &path) {
    const auto name = wide(path);
    return name && succeeded(DeleteFileW(name->c_str()));
}

bool replace_file(const std::string &from, const std::string &to) {
    const auto from_name = wide(from);
    const auto to_name = wide(to);
    // ReplaceFileW() would take over attributes itself, but leaves neither file for a moment.
    return from_name && to_name &&
           succeeded(
               MoveFileExW(from_name->c_str(), to_name->c_str(), MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH));
}

bool make_hard_link(const std::string &path, const std::string &link) {
    const auto name = wide(path);
    const auto link_name = wide(link);
    return name && link_name && succeeded(CreateHardLinkW(link_name->c_str(), name->c_str(), nullptr));
}

std::optional<std::set<std::string>> entries_of(const std::string &folder) {
    const auto name = wide(folder + "/*");
    if (!name) {
        return std::nullopt;
    }
    WIN32_FIND_DATAW entry;
    const HANDLE search = FindFirstFileW(name->c_str(), &entry);
    if (search == INVALID_HANDLE_VALUE) {
        fail();
        return std::nullopt;
    }
    std::set<std::string> entries;
    do {
        entries.insert(narrow(entry.cFileName));
    } while (FindNextFileW(search, &entry) != 0);
    const DWORD error = GetLastError();
    FindClose(search);
    if (error != ERROR_NO_MORE_FILES) {
        fail(error);
        return std::nullopt;
    }
    entries.erase(".");
    entries.erase("..");
    return entries;
}

std::string native_name(std::string name) {
    std::replace(name.begin(), name.end(), '\\', '/');
    if (!name.empty() && name.back() == '\r') { // of a list with the line ends of the system
        name.pop_back();
    }
    return name;
}

bool matches_pattern(const std::string &name, const std::string &pattern) {
    const auto wide_name = wide(name);
    const auto wide_pattern = wide(pattern);
    return wide_name && wide_pattern && PathMatchSpecW(wide_name->c_str(), wide_pattern->c_str()) != FALSE;
}

size_t printable_length(const char *text, size_t length) {
    const auto lead = static_cast<unsigned char>(*text);
    const size_t taken = lead < 0x80 ? 1 : lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
    const auto units = taken > length ? std::nullopt : wide(std::string(text, taken));
    return units && (units->size() > 1 || std::iswprint((*units)[0]) != 0) ? taken : 0;
}

std::string folder_of_program() {
    std::wstring path(MAX_PATH, L'\0');
    DWORD length = 0;
    while ((length = GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size()))) == path.size()) {
        path.resize(2 * path.size());
    }
    const std::string name = native_name(narrow(path.substr(0, length)));
    return name.substr(0, name.rfind('/') + 1);
}

bool is_terminal(int descriptor) {
    DWORD mode = 0;
    return GetConsoleMode(handle_of(descriptor), &mode) != 0;
}

bool can_go_back() {
    const HANDLE console = handle_of(kStandardError);
    DWORD mode = 0;
    return GetConsoleMode(console, &mode) != 0 &&
           SetConsoleMode(console, mode | ENABLE_PROCESSED_OUTPUT | ENABLE_VIRTUAL_TERMINAL_PROCESSING) != 0;
}

size_t terminal_width() {
    constexpr size_t kUsual = 80;
    CONSOLE_SCREEN_BUFFER_INFO info;
    return GetConsoleScreenBufferInfo(handle_of(kStandardError), &info) != 0
               ? static_cast<size_t>(info.srWindow.Right - info.srWindow.Left + 1)
               : kUsual;
}

void *share_memory(size_t size) { return std::calloc(1, size); } // one process does all

void release_memory(void *memory, size_t) { std::free(memory); }

char **prepare_process(int &count, char **arguments) {
    for (const int descriptor : {kStandardInput, kStandardOutput, kStandardError}) {
        _setmode(descriptor, _O_BINARY);
    }
    wchar_t **words = nullptr;
    wchar_t **environment = nullptr;
    int new_mode = 0;
    if (__wgetmainargs(&count, &words, &environment, 1, &new_mode) != 0) {
        return arguments;
    }
    static std::vector<std::string> names;
    static std::vector<char *> pointers;
    names.assign(static_cast<size_t>(count), "");
    for (size_t i = 0; i < names.size(); ++i) {
        names[i] = narrow(words[i]);
        pointers.push_back(names[i].data());
    }
    pointers.push_back(nullptr);
    return pointers.data();
}

} // namespace jkc::cli
