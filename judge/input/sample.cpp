#include "judge/input/sample.h"

#include <algorithm>
#include <cstring>

#include "core/wide.h"

namespace jkc {

void Sample::add(const uint8_t *p, size_t length) {
    length = std::min(length, kRoom - length_);
    memcpy(bytes_ + length_, p, length);
    length_ += length;
}

void Sample::take(const uint8_t *p, const uint8_t *end) {
    if (first_) {
        first_ = false;
        // A short text is taken as a whole.
        const auto length = static_cast<size_t>(end - p);
        const size_t front = length <= kRoom ? length : kFront;
        add(p, front);
        p += front;
        behind_other_ = true; // what follows the front may belong to its last character
    }
    while (p != end && length_ < kRoom) {
        if (!behind_other_) {
            const auto passed =
                (skip_ascii(p, end) - p) / static_cast<ptrdiff_t>(kUnit) * static_cast<ptrdiff_t>(kUnit);
            if (passed > 0) {
                p += passed;
                memcpy(before_, p - kUnit, kUnit);
                before_length_ = kUnit;
                continue;
            }
        }
        const size_t length = std::min(kUnit, static_cast<size_t>(end - p));
        const bool other = length == kUnit ? any(load16(p) | load16(p + kWide))
                                           : std::any_of(p, end, [](uint8_t b) { return b >= 0x80; });
        if (other && before_length_ > 0) {
            add(before_, before_length_);
        }
        before_length_ = 0;
        if (other || behind_other_) {
            add(p, length);
        } else {
            memcpy(before_, p, length);
            before_length_ = length;
        }
        behind_other_ = other;
        p += length;
    }
}

} // namespace jkc
