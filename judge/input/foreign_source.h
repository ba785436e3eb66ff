// A byte source behind a function, for bindings to other languages: JkcContext::reader points to it.
#pragma once

#include <cstddef>
#include <cstdint>

#include "core/internal.h"

struct JkcReader {
    // Puts at most `room` bytes at dst. Returns how many, 0 when there are none yet, a negative number at the end of
    // the input, kReadFailed when reading failed.
    int64_t (*read)(JkcReader *self, uint8_t *dst, size_t room);

    // The bytes of the last read, of which `taken` of `filled` have been handed on.
    uint8_t chunk[JKC_BLOCK_READ];
    size_t taken;
    size_t filled;
    bool ended;
};

namespace jkc {

constexpr int64_t kReadFailed = INT64_MIN;

} // namespace jkc
