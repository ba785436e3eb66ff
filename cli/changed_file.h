// A file that is replaced only if something changes in it.
#pragma once

#include <memory>
#include <string>

#include "safe_file.h"
#include "source.h"

namespace jkc::cli {

// Compares what is written with what the source has. From the first difference on, it goes to a SafeFile.
class ChangedFile {
public:
    // The source was read through. With `only_compare` nothing is ever written.
    ChangedFile(Source &source, std::string backup_suffix, bool only_compare)
        : source_(source), backup_suffix_(std::move(backup_suffix)), only_compare_(only_compare) {}

    // Throws FileError.
    void print(std::string_view text);
    // When all is written: whether that is anything else than the source has.
    bool changes();
    // Replaces the file. Throws FileError, also when it is not any more what the source was.
    void commit(bool keep_time);

private:
    void begin_file();

    Source &source_;
    std::string backup_suffix_;
    bool only_compare_;
    bool differs_ = false;
    uint64_t equal_ = 0; // bytes that were the same
    std::unique_ptr<SafeFile> file_;
};

} // namespace jkc::cli
