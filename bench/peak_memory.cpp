// Fails when a conversion takes more memory than 1.05 times the input and 1 MB. The pages of the library that it brings
// into memory count, although they are shared by all processes.
#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <fstream>
#include <string>

#include <sys/wait.h>
#include <unistd.h>

#include "jkc.h"
#include "text.h"

namespace {

constexpr size_t kSizes[] = {1 << 10, 1 << 20, size_t{64} << 20};

// What this process has in memory now, in bytes: its own memory and the pages of libjkc. Those of other libraries do not
// count: the system brings in more or fewer around each that is used.
size_t memory_now() {
    std::ifstream mappings("/proc/self/smaps");
    size_t kilobytes = 0;
    bool counts = false;
    for (std::string line; std::getline(mappings, line);) {
        if (line.find('-') < line.find(' ')) { // addresses, where one begins
            counts = line.find(".so") == std::string::npos || line.find("libjkc") != std::string::npos;
        } else if (counts && line.starts_with("Rss:")) {
            kilobytes += std::stoul(line.substr(4));
        }
    }
    return kilobytes * 1024;
}

// The most it ever had, other libraries and all. (getrusage would count the parent's before the exec.) The system counts the
// pages of each processor apart and adds them up now and then, so that this can be too high.
size_t most_memory() {
    std::ifstream status("/proc/self/status");
    for (std::string word; status >> word;) {
        if (word == "VmHWM:") {
            size_t kilobytes = 0;
            status >> kilobytes;
            return kilobytes * 1024;
        }
    }
    return 0;
}
constexpr size_t kOfOthers = size_t{1} << 20;

// Making the text takes more memory for a while than the text does.
void forget_peak() { std::ofstream("/proc/self/clear_refs") << 5; }

struct Output {
    uint64_t length = 0;
    uint64_t pieces = 0;
    size_t memory = 0; // the most that was there when a piece was written
};

int32_t take(const uint8_t * /*data*/, uint64_t length, void *user_data) {
    constexpr uint64_t kPiecesPerLook = 1024;
    auto *output = static_cast<Output *>(user_data);
    output->length += length;
    if (output->pieces++ % kPiecesPerLook == 0) {
        output->memory = std::max(output->memory, memory_now());
    }
    return 0;
}

bool stays_small(const char *encoding, int32_t from, int32_t to, size_t size) {
    const std::string text = jkc::bench::make_text(jkc::bench::Text::kProse, encoding, size);
    forget_peak();
    memory_now(); // what this needs itself is there from now on
    const size_t before = memory_now();
    const size_t most_before = most_memory();

    JkcContext *ctx = create_jkc();
    Output output;
    const int32_t status = jkc_convert_buffer(ctx, reinterpret_cast<const uint8_t *>(text.data()), text.size(), from,
                                              to, false, nullptr, take, &output);
    release_jkc(ctx);

    const size_t growth = output.memory - before;
    const size_t peak = most_memory() - most_before;
    const size_t allowed = text.size() + text.size() / 20 + (size_t{1} << 20);
    std::printf("%9zu bytes of %-8s: grew by %9zu bytes, %.3f of what is allowed, at most by about %zu\n", text.size(),
                encoding, growth, static_cast<double>(growth) / static_cast<double>(allowed), peak);
    return before != 0 && status == JKC_SUCCESS && output.length > text.size() / 2 && growth <= allowed &&
           peak <= allowed + kOfOthers;
}

// In a process of its own, which finds no page in memory.
bool stays_small_alone(const char *encoding, int32_t from, int32_t to, size_t size) {
    std::fflush(stdout);
    const pid_t child = fork();
    if (child == 0) {
        const bool small = stays_small(encoding, from, to, size);
        std::fflush(stdout);
        _exit(small ? 0 : 1);
    }
    int status = 1;
    return child > 0 && waitpid(child, &status, 0) == child && status == 0;
}

} // namespace

int main() {
    bool all = true;
    for (const size_t size : kSizes) {
        all = stays_small_alone("UTF-8", JKC_TYPE_UTF8, JKC_TYPE_SJIS, size) && all;
        all = stays_small_alone("CP932", JKC_TYPE_SJIS, JKC_TYPE_JIS, size) && all;
        all = stays_small_alone("EUC-JP", JKC_TYPE_EUC, JKC_TYPE_UTF8, size) && all;
    }
    return all ? 0 : 1;
}
