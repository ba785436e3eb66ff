// The entry points of the conversion: judges the source, selects the tables and runs one converter.
#include <cerrno>

#include "convert/compose.h"
#include "convert/copy.h"
#include "convert/routes.h"
#include "convert/whole_input.h"
#include "core/files.h"
#include "judge/input/source_bits.h"
#include "judge/judge.h"

namespace jkc {

namespace {

// A pair without a route converts nothing.
int32_t run_route(JkcContext *ctx, int32_t src_type, int32_t dst_type, const WorkArea &area) {
    MakeConversion *make = find_route(src_type, dst_type);
    return make != nullptr ? convert_all(ctx, make, has_bom(dst_type), area) : JKC_SUCCESS;
}

// The same encoding on both sides, with or without a BOM: composing is all that there is to do.
int32_t compose_within(JkcContext *ctx, int32_t dst_type, const WorkArea &area) {
    return is_unicode(family_of(dst_type)) ? run_route(ctx, dst_type, dst_type, area) : JKC_SUCCESS;
}

int32_t convert_judged(JkcContext *ctx, int32_t src_type, int32_t dst_type, const WorkArea &area) {
    // ASCII counts as Shift_JIS on either side.
    if (src_type == JKC_TYPE_ASCII) {
        src_type = JKC_TYPE_SJIS;
    }
    if (dst_type == JKC_TYPE_ASCII) {
        dst_type = JKC_TYPE_SJIS;
    }
    if (src_type == dst_type) {
        return composes(*ctx) ? compose_within(ctx, dst_type, area) : copy(ctx, src_type, area);
    }
    switch (jkc_cmp_bom(src_type, dst_type)) {
    case 1:
        return composes(*ctx) ? compose_within(ctx, dst_type, area) : add_bom(ctx, dst_type, area);
    case -1:
        return composes(*ctx) ? compose_within(ctx, dst_type, area) : delete_bom(ctx, dst_type, area);
    default:
        select_source_tables(*ctx, src_type);
        select_target_tables(*ctx, dst_type);
        return run_route(ctx, src_type, dst_type, area);
    }
}

int32_t convert_source(JkcContext *ctx, int32_t src_type, int32_t dst_type, bool source_hint, JkcObserver observer,
                       JkcWriter writer, void *user_data) {
    ctx->user_data = user_data;
    ctx->writer = writer;
    ctx->observer = observer;
    const int32_t result = _jkc_convert(ctx, src_type, dst_type, source_hint);
    clear_source(ctx);
    ll_clear(ctx->blocks);
    ctx->sts = result;
    return result;
}

} // namespace

} // namespace jkc

int32_t _jkc_convert(JkcContext *ctx, int32_t src_type, int32_t dst_type, bool source_hint) {
    // One area for all that follows: once the observer has made room for the output, memory cannot be short any more.
    const jkc::WorkArea area;
    const int32_t judged = jkc_judge_for_conversion(ctx, &area, src_type, source_hint);
    if (ctx->observer != nullptr && ctx->observer(judged, ctx->user_data) != 0) {
        return judged;
    }
    // A failure, or no single code type to convert from.
    if (judged < 0 || jkc::is_set(judged)) {
        return judged;
    }
    return jkc::convert_judged(ctx, judged, dst_type, area);
}

int32_t jkc_convert_buffer(JkcContext *ctx, const uint8_t *buf, uint64_t len, int32_t src_type, int32_t dst_type,
                           bool source_hint, JkcObserver observer, JkcWriter writer, void *user_data) {
    ctx->in_ptr = buf;
    ctx->in_end = buf + len;
    jkc::set_source(ctx, JKC_MODE_BUFFER);
    return jkc::convert_source(ctx, src_type, dst_type, source_hint, observer, writer, user_data);
}

int32_t jkc_convert_stream(JkcContext *ctx, FILE *fp, int32_t src_type, int32_t dst_type, bool source_hint,
                           JkcObserver observer, JkcWriter writer, void *user_data) {
    ctx->in_file = fp;
    jkc::set_source(ctx, JKC_MODE_STREAM);
    return jkc::convert_source(ctx, src_type, dst_type, source_hint, observer, writer, user_data);
}

int32_t jkc_convert_file(JkcContext *ctx, const char *path, int32_t src_type, int32_t dst_type, bool source_hint,
                         JkcObserver observer, JkcWriter writer, void *user_data) {
    FILE *fp = jkc::open_to_read(path);
    int32_t result = JKC_EROPEN;
    int error = errno;
    if (fp != nullptr) {
        jkc::set_source(ctx, JKC_MODE_FILE);
        result = jkc_convert_stream(ctx, fp, src_type, dst_type, source_hint, observer, writer, user_data);
        error = errno;
        fclose(fp);
    }
    ctx->sys_errno = error;
    ctx->sts = result;
    return result;
}
