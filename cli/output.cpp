#include "output.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <charconv>
#include <system_error>

#include "descriptor.h"
#include "report.h"
#include "safe_file.h"
#include "translate.h"

namespace jkc::cli {
namespace {

bool is_standard_output(const struct stat &file) {
    struct stat out {};
    return fstat(STDOUT_FILENO, &out) == 0 && out.st_dev == file.st_dev && out.st_ino == file.st_ino;
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

} // namespace

Output::Output() : Output(tr("standard output"), STDOUT_FILENO) {}

Output::~Output() {
    if (descriptor_ > STDERR_FILENO) {
        ::close(descriptor_);
    }
}

bool Output::write(const void *data, size_t length) noexcept {
    if (error_ == 0) {
        const size_t written = write_all(descriptor_, data, length);
        length_ += written;
        error_ = written < length ? errno : 0;
    }
    return error_ == 0;
}

void Output::print(std::string_view text) {
    if (!write(text.data(), text.size())) {
        throw FileError(name_, error_);
    }
}

void Output::commit() { close(); }

void Output::close() {
    // Some file systems tell of a full disk only now.
    const int result = ::close(descriptor_);
    descriptor_ = -1;
    if (result != 0) {
        throw FileError(name_, errno);
    }
}

std::unique_ptr<Output> open_output(const std::optional<std::string> &path) {
    if (!path || *path == "-") {
        return std::make_unique<Output>();
    }
    const auto open_as = [&](int descriptor) {
        if (descriptor < 0) {
            throw FileError(*path, errno);
        }
        return std::unique_ptr<Output>(new Output(*path, descriptor));
    };
    if (const int number = named_descriptor(*path); number > STDOUT_FILENO) {
        return open_as(fcntl(number, F_DUPFD_CLOEXEC, STDERR_FILENO + 1));
    }
    struct stat file {};
    if (stat(path->c_str(), &file) == 0) {
        // Also where it is a regular file: /dev/stdout may be a log that grows.
        if (is_standard_output(file)) {
            return open_as(STDOUT_FILENO);
        }
        if (!S_ISREG(file.st_mode)) {
            return open_as(open(path->c_str(), O_WRONLY | O_NOCTTY | O_CLOEXEC));
        }
    }
    return std::make_unique<SafeFile>(*path);
}

void occupy_standard_descriptors() {
    for (const int descriptor : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        if (fcntl(descriptor, F_GETFD) < 0) {
            // open() gives the lowest free number, which is this one.
            open("/dev/null", descriptor == STDIN_FILENO ? O_WRONLY : O_RDONLY);
        }
    }
}

} // namespace jkc::cli
