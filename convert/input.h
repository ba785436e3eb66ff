// What a decoder sees of the input.
#pragma once

#include <cstddef>
#include <cstdint>

namespace jkc {

struct Input {
    const uint8_t *p;   // next byte
    const uint8_t *end; // one past the visible bytes
    bool last;          // nothing follows these bytes

    size_t left() const { return static_cast<size_t>(end - p); }
    bool at_end() const { return p == end; }
};

} // namespace jkc
