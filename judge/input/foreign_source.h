// A source that hands out bytes through a function: what a binding to another language puts behind
// JkcContext::reader.
#pragma once

#include <cstddef>
#include <cstdint>

#include "core/internal.h"

struct JkcReader {
    // Puts at most `room` bytes at dst. Returns how many; 0 when there are none just now, a negative number at the end
    // of the input, kReadFailed when reading failed.
    int64_t (*read)(JkcReader *self, uint8_t *dst, size_t room);

    // What the last read brought and nobody has taken yet.
    uint8_t chunk[JKC_BLOCK_READ];
    size_t taken;
    size_t filled;
    bool ended;
};

namespace jkc {

constexpr int64_t kReadFailed = INT64_MIN;

} // namespace jkc
