// Fails when a conversion takes more memory than 1.05 times the input and 1 MB. The pages of the library that it brings
// into memory count, although they are shared by all processes.
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

// A figure about this process from the system, in bytes: "VmRSS:" is its memory now, "VmHWM:" the most it ever had.
// (getrusage would count the parent's before the exec.)
size_t memory(const char *key) {
    std::ifstream status("/proc/self/status");
    for (std::string word; status >> word;) {
        if (word == key) {
            size_t kilobytes = 0;
            status >> kilobytes;
            return kilobytes * 1024;
        }
    }
    return 0;
}

// Making the text takes more memory for a while than the text does.
void forget_peak() { std::ofstream("/proc/self/clear_refs") << 5; }

int32_t count_bytes(const uint8_t * /*data*/, uint64_t length, void *user_data) {
    *static_cast<uint64_t *>(user_data) += length;
    return 0;
}

bool stays_small(const char *encoding, int32_t from, int32_t to, size_t size) {
    const std::string text = jkc::bench::make_text(jkc::bench::Text::kProse, encoding, size);
    forget_peak();
    const size_t before = memory("VmRSS:");

    JkcContext *ctx = create_jkc();
    uint64_t written = 0;
    const int32_t status = jkc_convert_buffer(ctx, reinterpret_cast<const uint8_t *>(text.data()), text.size(), from,
                                              to, false, nullptr, count_bytes, &written);
    release_jkc(ctx);

    const size_t growth = memory("VmHWM:") - before;
    const size_t allowed = text.size() + text.size() / 20 + (size_t{1} << 20);
    std::printf("%9zu bytes of %-8s: peak grew by %9zu bytes, %.3f of what is allowed\n", text.size(), encoding, growth,
                static_cast<double>(growth) / static_cast<double>(allowed));
    return before != 0 && status == JKC_SUCCESS && written > text.size() / 2 && growth <= allowed;
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

// The system counts the pages of each processor apart and adds them up now and then, so that a figure can be too high.
bool stays_small_mostly(const char *encoding, int32_t from, int32_t to, size_t size) {
    constexpr int kTries = 3;
    for (int i = 0; i < kTries; ++i) {
        if (stays_small_alone(encoding, from, to, size)) {
            return true;
        }
    }
    return false;
}

} // namespace

int main() {
    bool all = true;
    for (const size_t size : kSizes) {
        all = stays_small_mostly("UTF-8", JKC_TYPE_UTF8, JKC_TYPE_SJIS, size) && all;
        all = stays_small_mostly("CP932", JKC_TYPE_SJIS, JKC_TYPE_JIS, size) && all;
        all = stays_small_mostly("EUC-JP", JKC_TYPE_EUC, JKC_TYPE_UTF8, size) && all;
    }
    return all ? 0 : 1;
}
