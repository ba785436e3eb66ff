#include "progress.h"

#include <sys/stat.h>

#include <algorithm>
#include <cstdio>

#include "report.h"

namespace jkc::cli {
namespace {

using namespace std::chrono_literals;

constexpr auto kLongWork = 1s; // what is done sooner needs no bar
constexpr auto kInterval = 100ms;
constexpr size_t kWidth = 40;

void show(const std::string &text) { std::fwrite(text.data(), 1, text.size(), stderr); }

} // namespace

Progress::Progress(const std::vector<std::string> &files, bool wanted)
    : wanted_(wanted), next_(std::chrono::steady_clock::now() + kLongWork) {
    for (const std::string &file : files) {
        struct stat found {};
        const bool known = file != "-" && stat(file.c_str(), &found) == 0 && S_ISREG(found.st_mode);
        sizes_.push_back(known ? static_cast<uint64_t>(found.st_size) : 0);
        total_ += sizes_.back();
    }
    wanted_ = wanted && total_ > 0;
    wipe_line_before_messages(wanted_);
}

Progress::~Progress() {
    wipe_line_before_messages(false);
    if (drawn_) {
        show(kWipeLine);
    }
}

void Progress::at(int64_t offset) { draw(finished_ + static_cast<uint64_t>(offset)); }

void Progress::finish_file(size_t i) {
    finished_ += sizes_[i];
    ++finished_files_;
    draw(finished_);
}

void Progress::draw(uint64_t bytes) {
    const auto now = std::chrono::steady_clock::now();
    if (!wanted_ || now < next_ || getpid() != owner_) {
        return;
    }
    next_ = now + kInterval;
    drawn_ = true;
    const double part = std::min(1.0, static_cast<double>(bytes) / static_cast<double>(total_));
    const auto filled = static_cast<size_t>(part * static_cast<double>(kWidth));
    std::string bar = kWipeLine;
    bar.append("[").append(filled, '#').append(kWidth - filled, '.').append("] ");
    bar += std::to_string(static_cast<int>(100 * part)) + " %, " + std::to_string(finished_files_) + " of " +
           std::to_string(sizes_.size()) + " files";
    show(bar);
}

} // namespace jkc::cli
