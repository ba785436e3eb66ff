#include "output.h"

#include <cerrno>

#include "descriptor.h"
#include "platform.h"
#include "report.h"
#include "safe_file.h"
#include "translate.h"

namespace jkc::cli {
Output::Output() : Output(tr("standard output"), kStandardOutput) {}

Output::~Output() {
    if (descriptor_ > kStandardError) {
        close_descriptor(descriptor_);
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
    const bool closed = close_descriptor(descriptor_);
    descriptor_ = -1;
    if (!closed) {
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
    if (const auto descriptor = open_named_descriptor(*path)) {
        return open_as(*descriptor);
    }
    if (const auto file = status_of(*path)) {
        // Also where it is a regular file: /dev/stdout may be a log that grows.
        const auto standard = status_of(kStandardOutput);
        if (standard && is_same_file(*standard, *file)) {
            return open_as(kStandardOutput);
        }
        if (file->kind != FileKind::kRegular) {
            return open_as(open_to_write(*path));
        }
    }
    return std::make_unique<SafeFile>(*path);
}

} // namespace jkc::cli
