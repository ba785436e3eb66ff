#include "outcomes.h"

#include <algorithm>
#include <numeric>

#include "translate.h"

namespace jkc::cli {

ExitCode exit_code(Outcome outcome) {
    switch (outcome) {
    case Outcome::kConverted:
    case Outcome::kConvertedWithLosses:
    case Outcome::kUnchanged:
        return kDone;
    case Outcome::kUndecided:
    case Outcome::kRefused:
        return kUndecidedOrLost;
    case Outcome::kFailed:
        break;
    }
    return kInputOutput;
}

const char *name_of(Outcome outcome) {
    constexpr const char *kNames[] = {JKC_TEXT("converted"), JKC_TEXT("converted"), JKC_TEXT("unchanged"),
                                      JKC_TEXT("undecided"), JKC_TEXT("refused"),   JKC_TEXT("failed")};
    return kNames[static_cast<size_t>(outcome)];
}

const char *would_be(Outcome outcome) {
    constexpr const char *kNames[] = {JKC_TEXT("would be converted"),  JKC_TEXT("would be converted"),
                                      JKC_TEXT("would stay as it is"), JKC_TEXT("undecided"),
                                      JKC_TEXT("would be refused"),    JKC_TEXT("failed")};
    return kNames[static_cast<size_t>(outcome)];
}

void OutcomeCounts::add(Outcome outcome) {
    ++counts_[static_cast<size_t>(outcome)];
    code_ = std::max(code_, exit_code(outcome));
}

std::string OutcomeCounts::summary(size_t all) const {
    std::string text;
    const auto tell = [&](size_t number, const char *pattern) {
        if (number > 0) {
            text += (text.empty() ? "" : tr(", ")) + format(pattern, number);
        }
    };
    const size_t lossy = count(Outcome::kConvertedWithLosses);
    tell(count(Outcome::kConverted) + lossy, tr("%zu converted"));
    if (lossy > 0) {
        text += format(tr(" (%zu with losses)"), lossy);
    }
    tell(count(Outcome::kUnchanged), tr("%zu unchanged"));
    tell(count(Outcome::kUndecided), tr("%zu undecided"));
    tell(count(Outcome::kRefused), tr("%zu refused"));
    tell(count(Outcome::kFailed), tr("%zu failed"));
    tell(all - std::accumulate(counts_.begin(), counts_.end(), size_t{0}), tr("%zu not done"));
    return format(tr_count("%zu file: %s", "%zu files: %s", all), all, all == 0 ? tr("nothing to do") : text.c_str());
}

} // namespace jkc::cli
