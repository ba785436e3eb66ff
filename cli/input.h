// A file to read.
#pragma once

#include <sys/types.h>

#include <cstdio>
#include <memory>
#include <string>

namespace jkc::cli {

struct CloseUnlessStdin {
    void operator()(FILE *stream) const {
        if (stream != stdin) {
            std::fclose(stream);
        }
    }
};

class Input {
public:
    // Opens a file; "-" is standard input. Throws FileError.
    explicit Input(const std::string &name);

    const std::string &name() const { return name_; }
    FILE *stream() const { return stream_.get(); }

    // Makes rewind() possible also for a pipe, whose content it copies into a temporary file.
    void make_rewindable();
    // Goes back to where make_rewindable() was called.
    void rewind();

private:
    using Stream = std::unique_ptr<FILE, CloseUnlessStdin>;
    Stream temporary_copy();

    std::string name_;
    Stream stream_;
    off_t start_ = 0;
};

} // namespace jkc::cli
