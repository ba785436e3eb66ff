// Reads a slot line by line.
#include "core/code_types.h"
#include "io/slots.h"

namespace jkc {

namespace {

int64_t scan_slot(FileSlot &slot, void *buf, uint64_t size, uint64_t *length) {
    const uint8_t *position = slot.read_position;
    const auto remaining = static_cast<uint64_t>(slot.data + slot.size - position);
    const auto scan = [&](auto *scanner, auto *...state) -> int64_t {
        const int32_t result = scanner(slot.context, buf, size, length, &position, remaining, state...);
        slot.read_position = slot.data + (position - slot.data);
        return result;
    };
    const auto type = static_cast<int64_t>(slot.dst_type);
    switch (type == JKC_TYPE_JIS2004 ? Family::kNone : family_of(type)) { // nothing reads lines of JIS X 0213
    case Family::kAscii:
    case Family::kJis:
        return scan(jkc_jis_strln, &slot.jis_state);
    case Family::kSjis:
        return scan(jkc_sjis_strln);
    case Family::kEuc:
        return scan(jkc_euc_strln);
    case Family::kUtf16Be:
        return scan(jkc_unibe_strln);
    case Family::kUtf16Le:
        return scan(jkc_unile_strln);
    case Family::kUtf8:
        return scan(jkc_utf8_strln);
    case Family::kNone:
        break;
    }
    return JKC_ECTYPE;
}

} // namespace

} // namespace jkc

int64_t jkc_io_get_line(int64_t slot, void *buf, uint64_t size, uint64_t *length) {
    return jkc::with_slot(slot, [&](FileSlot &open) -> int64_t {
        if (!jkc::can_read(open.mode)) {
            return JKC_EIOMODE;
        }
        if (open.read_position >= open.data + open.size) {
            return JKC_EOF;
        }
        uint64_t copied = 0;
        const int64_t result = jkc::scan_slot(open, buf, size, &copied);
        if (length != nullptr) {
            *length = copied;
        }
        return result;
    });
}
