#include "input.h"

#include <array>
#include <cerrno>

#include "report.h"

namespace jkc::cli {

Input::Input(const std::string &name) : name_(name), stream_(name == "-" ? stdin : std::fopen(name.c_str(), "rb")) {
    if (!stream_) {
        throw FileError(name_, errno);
    }
}

void Input::make_rewindable() {
    start_ = ftello(stream());
    if (start_ < 0) {
        stream_ = temporary_copy();
        start_ = 0;
        rewind();
    }
}

void Input::rewind() {
    if (fseeko(stream(), start_, SEEK_SET) != 0) {
        throw FileError(name_, errno);
    }
}

Input::Stream Input::temporary_copy() {
    Stream copy(std::tmpfile());
    if (!copy) {
        throw FileError("temporary file", errno);
    }
    std::array<char, 65536> data{};
    while (const size_t count = std::fread(data.data(), 1, data.size(), stream())) {
        if (std::fwrite(data.data(), 1, count, copy.get()) != count) {
            throw FileError("temporary file", errno);
        }
    }
    if (std::ferror(stream()) != 0) {
        throw FileError(name_, errno);
    }
    return copy;
}

} // namespace jkc::cli
