// Reads the source of a context, of any kind, into input blocks. Judging and _fill_buffer() read through it.
#pragma once

#include <cstddef>
#include <cstdint>

#include "core/internal.h"

namespace jkc {

class ByteSource {
public:
    explicit ByteSource(JkcContext *ctx) : ctx_(ctx) {}

    // Reads `room` bytes to dst, fewer if the source ends; adds their number to count. SUCCESS or EREAD.
    int read(uint8_t *dst, size_t room, size_t &count);

    // Whether the whole source lies in memory.
    bool in_memory() const;

    // Sets `end` to whether nothing is left. SUCCESS or EREAD.
    int at_end(bool &end);

private:
    int failed();
    int load_chunk(JkcReader &reader);

    JkcContext *ctx_;
};

// Clears a block and sets it up for reading.
void reset_block(JkcBlock &block);

// Sets a block up for the first piece that the scanners see. The rest of the block stays as it is.
void start_first_block(JkcBlock &block);

// Makes room for the next piece behind a full one. Its last bytes go into the headroom: the scanners may have left them
// over.
void start_next_block(JkcBlock &block);

// Appends a copy of the block to the context's list. SUCCESS, or EALLOC with the list cleared.
int keep_block(JkcContext *ctx, const JkcBlock &block);

} // namespace jkc
