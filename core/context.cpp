// The context record: layout, defaults, creation and release.
#include <cstdlib>
#include <initializer_list>

#include "core/code_types.h"
#include "core/context.h"

namespace {

constexpr float kVersion = (JKC_VERSION_MAJOR * 10 + JKC_VERSION_MINOR) / 10.0F;
static_assert(JKC_VERSION_MINOR < 10, "jkc_get_version() has one digit for it");

// Callers in other languages declare this record by themselves, so its layout is fixed field by field.
#define JKC_FIELD(name, offset, width)                                                                                 \
    static_assert(offsetof(JkcContext, name) == (offset) && sizeof(JkcContext::name) == (width),                       \
                  #name " stands elsewhere in the layout that callers rely on")
static_assert(sizeof(void *) == 8, "the stated offsets are those of 64-bit platforms");
JKC_FIELD(jis_src_table, 0, 8);
JKC_FIELD(sjis_src_table, 8, 8);
JKC_FIELD(euc_src_table, 16, 8);
JKC_FIELD(euc_src_table_8f, 24, 8);
JKC_FIELD(jis_dst_table, 32, 8);
JKC_FIELD(jis_dst_bits, 40, 8);
JKC_FIELD(jis_dst_srg_table, 48, 8);
JKC_FIELD(jis_dst_srg_bits, 56, 8);
JKC_FIELD(sjis_dst_table, 64, 8);
JKC_FIELD(euc_dst_table, 72, 8);
JKC_FIELD(euc_dst_table32, 80, 8);
JKC_FIELD(uni_def_table, 88, 8);
JKC_FIELD(jis_src_offset, 96, 8);
JKC_FIELD(jis_src_count, 104, 8);
JKC_FIELD(sjis_src_count, 112, 8);
JKC_FIELD(euc_src_count, 120, 8);
JKC_FIELD(euc_src_count_8f, 128, 8);
JKC_FIELD(jis_dst_count, 136, 8);
JKC_FIELD(jis_dst_bits_count, 144, 8);
JKC_FIELD(jis_dst_srg_count, 152, 8);
JKC_FIELD(jis_dst_srg_bits_count, 160, 8);
JKC_FIELD(sjis_dst_count, 168, 8);
JKC_FIELD(euc_dst_count, 176, 8);
JKC_FIELD(euc_dst_count32, 184, 8);
JKC_FIELD(uni_def_count, 192, 8);
JKC_FIELD(in_file, 200, 8);
JKC_FIELD(in_ptr, 208, 8);
JKC_FIELD(in_end, 216, 8);
JKC_FIELD(mode, 224, 4);
JKC_FIELD(sys_errno, 228, 4);
JKC_FIELD(srg_exists, 232, 1);
JKC_FIELD(utfmac_exists, 233, 1);
JKC_FIELD(utfmac_to, 234, 1);
JKC_FIELD(suppress, 235, 1);
JKC_FIELD(read_offset, 240, 8);
JKC_FIELD(block_origin, 248, 8);
JKC_FIELD(first_nochar_index, 256, 8);
JKC_FIELD(last_nochar_index, 264, 8);
JKC_FIELD(nochar_count, 272, 4);
JKC_FIELD(first_nochar, 280, 8);
JKC_FIELD(last_nochar, 288, 8);
JKC_FIELD(blocks, 296, 8);
JKC_FIELD(reader, 304, 8);
JKC_FIELD(user_data, 312, 8);
JKC_FIELD(writer, 320, 8);
JKC_FIELD(observer, 328, 8);
JKC_FIELD(sts, 336, 4);
JKC_FIELD(version, 340, 4);
static_assert(sizeof(JkcContext) == 344);
#undef JKC_FIELD

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
