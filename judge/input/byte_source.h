// Reads the source of a context, whichever kind it is, into input blocks.
#pragma once

#include <cstddef>
#include <cstdint>

#include "core/internal.h"

namespace jkc {

class ByteSource {
public:
    explicit ByteSource(JkcContext *ctx) : ctx_(ctx) {}

    // Reads until `room` bytes are at dst or the source ends; adds their number to count. 0 or EREAD.
    int read(uint8_t *dst, size_t room, size_t &count);

    // Whether the source lies in memory as a whole.
    bool in_memory() const;

    // Tells whether nothing is left. 0 or EREAD.
    int at_end(bool &end);

private:
    int failed();
    int load_chunk(JkcReader &reader);

    JkcContext *ctx_;
};

// Clears a block and sets it up for reading.
void reset_block(JkcBlock &block);

// Appends a copy of the block to the context's list. 0 or EALLOC, the list then cleared.
int keep_block(JkcContext *ctx, const JkcBlock &block);

} // namespace jkc
