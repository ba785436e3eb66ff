// The functions on names and messages under the names of this layer, with results of 64 bits.
#include "core/bytes.h"
#include "core/internal.h"

namespace {

// The counts are unsigned in their 32 bits; here every result carries its sign.
int64_t widen(int32_t result) { return result; }
int64_t widen(uint32_t result) { return static_cast<int32_t>(result); }

} // namespace

int64_t jkc_io_cmp_bom(int64_t a, int64_t b) { return widen(jkc_cmp_bom(static_cast<int>(a), static_cast<int>(b))); }

int64_t jkc_io_typeto_name(char *buf, int64_t code_type) {
    return widen(jkc_typeto_name(buf, static_cast<int>(code_type)));
}

int64_t jkc_io_nameto_type(const char *name) { return widen(jkc_nameto_type(name)); }

int64_t jkc_io_multi_type_names(char *buf, uint64_t size, int64_t mask_or_type) {
    return widen(jkc_multi_type_names(buf, jkc::as_size(size), static_cast<int>(mask_or_type)));
}

int64_t jkc_io_all_type_names(char *buf, uint64_t size) { return widen(jkc_all_type_names(buf, jkc::as_size(size))); }

int64_t jkc_io_all_type_names_length() { return widen(jkc_all_type_names_length()); }

int64_t jkc_io_statusto_message(char *buf, int64_t status, int64_t code_type) {
    JkcContext *ctx = create_jkc();
    if (ctx == nullptr) {
        return JKC_EALLOC;
    }
    const uint32_t length = jkc_statusto_message(ctx, buf, static_cast<int>(status), static_cast<int>(code_type));
    const bool memory_was_short = ctx->sts == JKC_EALLOC; // for the conversion of the text
    release_jkc(ctx);
    return memory_was_short ? static_cast<int64_t>(JKC_EALLOC) : widen(length);
}
