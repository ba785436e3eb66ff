// What --dry-run and --report tell of a file.
#pragma once

#include <string>
#include <vector>

#include "losses.h"
#include "options.h"
#include "outcomes.h"

namespace jkc::cli {

class FileReport {
public:
    FileReport(const Options &options, std::string name) : options_(options), name_(std::move(name)) {}

    void read_as(const std::vector<Part> &parts, int target);
    // A decision that is no code type.
    void not_read(int decision, std::string reason);
    // Why it is not converted.
    void give_reason(std::string reason) { reason_ = std::move(reason); }
    // Goes through the losses again if they are asked for.
    void lost(const Source &source, const std::vector<Part> &parts, const Route &route, uint64_t count);

    // The lines of the report; empty when none is wanted.
    std::string text(Outcome outcome) const;

private:
    std::string json(Outcome outcome) const;
    std::string line(Outcome outcome) const;

    const Options &options_;
    std::string name_;
    std::string source_; // what was decided: "SJIS", of several parts "UTF8+SJIS", "unknown"
    std::string target_; // empty: not converted
    std::string reason_;
    uint64_t count_ = 0;
    std::vector<PlacedLoss> losses_;
};

} // namespace jkc::cli
