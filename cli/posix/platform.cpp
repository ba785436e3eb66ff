#include "platform.h"

#include <dirent.h>
#include <fcntl.h>
#include <fnmatch.h>
#include <sys/ioctl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <charconv>
#include <climits>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cwchar>
#include <cwctype>
#include <memory>
#include <string_view>
#include <system_error>

namespace jkc::cli {
namespace {

#if defined(__APPLE__)
timespec accessed(const struct stat &file) { return file.st_atimespec; }
timespec modified(const struct stat &file) { return file.st_mtimespec; }
timespec changed(const struct stat &file) { return file.st_ctimespec; }
#else
timespec accessed(const struct stat &file) { return file.st_atim; }
timespec modified(const struct stat &file) { return file.st_mtim; }
timespec changed(const struct stat &file) { return file.st_ctim; }
#endif

FileTime time_of(const timespec &time) { return {time.tv_sec, time.tv_nsec}; }

timespec time_or_none(const FileTime *time) {
    timespec result{0, UTIME_OMIT};
    if (time != nullptr) {
        result.tv_sec = static_cast<time_t>(time->seconds);
        result.tv_nsec = static_cast<decltype(result.tv_nsec)>(time->nanoseconds);
    }
    return result;
}

std::optional<FileStatus> status_if(int result, const struct stat &file) {
    if (result != 0) {
        return std::nullopt;
    }
    const FileKind kind = S_ISREG(file.st_mode)   ? FileKind::kRegular
                          : S_ISDIR(file.st_mode) ? FileKind::kFolder
                                                  : FileKind::kOther;
    return FileStatus{kind,
                      static_cast<uint64_t>(file.st_dev),
                      static_cast<uint64_t>(file.st_ino),
                      static_cast<uint64_t>(file.st_size),
                      static_cast<uint64_t>(file.st_nlink),
                      time_of(accessed(file)),
                      time_of(modified(file)),
                      time_of(changed(file)),
                      file.st_uid,
                      file.st_gid,
                      file.st_mode};
}

// Calls it again when a signal has come in between.
template <typename Call>
ptrdiff_t go_on(Call call) {
    ptrdiff_t result = 0;
    do {
        result = call();
    } while (result < 0 && errno == EINTR);
    return result;
}

// The descriptor that a path names; -1: none.
int named_descriptor(std::string_view path) {
    for (const std::string_view folder : {"/dev/fd/", "/proc/self/fd/"}) {
        int number = -1;
        if (path.substr(0, folder.size()) == folder) {
            path.remove_prefix(folder.size());
            const auto [end, error] = std::from_chars(path.data(), path.data() + path.size(), number);
            return error == std::errc() && end == path.data() + path.size() ? number : -1;
        }
    }
    return path == "/dev/stdout" ? STDOUT_FILENO : path == "/dev/stderr" ? STDERR_FILENO : -1;
}

// Gives files to closed standard descriptors, so that no file opened later is taken for one of them. Reading and writing
// them keeps failing.
void occupy_standard_descriptors() {
    for (const int descriptor : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        if (fcntl(descriptor, F_GETFD) < 0) {
            // open() gives the lowest free number, which is this one.
            open("/dev/null", descriptor == STDIN_FILENO ? O_WRONLY : O_RDONLY);
        }
    }
}

const char *called_as = "";

} // namespace

std::optional<FileStatus> status_of(const std::string &path) {
    struct stat file {};
    return status_if(stat(path.c_str(), &file), file);
}

std::optional<FileStatus> status_of(int descriptor) {
    struct stat file {};
    return status_if(fstat(descriptor, &file), file);
}

std::optional<FileStatus> status_of_link(const std::string &path) {
    struct stat file {};
    return status_if(lstat(path.c_str(), &file), file);
}

std::optional<std::string> link_target(const std::string &path) {
    std::array<char, PATH_MAX> target{};
    const ssize_t length = readlink(path.c_str(), target.data(), target.size());
    return length < 0 ? std::nullopt : std::optional(std::string(target.data(), static_cast<size_t>(length)));
}

std::optional<std::string> real_path(const std::string &path) {
    const std::unique_ptr<char, decltype(&std::free)> real(realpath(path.c_str(), nullptr), &std::free);
    return real ? std::optional<std::string>(real.get()) : std::nullopt;
}

bool may_write(const std::string &path) { return faccessat(AT_FDCWD, path.c_str(), W_OK, AT_EACCESS) == 0; }

int open_to_read(const std::string &path) { return open(path.c_str(), O_RDONLY | O_NOCTTY | O_CLOEXEC); }

int open_to_write(const std::string &path) { return open(path.c_str(), O_WRONLY | O_NOCTTY | O_CLOEXEC); }

int create_file(const std::string &path, Access access) {
    // The system knows best what a new file's mode is in this folder.
    return open(path.c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, access == Access::kOwner ? 0600 : 0666);
}

int open_temporary() {
    const char *folder = std::getenv("TMPDIR");
    std::string path = std::string(folder != nullptr && *folder != '\0' ? folder : "/tmp") + "/jkc-XXXXXX";
    const int descriptor = mkstemp(path.data());
    if (descriptor >= 0) {
        unlink(path.c_str());
    }
    return descriptor;
}

std::optional<int> open_named_descriptor(const std::string &path) {
    const int number = named_descriptor(path);
    // Standard output is found by what it is, whatever its name.
    return number > STDOUT_FILENO ? std::optional(fcntl(number, F_DUPFD_CLOEXEC, STDERR_FILENO + 1)) : std::nullopt;
}

bool close_descriptor(int descriptor) { return ::close(descriptor) == 0; }

ptrdiff_t read_some(int descriptor, void *data, size_t room) {
    return go_on([&] { return read(descriptor, data, room); });
}

ptrdiff_t read_some_at(int descriptor, void *data, size_t room, uint64_t offset) {
    return go_on([&] { return pread(descriptor, data, room, static_cast<off_t>(offset)); });
}

ptrdiff_t write_some(int descriptor, const void *data, size_t length) {
    return go_on([&] { return write(descriptor, data, length); });
}

int64_t position_of(int descriptor) { return lseek(descriptor, 0, SEEK_CUR); }

bool sync_to_disk(int descriptor) { return fsync(descriptor) == 0 || errno == EINVAL; }

void sync_folder(const std::string &path) {
    const int folder = open(path.empty() ? "." : path.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (folder >= 0) {
        fsync(folder);
        ::close(folder);
    }
}

bool set_times(int descriptor, const FileTime *accessed, const FileTime *modified) {
    const timespec times[] = {time_or_none(accessed), time_or_none(modified)};
    return futimens(descriptor, times) == 0;
}

bool make_folder(const std::string &path) { return mkdir(path.c_str(), 0777) == 0; }

bool remove_file(const std::string &path) { return unlink(path.c_str()) == 0; }

bool replace_file(const std::string &from, const std::string &to) { return std::rename(from.c_str(), to.c_str()) == 0; }

bool make_hard_link(const std::string &path, const std::string &hard_link) {
    if (link(path.c_str(), hard_link.c_str()) == 0) {
        return true;
    }
    // The first is how file systems without hard links say so.
    if (errno == EPERM || errno == ENOSYS || errno == EMLINK) {
        errno = ENOTSUP;
    }
    return false;
}

std::optional<std::set<std::string>> entries_of(const std::string &folder) {
    const std::unique_ptr<DIR, int (*)(DIR *)> open(opendir(folder.c_str()), closedir);
    if (!open) {
        return std::nullopt;
    }
    std::set<std::string> entries;
    errno = 0;
    while (const dirent *entry = readdir(open.get())) {
        entries.insert(entry->d_name);
    }
    if (errno != 0) {
        return std::nullopt;
    }
    entries.erase(".");
    entries.erase("..");
    return entries;
}

std::string native_name(std::string name) { return name; }

bool matches_pattern(const std::string &name, const std::string &pattern) {
    return fnmatch(pattern.c_str(), name.c_str(), 0) == 0;
}

size_t printable_length(const char *text, size_t length) {
    std::mbstate_t state{};
    wchar_t character = 0;
    const size_t taken = std::mbrtowc(&character, text, length, &state);
    const bool is_character = taken != 0 && taken <= length; // errors are huge numbers
    return is_character && std::iswprint(static_cast<std::wint_t>(character)) != 0 ? taken : 0;
}

std::string folder_of_program() {
    // Where there is no /proc, a program that was looked up by its name is not found.
    const std::string path = link_target("/proc/self/exe").value_or(called_as);
    return path.substr(0, path.rfind('/') + 1);
}

bool is_terminal(int descriptor) { return isatty(descriptor) != 0; }

bool can_go_back() {
    const char *terminal = std::getenv("TERM");
    return terminal != nullptr && *terminal != '\0' && std::string_view(terminal) != "dumb";
}

size_t terminal_width() {
    constexpr size_t kUsual = 80;
    winsize size{};
    return ioctl(STDERR_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 0 ? size.ws_col : kUsual;
}

void *share_memory(size_t size) {
    void *memory = mmap(nullptr, size, PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
    return memory == MAP_FAILED ? nullptr : memory;
}

void release_memory(void *memory, size_t size) { munmap(memory, size); }

char **prepare_process(int &count, char **arguments) {
    occupy_standard_descriptors();
    // As failures of write() these are told like any other, and leave no temporary file behind.
    std::signal(SIGPIPE, SIG_IGN);
    std::signal(SIGXFSZ, SIG_IGN);
    called_as = count > 0 ? arguments[0] : "";
    return arguments;
}

} // namespace jkc::cli
