#include "core/table_selection.h"

namespace jkc {

namespace {

void set_jis_source(JkcContext &ctx, const void *table, uint64_t count) {
    ctx.jis_src_table = table;
    ctx.jis_src_offset = 0;
    ctx.jis_src_count = count;
}

void set_euc_source(JkcContext &ctx, const uint16_t *table, uint64_t count, const uint16_t *table_8f,
                    uint64_t count_8f) {
    ctx.euc_src_table = table;
    ctx.euc_src_count = count;
    ctx.euc_src_table_8f = table_8f;
    ctx.euc_src_count_8f = count_8f;
}

void set_jis_target_cp50221(JkcContext &ctx) {
    ctx.jis_dst_table = _unibe2jis50221_table;
    ctx.jis_dst_count = _unibe2jis50221_table_size;
    ctx.jis_dst_bits = _unibe2jis50221_table_bits;
    ctx.jis_dst_bits_count = _unibe2jis50221_table_bits_size;
    ctx.jis_dst_srg_table = nullptr;
    ctx.jis_dst_srg_count = 0;
    ctx.jis_dst_srg_bits = nullptr;
    ctx.jis_dst_srg_bits_count = 0;
}

void set_jis_target_2004(JkcContext &ctx) {
    ctx.jis_dst_table = _unibe2jis2022jp2004_table;
    ctx.jis_dst_count = _unibe2jis2022jp2004_table_size;
    ctx.jis_dst_bits = _unibe2jis2022jp2004_table_bits;
    ctx.jis_dst_bits_count = _unibe2jis2022jp2004_table_bits_size;
    ctx.jis_dst_srg_table = _unibe2jis2022jp2004_table_srg;
    ctx.jis_dst_srg_count = _unibe2jis2022jp2004_table_srg_size;
    ctx.jis_dst_srg_bits = _unibe2jis2022jp2004_table_srg_bits;
    ctx.jis_dst_srg_bits_count = _unibe2jis2022jp2004_table_srg_bits_size;
}

// One of the two tables is null.
void set_euc_target(JkcContext &ctx, const uint16_t *table, const uint32_t *table32, uint64_t count) {
    ctx.euc_dst_table = table;
    ctx.euc_dst_count = table != nullptr ? count : 0;
    ctx.euc_dst_table32 = table32;
    ctx.euc_dst_count32 = table32 != nullptr ? count : 0;
}

} // namespace

void select_source_tables(JkcContext &ctx, int32_t src_type) {
    switch (src_type) {
    case JKC_TYPE_JIS:
        set_jis_source(ctx, _jis2unibe50221_table, _jis2unibe50221_table_size);
        break;
    case JKC_TYPE_JIS2004:
        set_jis_source(ctx, _jis2unibe2022jp2004_table01, _jis2unibe2022jp2004_table01_size);
        break;
    case JKC_TYPE_EUC:
        set_euc_source(ctx, _euc2unibecommon_table00, _euc2unibecommon_table00_size, nullptr, 0);
        break;
    case JKC_TYPE_EUC_20932:
        set_euc_source(ctx, _euc2unibe20932_table00, _euc2unibe20932_table00_size, _euc2unibe20932_table8f,
                       _euc2unibe20932_table8f_size);
        break;
    case JKC_TYPE_EUC_51932:
        set_euc_source(ctx, _euc2unibe51932_table00, _euc2unibe51932_table00_size, nullptr, 0);
        break;
    case JKC_TYPE_EUC_MS:
        set_euc_source(ctx, _euc2unibems_table00, _euc2unibems_table00_size, _euc2unibems_table8f,
                       _euc2unibems_table8f_size);
        break;
    default:
        break;
    }
}

void select_target_tables(JkcContext &ctx, int32_t dst_type) {
    switch (dst_type) {
    case JKC_TYPE_JIS:
        // Characters beyond the BMP widen the repertoire; the target type stays.
        if (ctx.srg_exists == 0) {
            set_jis_target_cp50221(ctx);
        } else {
            set_jis_target_2004(ctx);
        }
        break;
    case JKC_TYPE_JIS2004:
        set_jis_target_2004(ctx);
        break;
    case JKC_TYPE_EUC:
        set_euc_target(ctx, _unibe2euccommon_table, nullptr, _unibe2euccommon_table_size);
        break;
    case JKC_TYPE_EUC_20932:
        set_euc_target(ctx, nullptr, _unibe2euc20932_table, _unibe2euc20932_table_size);
        break;
    case JKC_TYPE_EUC_51932:
        set_euc_target(ctx, _unibe2euc51932_table, nullptr, _unibe2euc51932_table_size);
        break;
    case JKC_TYPE_EUC_MS:
        set_euc_target(ctx, nullptr, _unibe2eucms_table, _unibe2eucms_table_size);
        break;
    default:
        break;
    }
}

} // namespace jkc
