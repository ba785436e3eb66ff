// How conversions in several threads, each with its own context and text, go beside one alone. Prints for 1, 2 and as
// many threads as there are processors how much more they convert than one, and how the CPU time of a conversion
// compares: where processors are busy with other work, only the latter tells.
#include <algorithm>
#include <barrier>
#include <cstdio>
#include <ctime>
#include <string>
#include <thread>
#include <vector>

#include "jkc.h"
#include "text.h"

namespace {

constexpr size_t kSize = 4 << 20;
constexpr int kConversions = 25;
constexpr int kRounds = 5;

struct Route {
    const char *name;
    const char *encoding;
    int32_t from;
    int32_t to;
};

constexpr Route kRoutes[] = {
    {"utf8->sjis", "UTF-8", JKC_TYPE_UTF8, JKC_TYPE_SJIS},
    {"sjis->utf8", "CP932", JKC_TYPE_SJIS, JKC_TYPE_UTF8},
    {"euc->jis", "EUC-JP", JKC_TYPE_EUC, JKC_TYPE_JIS},
};

double seconds(clockid_t clock) {
    timespec now{};
    clock_gettime(clock, &now);
    return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) * 1e-9;
}

int32_t count_bytes(const uint8_t * /*data*/, uint64_t length, void *user_data) {
    *static_cast<uint64_t *>(user_data) += length;
    return 0;
}

struct Times {
    double real = 1e9; // of all threads together
    double cpu = 1e9;  // of a thread
};

Times convert_in_threads(const Route &route, const std::string &text, size_t count) {
    std::barrier all_ready(static_cast<std::ptrdiff_t>(count) + 1);
    std::vector<double> cpu(count);
    std::vector<std::thread> threads;
    for (size_t t = 0; t < count; t++) {
        threads.emplace_back([&, t] {
            const std::string own = text;
            JkcContext *ctx = create_jkc();
            uint64_t written = 0;
            const auto convert = [&] {
                jkc_convert_buffer(ctx, reinterpret_cast<const uint8_t *>(own.data()), own.size(), route.from, route.to,
                                   false, nullptr, count_bytes, &written);
            };
            convert(); // takes the memory that the next ones use again
            all_ready.arrive_and_wait();
            const double start = seconds(CLOCK_THREAD_CPUTIME_ID);
            for (int i = 0; i < kConversions; i++) {
                convert();
            }
            cpu[t] = seconds(CLOCK_THREAD_CPUTIME_ID) - start;
            release_jkc(ctx);
        });
    }
    all_ready.arrive_and_wait();
    const double start = seconds(CLOCK_MONOTONIC);
    for (std::thread &thread : threads) {
        thread.join();
    }
    return {seconds(CLOCK_MONOTONIC) - start, *std::max_element(cpu.begin(), cpu.end())};
}

} // namespace

int main() {
    std::vector<size_t> counts = {1, 2};
    if (std::thread::hardware_concurrency() > 2) {
        counts.push_back(std::thread::hardware_concurrency());
    }
    std::printf("%-12s %8s %10s %12s %18s\n", "route", "threads", "MB/s", "times one", "CPU time, times one");
    for (const Route &route : kRoutes) {
        const std::string text = jkc::bench::make_text(jkc::bench::Text::kProse, route.encoding, kSize);
        std::vector<Times> best(counts.size());
        for (int round = 0; round < kRounds; round++) { // in turn, so that other work disturbs all alike
            for (size_t i = 0; i < counts.size(); i++) {
                const Times times = convert_in_threads(route, text, counts[i]);
                best[i] = {std::min(best[i].real, times.real), std::min(best[i].cpu, times.cpu)};
            }
        }
        for (size_t i = 0; i < counts.size(); i++) {
            const auto threads = static_cast<double>(counts[i]);
            std::printf("%-12s %8zu %10.1f %12.2f %18.2f\n", route.name, counts[i],
                        static_cast<double>(text.size()) * 1e-6 * kConversions * threads / best[i].real,
                        threads * best[0].real / best[i].real, best[i].cpu / best[0].cpu);
        }
    }
    return 0;
}
