// Reads a slot line by line.
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
    switch (slot.dst_type) {
    case JKC_TYPE_ASCII:
    case JKC_TYPE_JIS:
        return scan(jkc_jis_strln, &slot.jis_state);
    case JKC_TYPE_SJIS:
        return scan(jkc_sjis_strln);
    case JKC_TYPE_EUC:
    case JKC_TYPE_EUC_20932:
    case JKC_TYPE_EUC_51932:
    case JKC_TYPE_EUC_MS:
        return scan(jkc_euc_strln);
    case JKC_TYPE_UTF16BE:
    case JKC_TYPE_UTF16BE_BOM:
        return scan(jkc_unibe_strln);
    case JKC_TYPE_UTF16LE:
    case JKC_TYPE_UTF16LE_BOM:
        return scan(jkc_unile_strln);
    case JKC_TYPE_UTF8:
    case JKC_TYPE_UTF8_BOM:
        return scan(jkc_utf8_strln);
    default:
        return JKC_ECTYPE;
    }
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
