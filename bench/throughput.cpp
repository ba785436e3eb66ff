// Speed of whole calls beside glibc's iconv and ICU, which are told the source, and memcpy.
//
// Each row runs its contenders in turn, one batch of calls each, over and over, and reports the median: what
// disturbs one of them for a while disturbs them all.
#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <ctime>
#include <string>
#include <string_view>
#include <vector>

#include <benchmark/benchmark.h>
#include <iconv.h>

#include "icu.h"
#include "jkc.h"
#include "text.h"

namespace {

using jkc::bench::Text;

// An encoding and the names that the peers have for it, or for one of theirs that agrees with it on the texts.
struct Encoding {
    int type;
    const char *iconv;
    const char *icu;
};

constexpr Encoding kSjis = {JKC_TYPE_SJIS, "CP932", "ibm-943_P15A-2003"};
constexpr Encoding kEuc = {JKC_TYPE_EUC, "EUC-JP", "euc-jp-2007"};
constexpr Encoding kJis = {JKC_TYPE_JIS, "ISO-2022-JP", "ISO-2022-JP"};
constexpr Encoding kUtf16Le = {JKC_TYPE_UTF16LE, "UTF-16LE", "UTF-16LE"};
constexpr Encoding kUtf8 = {JKC_TYPE_UTF8, "UTF-8", "UTF-8"};

// A route to measure: one line.
struct Route {
    const char *name;
    const Encoding &from;
    const Encoding *to; // nullptr: judge only
};

// clang-format off
constexpr Route kRoutes[] = {
    {"utf8->sjis", kUtf8, &kSjis},
    {"sjis->utf8", kSjis, &kUtf8},
    {"utf8->euc", kUtf8, &kEuc},
    {"euc->utf8", kEuc, &kUtf8},
    {"utf8->jis", kUtf8, &kJis},
    {"jis->utf8", kJis, &kUtf8},
    {"utf8->utf16le", kUtf8, &kUtf16Le},
    {"utf16le->utf8", kUtf16Le, &kUtf8},
    {"judge utf8", kUtf8, nullptr},
    {"judge sjis", kSjis, nullptr},
};
// clang-format on

struct NamedText {
    const char *name;
    Text text;
};

constexpr NamedText kTexts[] = {{"prose", Text::kProse}, {"markup", Text::kMarkup}, {"ascii", Text::kAscii}};
constexpr size_t kSizes[] = {1 << 10, 64 << 10, 1 << 20, 16 << 20};
// A batch is long against the clock's own cost.
constexpr size_t kBatchBytes = 256 << 10;
constexpr int kRounds = 9;

struct Output {
    char *next;
};

int32_t copy_out(const uint8_t *data, uint64_t length, void *user_data) {
    auto *output = static_cast<Output *>(user_data);
    std::memcpy(output->next, data, length);
    output->next += length;
    return 0;
}

double thread_seconds() {
    timespec now{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) * 1e-9;
}

// One row's input and contenders. Each contender returns the bytes that it put into `out`.
class Row {
public:
    Row(const Route &route, Text text, size_t size)
        : from_(route.from), to_(route.to != nullptr ? *route.to : route.from), converts_(route.to != nullptr),
          text_(text), in_(make_text(text, from_.iconv, size)), out_(in_.size() * 4 + 16), ctx_(create_jkc()),
          converter_(iconv_open(to_.iconv, from_.iconv)), icu_(from_.icu, to_.icu) {}
    ~Row() {
        release_jkc(ctx_);
        iconv_close(converter_);
    }
    Row(const Row &) = delete;
    Row &operator=(const Row &) = delete;

    size_t input_size() const { return in_.size(); }
    bool converts() const { return converts_; }

    size_t run_jkc() {
        if (!converts()) {
            judged_ = jkc_judges_buffer(ctx_, nullptr, nullptr, in_.data(), in_.size(), from_.type);
            return 0;
        }
        Output output{out_.data()};
        jkc_convert_buffer(ctx_, reinterpret_cast<const uint8_t *>(in_.data()), in_.size(), from_.type, to_.type, false,
                           nullptr, copy_out, &output);
        return static_cast<size_t>(output.next - out_.data());
    }

    size_t run_iconv() {
        char *next_in = in_.data();
        char *next_out = out_.data();
        size_t left_in = in_.size();
        size_t left_out = out_.size();
        iconv(converter_, nullptr, nullptr, nullptr, nullptr);
        iconv(converter_, &next_in, &left_in, &next_out, &left_out);
        iconv(converter_, nullptr, nullptr, &next_out, &left_out);
        return out_.size() - left_out;
    }

    size_t run_icu() { return icu_.convert(in_.data(), in_.size(), out_.data(), out_.size()); }

    size_t run_memcpy() {
        std::memcpy(out_.data(), in_.data(), in_.size());
        benchmark::ClobberMemory();
        return in_.size();
    }

    // Only equal work is worth comparing: the same bytes out, or the right judgement.
    bool right() {
        const size_t length = run_jkc();
        if (!converts()) {
            return judged_ == (text_ == Text::kAscii ? JKC_TYPE_ASCII : from_.type);
        }
        const std::string ours(out_.data(), length);
        const auto same = [&](size_t theirs) { return ours == std::string_view(out_.data(), theirs); };
        return same(run_iconv()) && (!jkc::bench::kHasIcu || same(run_icu()));
    }

private:
    Encoding from_;
    Encoding to_;
    bool converts_;
    Text text_;
    std::string in_;
    std::vector<char> out_;
    JkcContext *ctx_;
    iconv_t converter_;
    jkc::bench::IcuConverter icu_;
    int judged_ = 0;
};

double median(std::vector<double> values) {
    auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

// Seconds of CPU time that a call takes, as an average over a batch.
template <typename Call>
double time_batch(size_t calls, Call call) {
    const double start = thread_seconds();
    for (size_t i = 0; i < calls; ++i) {
        benchmark::DoNotOptimize(call());
    }
    return (thread_seconds() - start) / static_cast<double>(calls);
}

void measure(benchmark::State &state, const Route &route, Text text, size_t size) {
    Row row(route, text, size);
    if (!row.right()) {
        state.SkipWithError("the result differs from what it should be");
        return;
    }
    const size_t calls = std::max<size_t>(1, kBatchBytes / row.input_size());
    std::vector<double> ours;
    std::vector<double> iconvs;
    std::vector<double> icus;
    std::vector<double> copies;
    while (state.KeepRunning()) {
        ours.push_back(time_batch(calls, [&] { return row.run_jkc(); }));
        if (row.converts()) {
            iconvs.push_back(time_batch(calls, [&] { return row.run_iconv(); }));
            icus.push_back(time_batch(calls, [&] { return row.run_icu(); }));
        }
        copies.push_back(time_batch(calls, [&] { return row.run_memcpy(); }));
    }
    const double megabytes = static_cast<double>(row.input_size()) * 1e-6;
    state.counters["jkc"] = megabytes / median(ours);
    state.counters["iconv"] = row.converts() ? megabytes / median(iconvs) : 0;
    state.counters["icu"] = row.converts() && jkc::bench::kHasIcu ? megabytes / median(icus) : 0;
    state.counters["memcpy"] = megabytes / median(copies);
}

// A column that not every row has.
std::string figure(const char *format, double value) {
    char text[32] = "-";
    if (value > 0) {
        std::snprintf(text, sizeof text, format, value);
    }
    return text;
}

class TableReporter : public benchmark::BenchmarkReporter {
public:
    bool ReportContext(const Context & /*context*/) override {
        std::printf("MB/s of input, CPU time, medians. iconv and ICU are told the source; jkc judges it first.\n"
                    "%-28s %9s %9s %9s %9s %9s %11s\n",
                    "route/text/size", "jkc", "iconv", "ICU", "jkc/iconv", "jkc/ICU", "jkc/memcpy");
        return true;
    }

    void ReportRuns(const std::vector<Run> &runs) override {
        for (const Run &run : runs) {
            const std::string &name = run.run_name.function_name;
            if (run.error_occurred) {
                std::printf("%-28s %s\n", name.c_str(), run.error_message.c_str());
                failed_ = true;
                continue;
            }
            const double ours = run.counters.at("jkc");
            const double iconv = run.counters.at("iconv");
            const double icu = run.counters.at("icu");
            std::printf("%-28s %9.1f %9s %9s %9s %9s %10.2f%%\n", name.c_str(), ours, figure("%.1f", iconv).c_str(),
                        figure("%.1f", icu).c_str(), figure("%.2f", iconv > 0 ? ours / iconv : 0).c_str(),
                        figure("%.2f", icu > 0 ? ours / icu : 0).c_str(), 100 * ours / run.counters.at("memcpy"));
        }
        std::fflush(stdout);
    }

    bool failed() const { return failed_; }

private:
    bool failed_ = false;
};

std::string size_name(size_t size) {
    return size >= 1 << 20 ? std::to_string(size >> 20) + "MB" : std::to_string(size >> 10) + "kB";
}

} // namespace

int main(int argc, char **argv) {
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) {
        return 2;
    }
    for (const Route &route : kRoutes) {
        for (const NamedText &text : kTexts) {
            for (size_t size : kSizes) {
                const std::string name = std::string(route.name) + "/" + text.name + "/" + size_name(size);
                benchmark::RegisterBenchmark(name.c_str(), measure, route, text.text, size)->Iterations(kRounds);
            }
        }
    }
    TableReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    return reporter.failed() ? 1 : 0;
}
