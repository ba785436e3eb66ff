#include "io/slots.h"

#include <atomic>
#include <cstdlib>

#include "core/bytes.h"

int64_t _fd = 0;

namespace jkc {

namespace {

// A slot that is being filled or emptied is its thread's: nobody else finds it, whether free or open.
enum class State : uint8_t { kFree, kTaken, kOpen };

constexpr int64_t kSlots = 100;
FileSlot slots[kSlots];
std::atomic<State> states[kSlots];

bool is_slot(int64_t number) { return number >= 0 && number < kSlots; }

bool change_state(int64_t number, State from, State to) { return states[number].compare_exchange_strong(from, to); }

void release_slot(int64_t number) {
    FileSlot &slot = slots[number];
    release_jkc(slot.context);
    free(slot.data);
    slot = {};
    states[number] = State::kFree;
}

} // namespace

TakenSlot::TakenSlot() {
    while (number_ < kSlots && !change_state(number_, State::kFree, State::kTaken)) {
        ++number_;
    }
    number_ = number_ < kSlots ? number_ : -1;
}

TakenSlot::~TakenSlot() {
    if (number_ >= 0) {
        release_slot(number_);
    }
}

FileSlot &TakenSlot::slot() const { return slots[number_]; }

int64_t TakenSlot::open() {
    const int64_t number = number_;
    states[number] = State::kOpen;
    number_ = -1;
    return number;
}

OpenSlot open_slot(int64_t number) {
    if (!is_slot(number)) {
        return {nullptr, JKC_EIOFDRANGE};
    }
    return states[number] == State::kOpen ? OpenSlot{&slots[number], JKC_SUCCESS} : OpenSlot{nullptr, JKC_EIONOTOPEN};
}

bool can_read(uint64_t mode) { return mode == 0 || mode == 3; }
bool can_write(uint64_t mode) { return mode >= 1 && mode <= 3; }

} // namespace jkc

int64_t _getTIO() {
    int64_t number = 0;
    while (number < jkc::kSlots && jkc::states[number] != jkc::State::kFree) {
        ++number;
    }
    return number < jkc::kSlots ? number : -1;
}

JkcContext *_get_jkc(int64_t slot) {
    const jkc::OpenSlot found = jkc::open_slot(slot);
    return found.slot != nullptr ? found.slot->context : nullptr;
}

int64_t jkc_io_close(int64_t slot) {
    if (!jkc::is_slot(slot)) {
        return JKC_EIOFDRANGE;
    }
    if (!jkc::change_state(slot, jkc::State::kOpen, jkc::State::kTaken)) {
        return JKC_EIONOTOPEN;
    }
    jkc::release_slot(slot);
    return JKC_SUCCESS;
}

int64_t jkc_io_rewind(int64_t slot) {
    return jkc::with_slot(slot, [](FileSlot &open) -> int64_t {
        if (!jkc::can_read(open.mode)) {
            return JKC_EIOMODE;
        }
        open.read_position = open.data;
        open.jis_state = 0;
        return JKC_SUCCESS;
    });
}

int64_t jkc_io_get_size(int64_t slot) {
    return jkc::with_slot(slot, [](const FileSlot &open) { return static_cast<int64_t>(open.size); });
}

int64_t jkc_io_get_stype(int64_t slot) {
    return jkc::with_slot(slot, [](const FileSlot &open) { return static_cast<int64_t>(open.src_type); });
}

int64_t jkc_io_get_dtype(int64_t slot) {
    return jkc::with_slot(slot, [](const FileSlot &open) { return static_cast<int64_t>(open.dst_type); });
}

int64_t jkc_io_get_errno(int64_t slot) {
    return jkc::with_slot(slot, [](const FileSlot &open) -> int64_t { return open.context->sys_errno; });
}

int64_t jkc_io_get_strerror(int64_t slot, int64_t errnum, char *buf, uint64_t size, int64_t code_type) {
    return jkc::with_slot(slot, [&](const FileSlot &open) -> int64_t {
        return jkc_get_strerror(open.context, static_cast<int>(errnum), buf, jkc::as_size(size),
                                static_cast<int>(code_type));
    });
}

int64_t jkc_io_is_can_read(int64_t mode) { return jkc::can_read(static_cast<uint64_t>(mode)) ? 1 : 0; }
int64_t jkc_io_is_can_write(int64_t mode) { return jkc::can_write(static_cast<uint64_t>(mode)) ? 1 : 0; }
