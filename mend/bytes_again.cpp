#include "mend/bytes_again.h"

#include "core/context.h"
#include "core/unicode.h"

namespace jkc {

namespace {

JkcContext &select_target(JkcContext &ctx, int32_t read_as) {
    if (family_of(read_as) != Family::kNone) {
        set_defaults(ctx);
        select_target_tables(ctx, read_as);
    }
    return ctx;
}

// Also single bytes that begin no character, which decoders make control and private-use characters of.
template <class Encoder>
uint8_t *put_any(Encoder &e, uint8_t *o, uint32_t c) {
    uint8_t *written = e.put(o, c);
    return written != nullptr ? written : e.put_lossy(o, c);
}

} // namespace

SingleByteSet single_byte_set(int32_t read_as) {
    switch (read_as) {
    case JKC_READ_CP1252:
        return SingleByteSet::kCp1252;
    case JKC_READ_CP850:
        return SingleByteSet::kCp850;
    case JKC_READ_CP437:
        return SingleByteSet::kCp437;
    case JKC_READ_MAC_ROMAN:
        return SingleByteSet::kMacRoman;
    default:
        return SingleByteSet::kLatin1;
    }
}

BytesAgain::BytesAgain(int32_t read_as) : read_as_(read_as), sjis_(&select_target(ctx_, read_as)), euc_(&ctx_) {}

uint8_t *BytesAgain::put(uint8_t *o, uint32_t c) {
    if (c == kReplacement) {
        *o = kLostByte;
        return o + 1;
    }
    switch (family_of(read_as_)) {
    case Family::kSjis:
        return put_any(sjis_, o, c);
    case Family::kEuc:
        return put_any(euc_, o, c);
    default:
        *o = single_byte(single_byte_set(read_as_), c);
        return *o != 0 && *o != kLostByte ? o + 1 : nullptr;
    }
}

} // namespace jkc
