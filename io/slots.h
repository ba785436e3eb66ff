// The table of file slots.
#pragma once

#include "core/internal.h"

namespace jkc {

// The open slot of a number; or null, and why there is none.
struct OpenSlot {
    FileSlot *slot;
    int64_t status;
};

OpenSlot open_slot(int64_t number);

// Open or free; the number must exist.
FileSlot &slot_at(int64_t number);

// Frees what the slot holds, and the slot.
void close_slot(FileSlot &slot);

bool can_read(uint64_t mode);
bool can_write(uint64_t mode);

// Answers work(slot), or the status that says why there is no such slot.
template <class Work>
int64_t with_slot(int64_t number, Work work) {
    const OpenSlot found = open_slot(number);
    return found.slot != nullptr ? work(*found.slot) : found.status;
}

} // namespace jkc
