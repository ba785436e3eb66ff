// The conversion of one file.
#pragma once

#include <vector>

#include "file_report.h"
#include "judged.h"
#include "options.h"
#include "outcomes.h"
#include "parts.h"
#include "progress.h"
#include "source.h"
#include "told_conversion.h"

namespace jkc::cli {

class FileConversion {
public:
    FileConversion(const Options &options, Source &source, FileReport &report)
        : options_(options), source_(source), report_(report) {}

    // Finds out what the source is in. False when it cannot be converted: says why, and sets the outcome.
    bool prepare(Outcome &outcome);
    // With a BOM only where the target has one and `with_mark` is set. Says what was lost.
    Outcome run(bool with_mark, const Write &write, Progress &progress);

private:
    std::vector<Part> choose_parts(const Judged &judged) const;
    void tell_choices(const Judged &judged) const;
    void tell_losses(const Route &route, uint64_t count) const;
    bool refuse(const Judged &judged, Outcome &outcome);

    const Options &options_;
    Source &source_;
    FileReport &report_;
    std::vector<Part> parts_; // none: the source is empty
    int target_ = 0;
};

} // namespace jkc::cli
