// Streams over memory that read in short pieces or fail at a byte; where the C library has none, they are files that do
// neither.
#pragma once

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <string>
#include <utility>

#include "support/temp_dir.h"

namespace jkc::testing {

class TestStream {
public:
    static constexpr size_t kNever = SIZE_MAX;
#ifdef __linux__
    static constexpr bool kCutsAndFails = true;

    // Each read gives at most `piece` bytes; the one that reaches `fail_at` fails with EIO.
    explicit TestStream(std::string bytes, size_t piece = kNever, size_t fail_at = kNever)
        : bytes_(std::move(bytes)), piece_(piece), fail_at_(fail_at) {
        cookie_io_functions_t functions{};
        functions.read = read;
        file_ = fopencookie(this, "rb", functions);
        setvbuf(file_, nullptr, _IONBF, 0);
    }
#else
    static constexpr bool kCutsAndFails = false;

    explicit TestStream(const std::string &bytes, size_t /*piece*/ = kNever, size_t /*fail_at*/ = kNever)
        : file_(fopen(dir_.write("stream", bytes).c_str(), "rb")) {}
#endif
    ~TestStream() { fclose(file_); }
    TestStream(const TestStream &) = delete;
    TestStream &operator=(const TestStream &) = delete;

    FILE *file() { return file_; }

private:
#ifdef __linux__
    static ssize_t read(void *cookie, char *to, size_t size) {
        auto *self = static_cast<TestStream *>(cookie);
        if (self->position_ >= self->fail_at_) {
            errno = EIO;
            return -1;
        }
        size_t end = std::min(self->bytes_.size(), self->fail_at_);
        size_t count = std::min({size, self->piece_, end - self->position_});
        std::memcpy(to, self->bytes_.data() + self->position_, count);
        self->position_ += count;
        return static_cast<ssize_t>(count);
    }

    std::string bytes_;
    size_t piece_;
    size_t fail_at_;
    size_t position_ = 0;
#else
    TempDir dir_;
#endif
    FILE *file_ = nullptr;
};

} // namespace jkc::testing
