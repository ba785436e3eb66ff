#include "io/slots.h"

#include <cstdlib>

int64_t _fd = 0;

namespace jkc {

namespace {

constexpr int64_t kSlots = 100;
FileSlot slots[kSlots];

bool is_slot(int64_t number) { return number >= 0 && number < kSlots; }
bool is_free(const FileSlot &slot) { return slot.data == nullptr; }

} // namespace

OpenSlot open_slot(int64_t number) {
    if (!is_slot(number)) {
        return {nullptr, JKC_EIOFDRANGE};
    }
    FileSlot &slot = slots[number];
    return is_free(slot) ? OpenSlot{nullptr, JKC_EIONOTOPEN} : OpenSlot{&slot, JKC_SUCCESS};
}

FileSlot &slot_at(int64_t number) { return slots[number]; }

void close_slot(FileSlot &slot) {
    release_jkc(slot.context);
    free(slot.data);
    slot = {};
}

bool can_read(uint64_t mode) { return mode == 0 || mode == 3; }
bool can_write(uint64_t mode) { return mode >= 1 && mode <= 3; }

} // namespace jkc

int64_t _getTIO() {
    int64_t number = 0;
    while (number < jkc::kSlots && !jkc::is_free(jkc::slots[number])) {
        ++number;
    }
    return number < jkc::kSlots ? number : -1;
}

JkcContext *_get_jkc(int64_t slot) {
    const jkc::OpenSlot found = jkc::open_slot(slot);
    return found.slot != nullptr ? found.slot->context : nullptr;
}

int64_t jkc_io_close(int64_t slot) {
    return jkc::with_slot(slot, [](FileSlot &open) -> int64_t {
        jkc::close_slot(open);
        return JKC_SUCCESS;
    });
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
        return jkc_get_strerror(open.context, static_cast<int>(errnum), buf, size, static_cast<int>(code_type));
    });
}

int64_t jkc_io_is_can_read(int64_t mode) { return jkc::can_read(static_cast<uint64_t>(mode)) ? 1 : 0; }
int64_t jkc_io_is_can_write(int64_t mode) { return jkc::can_write(static_cast<uint64_t>(mode)) ? 1 : 0; }
