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

    int64_t first_error = -1; // offset in the text where `errors` begin; -1: there are none

    void add_errors(int64_t bytes, int64_t offset) {
        first_error = errors == 0 ? offset : first_error;
        errors += bytes;
    }
};

// Where a scanner looks: the byte at `at` is at `offset` in the text.
struct Origin {
    const uint8_t *at = nullptr;
    int64_t offset = 0;

    int64_t offset_of(const uint8_t *p) const { return offset + (p - at); }
};

// This many bytes in error eliminate a candidate, however long the input is.
constexpr int64_t kTooManyErrors = 11;

// One byte in a hundred in error eliminates it too.
constexpr bool is_tolerable(int64_t errors, int64_t total) {
    constexpr int64_t kBytesPerError = 100;
    return errors < kTooManyErrors && errors * kBytesPerError < total;
}

} // namespace jkc
