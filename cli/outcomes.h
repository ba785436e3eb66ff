// What became of the files.
#pragma once

#include <array>
#include <cstddef>
#include <string>

#include "report.h"

namespace jkc::cli {

// Of one file, from good to bad.
enum class Outcome { kConverted, kConvertedWithLosses, kUnchanged, kUndecided, kRefused, kFailed };

ExitCode exit_code(Outcome outcome);

// "converted", the same in every language.
const char *name_of(Outcome outcome);
// "would be converted", as a dry run tells it.
const char *would_be(Outcome outcome);

class OutcomeCounts {
public:
    void add(Outcome outcome);
    // Of the worst.
    ExitCode code() const { return code_; }
    // "5 files: 3 converted (1 with losses), 1 unchanged, 1 refused". `all` is how many there were to be; those that
    // nothing is known of were left alone.
    std::string summary(size_t all) const;

private:
    size_t count(Outcome outcome) const { return counts_[static_cast<size_t>(outcome)]; }

    std::array<size_t, static_cast<size_t>(Outcome::kFailed) + 1> counts_{};
    ExitCode code_ = kDone;
};

} // namespace jkc::cli
