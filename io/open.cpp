// Fills a slot.
#include <cstdlib>
#include <cstring>

#include "io/outcome.h"
#include "io/slots.h"

namespace jkc {

namespace {

constexpr uint64_t kFirstCapacity = 8192; // what a converter hands over at once
constexpr int64_t kHighestMode = 3;

// Takes the slot. False when memory is short; then it is free again.
bool allocate(FileSlot &slot) {
    slot.context = create_jkc();
    if (slot.context != nullptr) {
        slot.data = static_cast<uint8_t *>(malloc(kFirstCapacity));
    }
    if (slot.data == nullptr) {
        close_slot(slot);
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
    auto *data = static_cast<uint8_t *>(realloc(slot.data, capacity));
    if (data == nullptr) {
        return false;
    }
    slot.data = data;
    slot.capacity = capacity;
    slot.read_position = data;
    return true;
}

} // namespace

} // namespace jkc

int32_t _io_fd_buf_observer(int32_t code_type, void * /*user_data*/) {
    jkc::outcome.code_type = code_type;
    if (FileSlot *slot = jkc::open_slot(_fd).slot; slot != nullptr) {
        slot->src_type = static_cast<uint64_t>(code_type);
    }
    if (jkc::is_decided_type(code_type)) {
        jkc::outcome.decided = true;
        return 0;
    }
    return jkc::answer_undecided(code_type);
}

int32_t _io_fd_buf_writer(const uint8_t *data, uint64_t length, void * /*user_data*/) {
    return static_cast<int32_t>(jkc::with_slot(_fd, [&](FileSlot &slot) -> int64_t {
        if (slot.size + length > slot.capacity && !jkc::grow(slot, slot.size + length)) {
            return JKC_EALLOC;
        }
        memcpy(slot.data + slot.size, data, length);
        slot.size += length;
        return JKC_SUCCESS;
    }));
}

int64_t jkc_io_open(const char *path, int64_t mode, int64_t src_type, int64_t dst_type, uint8_t source_hint,
                    uint64_t *judged_type) {
    if (judged_type != nullptr) {
        *judged_type = 0;
    }
    if (mode < 0 || mode > jkc::kHighestMode) {
        return JKC_EIOMODE;
    }
    _fd = _getTIO();
    if (_fd < 0) {
        return JKC_EIOMAX;
    }
    FileSlot &slot = jkc::slot_at(_fd);
    if (!jkc::allocate(slot)) {
        return JKC_EALLOC;
    }
    slot.mode = static_cast<uint64_t>(mode);
    slot.src_type = static_cast<uint64_t>(src_type);
    jkc::outcome = jkc::kNothingYet;

    const int32_t status =
        jkc_convert_file(slot.context, path, static_cast<int32_t>(src_type), static_cast<int32_t>(dst_type),
                         source_hint != 0, _io_fd_buf_observer, _io_fd_buf_writer, nullptr);
    if (status < 0) {
        jkc::close_slot(slot);
        return status;
    }
    // Here any single code type is as good as decided, also those that the observer leaves out.
    jkc::Outcome &outcome = jkc::outcome;
    outcome.decided = outcome.decided || !jkc::is_set(outcome.code_type);
    outcome.operation = jkc::operation_between(outcome.code_type, outcome.code_type, dst_type);
    slot.dst_type = static_cast<uint64_t>(dst_type);
    if (judged_type != nullptr) {
        *judged_type = static_cast<uint64_t>(outcome.code_type);
    }
    return _fd;
}
