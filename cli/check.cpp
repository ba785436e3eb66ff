#include "check.h"

#include <algorithm>

#include "code_types.h"
#include "each_file.h"
#include "judged.h"
#include "losses.h"
#include "output.h"
#include "parts.h"
#include "platform.h"
#include "quoting.h"
#include "told_conversion.h"
#include "translate.h"

namespace jkc::cli {
namespace {

// Prints what is wrong with one file.
class Check {
public:
    Check(const Options &options, const std::string &name, Output &out)
        : options_(options), source_(name), shown_name_(shown_on(kStandardOutput, name)), out_(out) {}

    ExitCode run() {
        const Judged judged = judge(source_, options_);
        const bool has_lines = judged.type != JKC_DECISION_BINARY && !is_utf16(judged.type);
        parts_ = has_lines ? find_parts(source_) : std::vector<Part>();
        type_ = judged.is_decided() ? judged.type : most_of_it();
        if (type_ < 0) {
            print(": ", undecided_reason(judged, options_));
            return kUndecidedOrLost;
        }
        check_lines();
        print(": ", wrong_lines_ == 0
                        ? format(tr("%s, no ill-formed lines"), code_type_name(type_).c_str())
                        : format(tr_count("%s, %llu ill-formed line", "%s, %llu ill-formed lines", wrong_lines_),
                                 code_type_name(type_).c_str(), static_cast<unsigned long long>(wrong_lines_)));
        return wrong_lines_ == 0 ? kDone : kUndecidedOrLost;
    }

private:
    void print(const std::string &where, const std::string &what) { out_.print(shown_name_ + where + what + "\n"); }

    // The code type of the longest part; -1 when none is known.
    int most_of_it() const {
        int type = -1;
        uint64_t longest = 0;
        for (const Part &part : parts_) {
            if (part.type > JKC_TYPE_ASCII && part.end - part.begin > longest) {
                type = part.type;
                longest = part.end - part.begin;
            }
        }
        return type;
    }

    void check_lines() {
        uint64_t last_line = 0;
        const Part whole{type_, 1, 1, 0, source_.length()};
        for_each_loss(source_, whole, route_to(JKC_TYPE_UTF8, Options()), [&](const PlacedLoss &loss) {
            if (loss.loss.line != last_line) {
                last_line = loss.loss.line;
                ++wrong_lines_;
                print(format(":%llu:%llu: ", static_cast<unsigned long long>(last_line),
                             static_cast<unsigned long long>(loss.loss.column)),
                      describe(loss) + what_line_would_be(last_line));
            }
            return true;
        });
    }

    std::string what_line_would_be(uint64_t line) const {
        const auto part = std::find_if(parts_.begin(), parts_.end(),
                                       [&](const Part &p) { return p.first_line <= line && line <= p.last_line; });
        const bool is_other = part != parts_.end() && part->type > JKC_TYPE_ASCII && part->type != without_mark(type_);
        return is_other ? format(tr("; the line would be %s"), code_type_name(part->type).c_str()) : "";
    }

    const Options &options_;
    Source source_;
    std::string shown_name_;
    Output &out_;
    std::vector<Part> parts_;
    int type_ = 0;
    uint64_t wrong_lines_ = 0;
};

} // namespace

ExitCode check(const Options &options) {
    Output out;
    const ExitCode code = for_each_file(list_files(options), out,
                                        [&](const std::string &name) { return Check(options, name, out).run(); });
    if (out.error() == 0) {
        out.commit();
    }
    return code;
}

} // namespace jkc::cli
