// Counts isolated half-width katakana: text of another encoding looks as if it had them.
#pragma once

#include <cstddef>
#include <cstdint>

namespace jkc {

// kWidth is the number of bytes of one.
template <size_t kWidth>
class KatakanaRuns {
public:
    // The next character is one.
    void add() { run_ = run_ == 0 ? 1 : 2; }
    // The next character is none, or the text ends.
    void close() {
        isolated_ += run_ == 1 ? 1 : 0;
        run_ = 0;
    }
    // In the next `length` bytes, 32 at most, one begins at each bit of the mask.
    void add(uint32_t mask, size_t length) {
        if ((mask == 0 && run_ == 0) || length == 0) {
            return;
        }
        const uint32_t last = length < kWidth ? 0 : uint32_t{1} << (length - kWidth);
        const bool goes_on = run_ != 0 && (mask & 1) != 0;
        isolated_ += run_ == 1 && !goes_on ? 1 : 0;
        uint32_t inner = mask & ~last & ~(goes_on ? 1U : 0U);
        for (inner &= ~(mask << kWidth) & ~(mask >> kWidth); inner != 0; inner &= inner - 1) {
            ++isolated_;
        }
        const bool behind_one = (mask & (last >> kWidth)) != 0 || (goes_on && last == 1);
        run_ = (mask & last) == 0 ? 0 : behind_one ? 2 : 1;
    }

    int64_t isolated() const { return isolated_; }

private:
    int run_ = 0; // length of the run that ends here; 2 stands for more too
    int64_t isolated_ = 0;
};

} // namespace jkc
