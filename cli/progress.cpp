#include "progress.h"

#include <algorithm>

#include "descriptor.h"
#include "platform.h"
#include "report.h"
#include "translate.h"

namespace jkc::cli {
namespace {

using namespace std::chrono_literals;

constexpr auto kLongWork = 1s; // what is done sooner needs no bar
constexpr auto kInterval = 100ms;

void show(const std::string &text) { write_all(kStandardError, text.data(), text.size()); }

uint64_t size_of(const std::string &name) {
    const auto file = name == "-" ? std::nullopt : status_of(name);
    return file && file->kind == FileKind::kRegular ? file->size : 0;
}

// How many columns a text takes, at most: each character that is not ASCII takes two.
size_t width_of(const std::string &text) {
    const auto begins = [](char c) { return (static_cast<unsigned char>(c) & 0xC0) != 0x80; };
    const auto is_wide = [&](char c) { return static_cast<unsigned char>(c) >= 0x80 && begins(c); };
    return static_cast<size_t>(std::count_if(text.begin(), text.end(), begins) +
                               std::count_if(text.begin(), text.end(), is_wide));
}

// "[####....] " in what room is left beside a text; nothing where that is too little to tell something.
std::string bar(double part, size_t room) {
    constexpr size_t kWidest = 40;
    constexpr size_t kNarrowest = 5;
    constexpr size_t kFrame = 3;
    const size_t width = std::min(kWidest, room < kFrame ? 0 : room - kFrame);
    const auto filled = static_cast<size_t>(part * static_cast<double>(width));
    if (width < kNarrowest) {
        return "";
    }
    std::string text = "[";
    return text.append(filled, '#').append(width - filled, '.').append("] ");
}

} // namespace

Progress::Progress(const FileList &list, bool wanted)
    : next_(std::chrono::steady_clock::now() + kLongWork), count_(list.files.size()) {
    if (!wanted || !can_go_back()) {
        return;
    }
    for (const ListedFile &file : list.files) {
        total_ += size_of(file.name);
    }
    shared_ = total_ == 0 ? nullptr : static_cast<Shared *>(share_memory(sizeof(Shared)));
    wipe_line_before_messages(shared_ != nullptr);
}

Progress::~Progress() {
    wipe_line_before_messages(false);
    if (shared_ != nullptr) {
        release_memory(shared_, sizeof(Shared));
    }
    if (drawn_) {
        show(kWipeLine);
    }
}

void Progress::begin_file(const std::string &name) {
    size_ = shared_ == nullptr ? 0 : size_of(name);
    at_ = 0;
}

void Progress::at(int64_t offset) { advance(static_cast<uint64_t>(offset)); }

void Progress::finish_file() {
    advance(size_);
    if (shared_ != nullptr) {
        ++shared_->files;
    }
}

void Progress::advance(uint64_t to) {
    if (shared_ != nullptr) {
        shared_->bytes += to - at_; // modulo 2^64, so that it goes back too
        at_ = to;
    }
}

void Progress::draw() {
    const auto now = std::chrono::steady_clock::now();
    if (shared_ == nullptr || now < next_) {
        return;
    }
    next_ = now + kInterval;
    drawn_ = true;
    const double part = std::min(1.0, static_cast<double>(shared_->bytes) / static_cast<double>(total_));
    const std::string numbers = format(tr("%d %%, %zu of %zu files"), static_cast<int>(100 * part),
                                       static_cast<size_t>(shared_->files), count_);
    // Nothing in the last column, where some terminals begin a new line.
    const size_t width = terminal_width() - 1;
    const size_t taken = width_of(numbers);
    show(kWipeLine + (taken > width ? "" : bar(part, width - taken) + numbers));
}

} // namespace jkc::cli
