// What a source is in: what the user says, else what the library decides.
#pragma once

#include <string>

#include "jkc.h"
#include "jkc/detector.h"
#include "options.h"
#include "source.h"

namespace jkc::cli {

struct Judged {
    JkcDetection found;
    int type;         // what to convert from, or a JkcDecision
    bool assumed;     // the user says so, whatever was found
    bool is_expected; // -f has settled what was open

    bool is_decided() const { return type >= 0; }
};

// Reads the source through.
Judged judge(Source &source, const Options &options);

// Why it is not decided: "undecided (SJIS, EUC); -f CODE may decide".
std::string undecided_reason(const Judged &judged, const Options &options);

} // namespace jkc::cli
