// The part of a text that the decision looks at closely.
#pragma once

#include <cstddef>
#include <cstdint>

#include "judge/decision.h"

namespace jkc {

// Gathers the front of a text and what is around its bytes of 0x80 or more, until it is full. Gaps begin and end at
// even offsets, so that UTF-16 stays aligned, and among ASCII bytes, so that no character is cut.
class Sample {
public:
    // Takes the next piece. All but the last one are multiples of kUnit.
    void take(const uint8_t *p, const uint8_t *end);

    DecisionSample get(uint64_t text_length) const { return {bytes_, length_, length_ == text_length}; }

    static constexpr size_t kUnit = 32;

private:
    void add(const uint8_t *p, size_t length);

    static constexpr size_t kRoom = 4096;
    static constexpr size_t kFront = 256; // taken in any case

    uint8_t bytes_[kRoom];
    size_t length_ = 0;
    bool behind_other_ = false; // the unit before had such bytes
    bool first_ = true;
    size_t before_length_ = 0; // of the unit before, where that was left out
    uint8_t before_[kUnit];
};

} // namespace jkc
