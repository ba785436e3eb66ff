// The context record: layout, defaults, creation and release.
#include <cstdlib>
#include <initializer_list>

#include "core/code_types.h"
#include "core/context.h"

namespace {

constexpr float kVersion = (JKC_VERSION_MAJOR * 10 + JKC_VERSION_MINOR) / 10.0F;
static_assert(JKC_VERSION_MINOR < 10, "jkc_get_version() has one digit for it");

} // namespace

void jkc::set_defaults(JkcContext &ctx) {
    for (const int32_t type : {JKC_TYPE_JIS, JKC_TYPE_EUC}) {
        select_source_tables(ctx, type);
        select_target_tables(ctx, type);
    }
    ctx.sjis_src_table = _sjis2unibe932_table;
    ctx.sjis_src_count = _sjis2unibe932_table_size;
    ctx.sjis_dst_table = _unibe2sjis932_table;
    ctx.sjis_dst_count = _unibe2sjis932_table_size;
    ctx.uni_def_table = _unibe_def_table;
    ctx.uni_def_count = _unibe_def_table_size;
    ctx.version = kVersion;
}

JkcContext *create_jkc() {
    auto *ctx = static_cast<JkcContext *>(calloc(1, sizeof(JkcContext)));
    if (ctx == nullptr) {
        return nullptr;
    }
    ctx->blocks = ll_create();
    if (ctx->blocks == nullptr) {
        free(ctx);
        return nullptr;
    }
    jkc::set_defaults(*ctx);
    return ctx;
}

void release_jkc(JkcContext *ctx) {
    if (ctx == nullptr) {
        return;
    }
    ll_release(&ctx->blocks);
    free(ctx);
}

uint32_t jkc_version_number() { return JKC_VERSION_NUMBER; }

float jkc_get_version() { return kVersion; }
