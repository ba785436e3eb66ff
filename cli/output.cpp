#include "output.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

#include "report.h"
#include "safe_file.h"

namespace jkc::cli {
namespace {

bool is_standard_output(const struct stat &file) {
    struct stat out {};
    return fstat(STDOUT_FILENO, &out) == 0 && out.st_dev == file.st_dev && out.st_ino == file.st_ino;
}

} // namespace

Output::Output() : Output("standard output", STDOUT_FILENO) {}

Output::~Output() {
    if (descriptor_ > STDERR_FILENO) {
        ::close(descriptor_);
    }
}

bool Output::write(const void *data, size_t length) noexcept {
    const auto *rest = static_cast<const char *>(data);
    while (length > 0 && error_ == 0) {
        const ssize_t written = ::write(descriptor_, rest, length);
        if (written >= 0) {
            rest += written;
            length -= static_cast<size_t>(written);
            length_ += static_cast<uint64_t>(written);
        } else if (errno != EINTR) {
            error_ = errno;
        }
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
    struct stat file {};
    if (stat(path->c_str(), &file) == 0) {
        // Also where it is a regular file: /dev/stdout may be a log that grows.
        if (is_standard_output(file)) {
            return std::unique_ptr<Output>(new Output(*path, STDOUT_FILENO));
        }
        if (!S_ISREG(file.st_mode)) {
            const int descriptor = open(path->c_str(), O_WRONLY | O_NOCTTY | O_CLOEXEC);
            if (descriptor < 0) {
                throw FileError(*path, errno);
            }
            return std::unique_ptr<Output>(new Output(*path, descriptor));
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
