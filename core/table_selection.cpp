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

// One of the two tables is null.
void set_euc_target(JkcContext &ctx, const uint16_t *table, const uint32_t *table32, uint64_t count) {
    ctx.euc_dst_table = table;
    ctx.euc_dst_count = table != nullptr ? count : 0;
    ctx.euc_dst_table32 = table32;
    ctx.euc_dst_count32 = table32 != nullptr ? count : 0;
}

} // namespace

void select_jis_cp50221_source(JkcContext &ctx) {
    set_jis_source(ctx, _jis2unibe50221_table, _jis2unibe50221_table_size);
}
void select_jis_2004_source(JkcContext &ctx) {
    set_jis_source(ctx, _jis2unibe2022jp2004_table01, _jis2unibe2022jp2004_table01_size);
}
void select_euc_source(JkcContext &ctx) {
    set_euc_source(ctx, _euc2unibecommon_table00, _euc2unibecommon_table00_size, nullptr, 0);
}
void select_euc_20932_source(JkcContext &ctx) {
    set_euc_source(ctx, _euc2unibe20932_table00, _euc2unibe20932_table00_size, _euc2unibe20932_table8f,
                   _euc2unibe20932_table8f_size);
}
void select_euc_51932_source(JkcContext &ctx) {
    set_euc_source(ctx, _euc2unibe51932_table00, _euc2unibe51932_table00_size, nullptr, 0);
}
void select_euc_ms_source(JkcContext &ctx) {
    set_euc_source(ctx, _euc2unibems_table00, _euc2unibems_table00_size, _euc2unibems_table8f,
                   _euc2unibems_table8f_size);
}

// Characters beyond the BMP widen the repertoire; the target type stays.
void select_jis_target(JkcContext &ctx) {
    (ctx.srg_exists == 0 ? set_jis_target_cp50221 : select_jis_2004_target)(ctx);
}
void select_jis_2004_target(JkcContext &ctx) {
    ctx.jis_dst_table = _unibe2jis2022jp2004_table;
    ctx.jis_dst_count = _unibe2jis2022jp2004_table_size;
    ctx.jis_dst_bits = _unibe2jis2022jp2004_table_bits;
    ctx.jis_dst_bits_count = _unibe2jis2022jp2004_table_bits_size;
    ctx.jis_dst_srg_table = _unibe2jis2022jp2004_table_srg;
    ctx.jis_dst_srg_count = _unibe2jis2022jp2004_table_srg_size;
    ctx.jis_dst_srg_bits = _unibe2jis2022jp2004_table_srg_bits;
    ctx.jis_dst_srg_bits_count = _unibe2jis2022jp2004_table_srg_bits_size;
}
void select_euc_target(JkcContext &ctx) {
    set_euc_target(ctx, _unibe2euccommon_table, nullptr, _unibe2euccommon_table_size);
}
void select_euc_20932_target(JkcContext &ctx) {
    set_euc_target(ctx, nullptr, _unibe2euc20932_table, _unibe2euc20932_table_size);
}
void select_euc_51932_target(JkcContext &ctx) {
    set_euc_target(ctx, _unibe2euc51932_table, nullptr, _unibe2euc51932_table_size);
}
void select_euc_ms_target(JkcContext &ctx) {
    set_euc_target(ctx, nullptr, _unibe2eucms_table, _unibe2eucms_table_size);
}

} // namespace jkc
