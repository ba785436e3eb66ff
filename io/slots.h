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

// The first free slot, which nobody else finds until it is open. Free again at the end of the scope when it is not.
class TakenSlot {
public:
    TakenSlot();
    ~TakenSlot();
    TakenSlot(const TakenSlot &) = delete;
    TakenSlot &operator=(const TakenSlot &) = delete;

    int64_t number() const { return number_; } // -1 when none was free
    FileSlot &slot() const;
    int64_t open(); // answers the number

private:
    int64_t number_ = 0;
};

bool can_read(uint64_t mode);
bool can_write(uint64_t mode);

// Answers work(slot), or the status that says why there is no such slot.
template <class Work>
int64_t with_slot(int64_t number, Work work) {
    const OpenSlot found = open_slot(number);
    return found.slot != nullptr ? work(*found.slot) : found.status;
}

} // namespace jkc
