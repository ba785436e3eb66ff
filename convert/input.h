// What a decoder sees of the input.
#pragma once

#include <cstddef>
#include <cstdint>

namespace jkc {

struct Input {
    const uint8_t *p;   // next byte
    const uint8_t *end; // one past the visible bytes
    bool last;          // nothing follows these bytes
    // With `last`: something may follow all the same. What is whole is taken, and the conversion does not end.
    bool stays_open = false;

    size_t left() const { return static_cast<size_t>(end - p); }
    bool at_end() const { return p == end; }
};

} // namespace jkc
