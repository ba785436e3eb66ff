// What a scanner finds, and when that eliminates its encoding.
#pragma once

#include <cstdint>

namespace jkc {

// In bytes.
struct Evidence {
    int64_t valid = 0;   // of characters that the encoding maps
    int64_t errors = 0;  // of unmapped or ill-formed characters
    int64_t kana = 0;    // of hiragana and katakana: a bonus
    int64_t penalty = 0; // of isolated half-width katakana
};

// This many bytes in error eliminate a candidate, however long the input is.
constexpr int64_t kTooManyErrors = 11;

// One byte in a hundred in error eliminates it too.
constexpr bool is_tolerable(int64_t errors, int64_t total) {
    constexpr int64_t kBytesPerError = 100;
    return errors < kTooManyErrors && errors * kBytesPerError < total;
}

} // namespace jkc
