// Decides which code type a text is in: the table of rules in decision.cpp. docs/decision.md tells them in words.
#pragma once

#include <cstddef>
#include <cstdint>

#include "jkc/detector.h"

namespace jkc {

// A part of the text to look at closely.
struct DecisionSample {
    const uint8_t *bytes; // those around the ones that are not ASCII, and the first ones of the text
    size_t length;        // 4096 at most
    bool whole;           // this is all of the text
};

// Sets the decision, its rule and its confidence from the rest of the record.
void decide(JkcDetection &found, const DecisionSample &sample);

} // namespace jkc
