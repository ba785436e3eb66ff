// The bytes of a file or of standard input, which can be gone through more than once in constant memory.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>

#include "descriptor.h"
#include "platform.h"

namespace jkc::cli {

class Source {
public:
    // Opens a file; "-" is standard input, from where its descriptor stands. Throws FileError.
    explicit Source(std::string name);

    const std::string &name() const { return name_; }
    // Of the file when it was opened.
    const FileStatus &status() const { return status_; }

    // Goes through all bytes for the first time. What cannot be read twice is kept: up to 64 MB in memory, beyond that in a
    // temporary file. Throws FileError.
    void read_all(const std::function<void(const uint8_t *data, size_t length)> &take);
    // Goes through the bytes from `begin` to `end` once more, until `take` answers false.
    void read(uint64_t begin, uint64_t end, const std::function<bool(const uint8_t *data, size_t length)> &take) const;
    // Gives the file free, so that it can be replaced everywhere. Nothing can be read any more.
    void close() { opened_.reset(); }
    // How many bytes there are, once all were read. Later there are as many, even if the file grows.
    uint64_t length() const { return length_; }
    // The bytes from `begin` to `end`, fewer if the source ends.
    std::string slice(uint64_t begin, uint64_t end) const;

private:
    size_t read_first(uint8_t *data, size_t room) const;
    void keep(const uint8_t *data, size_t length);
    size_t read_at(uint64_t offset, uint8_t *data, size_t room) const;
    [[noreturn]] void fail(int error_number) const;

    std::string name_;
    int file_ = -1;
    std::unique_ptr<Descriptor> opened_; // unless it is standard input
    FileStatus status_{};
    bool rereadable_;
    uint64_t begin_ = 0;                // where the bytes begin in the file that can be read again
    uint64_t length_ = 0;               // how many there are, once all were read
    std::string kept_;                  // of what cannot be read again
    std::unique_ptr<Descriptor> spill_; // the rest of it
};

} // namespace jkc::cli
