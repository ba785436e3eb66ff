// The bar on standard error that tells how far long work has got.
#pragma once

#include <atomic>
#include <chrono>
#include <cstdint>
#include <string>

#include "file_list.h"

namespace jkc::cli {

class Progress {
public:
    // Without `wanted`, and on terminals that cannot go back in a line, nothing is shown.
    Progress(const FileList &list, bool wanted);
    ~Progress();
    Progress(const Progress &) = delete;
    Progress &operator=(const Progress &) = delete;

    // The work on a file begins, is at this byte of it, has ended. In any process, on one file at a time.
    void begin_file(const std::string &name);
    void at(int64_t offset);
    void finish_file();
    // Draws the bar when it is time.
    void draw();

private:
    // What all processes see.
    struct Shared {
        std::atomic<uint64_t> bytes;
        std::atomic<uint64_t> files;
    };

    void advance(uint64_t to);

    Shared *shared_ = nullptr; // null: nothing is shown
    std::chrono::steady_clock::time_point next_;
    size_t count_;
    uint64_t total_ = 0;
    uint64_t size_ = 0; // of the file that is worked on
    uint64_t at_ = 0;
    bool drawn_ = false;
};

} // namespace jkc::cli
