// The bar on standard error that tells how far long work has got.
#pragma once

#include <unistd.h>

#include <chrono>
#include <cstdint>
#include <string>
#include <vector>

namespace jkc::cli {

class Progress {
public:
    // Without `wanted` nothing is shown.
    Progress(const std::vector<std::string> &files, bool wanted);
    ~Progress();
    Progress(const Progress &) = delete;
    Progress &operator=(const Progress &) = delete;

    // The work is at this byte of the file after the last finished one.
    void at(int64_t offset);
    void finish_file(size_t i);

private:
    void draw(uint64_t bytes);

    bool wanted_;
    bool drawn_ = false;
    pid_t owner_ = getpid(); // processes that are started later do not draw
    std::chrono::steady_clock::time_point next_;
    std::vector<uint64_t> sizes_;
    uint64_t total_ = 0;
    uint64_t finished_ = 0;
    size_t finished_files_ = 0;
};

} // namespace jkc::cli
