#include "conversion.h"

#include <algorithm>

#include "code_types.h"
#include "losses.h"
#include "report.h"
#include "translate.h"

namespace jkc::cli {
namespace {

// Whether a text of the decided code type is what -f says. ASCII is valid in all others but UTF-16, and where there is a
// byte-order mark, "UTF-16" leaves the byte order to it.
bool agrees(int decided, int expected) {
    return (decided == JKC_TYPE_ASCII && !is_utf16(expected)) || without_mark(decided) == without_mark(expected) ||
           (decided == JKC_TYPE_UTF16BE_BOM && expected == JKC_TYPE_UTF16LE_BOM);
}

// Whether what is lost may be lost.
bool allows_losses(const Options &options) {
    if (options.strict || options.on_loss == JKC_ON_LOSS_STOP) {
        return false;
    }
    return !options.in_place || options.allow_loss || !options.backup_suffix.empty();
}

} // namespace

// Mostly one for the whole text.
std::vector<Part> FileConversion::choose_parts(const Judged &judged) const {
    const bool has_lines = judged.type != JKC_DECISION_BINARY && judged.found.nul_count == 0;
    if (options_.by_line && !judged.assumed && has_lines) {
        return find_parts(source_);
    }
    return {{judged.type, 1, 1, 0, source_.length()}};
}

bool FileConversion::prepare(Outcome &outcome) {
    const Judged judged = judge(source_, options_);
    if (judged.type == JKC_TYPE_EMPTY) {
        return true;
    }
    parts_ = choose_parts(judged);
    if (std::any_of(parts_.begin(), parts_.end(), [](const Part &part) { return part.type < 0; })) {
        return refuse(judged, outcome);
    }
    target_ = choose_target(source_, parts_, options_);
    report_.read_as(parts_, target_);
    if (!options_.quiet) {
        tell_choices(judged);
    }
    return true;
}

bool FileConversion::refuse(const Judged &judged, Outcome &outcome) {
    std::string reason = undecided_reason(judged, options_);
    const std::vector<Part> parts = judged.type == JKC_DECISION_NONE ? find_parts(source_) : std::vector<Part>();
    if (parts.size() > 1) {
        reason += ": " + describe_parts(parts);
    }
    say(source_.name(), reason);
    report_.not_read(judged.type, reason);
    outcome = judged.type == JKC_DECISION_BINARY ? Outcome::kRefused : Outcome::kUndecided;
    return false;
}

void FileConversion::tell_choices(const Judged &judged) const {
    if (options_.from != 0 && !judged.assumed && !judged.is_expected && !agrees(judged.type, options_.from)) {
        say(source_.name(), format(tr("read as %s, which its bytes show, not as %s"),
                                   code_type_name(judged.type).c_str(), code_type_name(options_.from).c_str()));
    }
    if (target_ != options_.to && options_.to == JKC_TYPE_ASCII) {
        say(source_.name(), format(tr("not plain ASCII, written as %s"), code_type_name(target_).c_str()));
    } else if (target_ != options_.to && target_ != judged.type) {
        say(source_.name(), format(tr("written as %s, which lacks the least of it"), code_type_name(target_).c_str()));
    }
    for (const Part &part : parts_) {
        if (part.type != parts_.front().type) {
            say(source_.name(),
                format(tr("%s: read as %s"), describe_lines(part).c_str(), code_type_name(part.type).c_str()));
        }
    }
}

// "3 losses on the way to SJIS: first U+2603 (☃) at line 2, column 5, last ill-formed bytes 82 at line 9, column 1"
void FileConversion::tell_losses(const Route &route, uint64_t count) const {
    uint64_t seen = 0;
    std::string first;
    std::string last;
    for (const Part &part : parts_) {
        for_each_loss(source_, part, route, [&](const PlacedLoss &loss) {
            ++seen;
            if (seen == 1 || seen == count) {
                (seen == 1 ? first : last) =
                    format(tr("%s at %s"), describe(loss).c_str(), describe_place(loss.loss).c_str());
            }
            return true;
        });
    }
    const std::string target = code_type_name(route.target);
    std::string told =
        count == 1 ? format(tr("1 loss on the way to %s: %s"), target.c_str(), first.c_str())
                   : format(tr("%llu losses on the way to %s: first %s, last %s"),
                            static_cast<unsigned long long>(count), target.c_str(), first.c_str(), last.c_str());
    if (!allows_losses(options_) && !options_.strict && options_.on_loss != JKC_ON_LOSS_STOP) {
        told += tr("; not replaced: --allow-loss or a backup suffix would allow it");
    }
    say(source_.name(), told);
}

Outcome FileConversion::run(bool with_mark, const Write &write, Progress &progress) {
    uint64_t lost = 0;
    for (const Part &part : parts_) {
        const bool mark = with_mark && part.begin == 0;
        const Route route = route_to(mark ? target_ : without_mark(target_), options_);
        const Converted converted = convert_part(source_, part, route, write, [&](uint64_t offset) {
            progress.at(static_cast<int64_t>(offset));
            progress.draw();
        });
        lost += converted.lost;
        if (converted.status != JKC_SUCCESS && converted.status != JKC_ELOSS) {
            throw FileError(source_.name(), format(tr("failed with status %d"), converted.status));
        }
    }
    if (lost == 0) {
        return Outcome::kConverted;
    }
    const Route route = route_to(target_, options_);
    report_.lost(source_, parts_, route, lost);
    const bool allowed = allows_losses(options_);
    if (!allowed || !options_.quiet) {
        tell_losses(route, lost);
    }
    return allowed ? Outcome::kConvertedWithLosses : Outcome::kRefused;
}

} // namespace jkc::cli
