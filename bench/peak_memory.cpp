// Fails when converting 64 MB takes more memory than 1.05 times the input and 1 MB.
#include <cstdint>
#include <cstdio>
#include <fstream>
#include <string>

#include "jkc.h"
#include "text.h"

namespace {

constexpr size_t kInputSize = size_t{64} << 20;

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

int32_t count_bytes(const uint8_t * /*data*/, uint64_t length, void *user_data) {
    *static_cast<uint64_t *>(user_data) += length;
    return 0;
}

} // namespace

int main() {
    const std::string text = jkc::bench::make_text(jkc::bench::Text::kProse, "UTF-8", kInputSize);
    const size_t before = memory("VmRSS:");

    JkcContext *ctx = create_jkc();
    uint64_t written = 0;
    const int32_t status = jkc_convert_buffer(ctx, reinterpret_cast<const uint8_t *>(text.data()), text.size(),
                                              JKC_TYPE_UTF8, JKC_TYPE_SJIS, false, nullptr, count_bytes, &written);
    release_jkc(ctx);

    const size_t growth = memory("VmHWM:") - before;
    const size_t allowed = text.size() + text.size() / 20 + (size_t{1} << 20);
    std::printf(
        "%zu bytes converted with status %d to %llu: peak grew by %zu bytes, %.3f of the input (allowed: %zu)\n",
        text.size(), status, static_cast<unsigned long long>(written), growth,
        static_cast<double>(growth) / static_cast<double>(text.size()), allowed);
    return before != 0 && status == JKC_SUCCESS && written > text.size() / 2 && growth <= allowed ? 0 : 1;
}
