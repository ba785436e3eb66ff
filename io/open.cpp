// Fills a slot.
#include <atomic>
#include <cstdlib>
#include <cstring>

#include "core/bytes.h"
#include "io/outcome.h"
#include "io/slots.h"

namespace jkc {

namespace {

constexpr uint64_t kFirstCapacity = 8192; // what a converter hands over at once
constexpr int64_t kHighestMode = 3;

// False when memory is short.
bool allocate(FileSlot &slot) {
    slot.context = create_jkc();
    if (slot.context != nullptr) {
        slot.data = static_cast<uint8_t *>(malloc(kFirstCapacity));
    }
    if (slot.data == nullptr) {
        return false;
    }
    slot.capacity = kFirstCapacity;
    slot.read_position = slot.data;
    return true;
}

bool grow(FileSlot &slot, uint64_t needed) {
    uint64_t capacity = slot.capacity;
    while (capacity < needed) {
        capacity *= 2;
    }
    auto *data = static_cast<uint8_t *>(realloc(slot.data, as_size(capacity)));
    if (data == nullptr) {
        return false;
    }
    slot.data = data;
    slot.capacity = capacity;
    slot.read_position = data;
    return true;
}

struct Opening {
    Outcome outcome;
    FileSlot &slot;
};

int32_t note_judged(Outcome &outcome, FileSlot *slot, int32_t code_type) {
    if (slot != nullptr) {
        slot->src_type = static_cast<uint64_t>(code_type);
    }
    if (take_judged(outcome, code_type)) {
        outcome.decided = true;
        return 0;
    }
    return answer_undecided(code_type);
}

int32_t append(FileSlot &slot, const uint8_t *data, uint64_t length) {
    if (slot.size + length > slot.capacity && !grow(slot, slot.size + length)) {
        return JKC_EALLOC;
    }
    memcpy(slot.data + slot.size, data, as_size(length));
    slot.size += length;
    return JKC_SUCCESS;
}

int32_t observe(int32_t code_type, void *user_data) {
    auto *opening = static_cast<Opening *>(user_data);
    return note_judged(opening->outcome, &opening->slot, code_type);
}

int32_t write(const uint8_t *data, uint64_t length, void *opening) {
    return append(static_cast<Opening *>(opening)->slot, data, length);
}

} // namespace

} // namespace jkc

// These two are for callers who set _fd themselves, to a slot that is open.
int32_t _io_fd_buf_observer(int32_t code_type, void * /*user_data*/) {
    jkc::Outcome outcome = jkc::last_outcome();
    const int32_t answer = jkc::note_judged(outcome, jkc::open_slot(_fd).slot, code_type);
    jkc::set_last_outcome(outcome);
    return answer;
}

int32_t _io_fd_buf_writer(const uint8_t *data, uint64_t length, void * /*user_data*/) {
    return static_cast<int32_t>(
        jkc::with_slot(_fd, [&](FileSlot &slot) -> int64_t { return jkc::append(slot, data, length); }));
}

int64_t jkc_io_open(const char *path, int64_t mode, int64_t src_type, int64_t dst_type, uint8_t source_hint,
                    uint64_t *judged_type) {
    if (judged_type != nullptr) {
        *judged_type = 0;
    }
    if (mode < 0 || mode > jkc::kHighestMode) {
        return JKC_EIOMODE;
    }
    jkc::TakenSlot taken;
    std::atomic_ref(_fd).store(taken.number());
    if (taken.number() < 0) {
        return JKC_EIOMAX;
    }
    FileSlot &slot = taken.slot();
    if (!jkc::allocate(slot)) {
        return JKC_EALLOC;
    }
    slot.mode = static_cast<uint64_t>(mode);
    slot.src_type = static_cast<uint64_t>(src_type);

    jkc::Opening opening{{}, slot};
    jkc::Outcome &outcome = opening.outcome;
    const int32_t status =
        jkc_convert_file(slot.context, path, static_cast<int32_t>(src_type), static_cast<int32_t>(dst_type),
                         source_hint != 0, jkc::observe, jkc::write, &opening);
    if (status >= 0) {
        // Here any single code type is as good as decided, also those that the observer leaves out.
        outcome.decided = outcome.decided || !jkc::is_set(outcome.code_type);
        outcome.operation = jkc::operation_between(outcome.code_type, outcome.code_type, dst_type);
    }
    jkc::set_last_outcome(outcome);
    if (status < 0) {
        return status;
    }
    slot.dst_type = static_cast<uint64_t>(dst_type);
    if (judged_type != nullptr) {
        *judged_type = static_cast<uint64_t>(outcome.code_type);
    }
    return taken.open();
}
