// Runs a conversion and gathers all that it does.
#pragma once

#include <ostream>
#include <string>
#include <vector>

#include "core/internal.h"
#include "support/case_file.h"
#include "support/sources.h"

namespace jkc::testing {

struct Outcome {
    int32_t status = 0;
    std::vector<std::string> chunks; // what each call of the writer was handed
    std::string summary;             // the record of lost characters, and the tables that a converter can change
    int told = 0;                    // the observer's code type
    bool reusable = true;            // the source and its blocks are forgotten, `sts` is the status

    bool operator==(const Outcome &) const = default;
    std::string text() const { return joined(chunks); }
};
void PrintTo(const Outcome &outcome, std::ostream *out);

// What a case's line says. See data/from_utf8.txt for the options.
Outcome expected_outcome(const Case &c);

// The same with `padding` plain letters in front of the input, which one chunk no longer holds: the output goes to the
// writer as soon as a step begins with more than the option `flush` tells pending.
Outcome expected_behind_padding(const Case &c, size_t padding);

// Converts a case's input. Where the case says so, the input is judged; otherwise it is taken as what it says.
Outcome convert(const Case &c, Way way, int64_t padding = 0);

// Whether a converter that is fed does what such a case asks for.
bool can_be_fed(const Case &c);
// Converts with one, in pieces of this size, or of random ones: for a writer, or into buffers of as many bytes. With the
// option on_loss its losses are told as losses=kind, offset+length:code=character@line.column.
constexpr size_t kRandomPieces = 0;
Outcome convert_fed(const Case &c, size_t piece, bool into_buffers, int64_t padding = 0);
// What of an outcome such a converter has.
Outcome as_fed(Outcome outcome);

// Text of one code type in another.
std::string recoded(const std::string &text, int from, int to);

} // namespace jkc::testing
