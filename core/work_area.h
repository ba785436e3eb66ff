// Where a running call reads its input and gathers its output.
#pragma once

#include "core/internal.h"

namespace jkc {

// _buffser_info for the first that needs it, memory of its own for any other that runs meanwhile. A call that is made
// of several holds one area for all.
class WorkArea {
public:
    WorkArea();
    ~WorkArea();
    WorkArea(const WorkArea &) = delete;
    WorkArea &operator=(const WorkArea &) = delete;

    JkcBlock *block() const { return block_; } // null: memory is short
    // The whole record serves as room for output: one converter may have 8193 bytes pending.
    uint8_t *bytes() const { return reinterpret_cast<uint8_t *>(block_); }

private:
    JkcBlock *block_;
};

} // namespace jkc
