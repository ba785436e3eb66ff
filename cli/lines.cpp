#include "lines.h"

#include <algorithm>
#include <cinttypes>

#include "code_types.h"
#include "judged.h"
#include "output.h"
#include "report.h"
#include "told_conversion.h"
#include "translate.h"

namespace jkc::cli {
namespace {

// Numbers the lines of a text in UTF-8 that comes in pieces, and counts their characters.
class Listing {
public:
    explicit Listing(Write write) : write_(std::move(write)) {}

    void add(std::string_view text) {
        for (const char c : text) {
            if (c == '\n' && behind_cr_) {
                behind_cr_ = false;
                continue;
            }
            behind_cr_ = c == '\r';
            if (c == '\n' || c == '\r') {
                end_line();
            } else {
                line_ += c;
                characters_ += (static_cast<unsigned char>(c) & 0xC0) == 0x80 ? 0 : 1;
            }
        }
        flush(kEnough);
    }
    void finish() {
        if (!line_.empty()) {
            end_line();
        }
        flush(0);
    }

private:
    static constexpr size_t kEnough = 65536;

    void end_line() {
        text_ += format("%6" PRIu64 " %6" PRIu64 "  ", ++number_, characters_) + line_ + "\n";
        line_.clear();
        characters_ = 0;
    }
    void flush(size_t least) {
        if (text_.size() > least) {
            write_(text_);
            text_.clear();
        }
    }

    Write write_;
    std::string text_;
    std::string line_;
    uint64_t characters_ = 0;
    uint64_t number_ = 0;
    bool behind_cr_ = false;
};

} // namespace

ExitCode lines(const Options &options) {
    const std::string name = options.files.empty() ? "-" : options.files.front();
    Source source(name);
    const Judged judged = judge(source, options);
    if (!judged.is_decided()) {
        say(name, undecided_reason(judged, options));
        return kUndecidedOrLost;
    }
    // Shown without a mark, which would stand behind the first number.
    const int to = without_mark(options.to);
    Output out;
    FedText shown(JKC_TYPE_UTF8, route_to(to, options), [&](std::string_view text) { out.print(text); });
    Listing listing([&](std::string_view text) { shown.feed(text); });
    const Part whole{judged.type == JKC_TYPE_EMPTY ? static_cast<int>(JKC_TYPE_ASCII) : judged.type, 1, 1, 0,
                     source.length()};
    const Converted converted = convert_part(
        source, whole, route_to(JKC_TYPE_UTF8, options), [&](std::string_view text) { listing.add(text); }, nullptr);
    listing.finish();
    // What lacks U+FFFD loses each replacement once more.
    const uint64_t lost = std::max(converted.lost, shown.finish().lost);
    out.commit();
    if (lost > 0) {
        say(name, format(tr_count("%llu loss", "%llu losses", lost), static_cast<unsigned long long>(lost)));
        return kUndecidedOrLost;
    }
    return kDone;
}

} // namespace jkc::cli
