// What the scanners find.
#pragma once

#include <cstdint>

namespace jkc {

// What one scanner finds, in bytes unless said otherwise.
struct Evidence {
    int64_t valid = 0;   // of well-formed characters that the encoding has
    int64_t errors = 0;  // that cannot belong to the encoding
    int64_t kana = 0;    // bonus for hiragana and katakana
    int64_t penalty = 0; // suspicious isolated characters (a count)
};

// A candidate with this many bytes in error is eliminated, however long the input is.
constexpr int64_t kTooManyErrors = 11;

// So is one of whose input this share or more is in error: one byte in a hundred.
constexpr bool is_tolerable(int64_t errors, int64_t total) {
    constexpr int64_t kBytesPerError = 100;
    return errors < kTooManyErrors && errors * kBytesPerError < total;
}

} // namespace jkc
