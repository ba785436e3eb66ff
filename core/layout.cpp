// The layout of the public records, field by field, since callers in other languages declare them by themselves.
#include "core/internal.h"

namespace {

// Two layouts are stated: that of 64-bit platforms, and that of i386, where a number of 64 bits is aligned as one of 32.
// Other 32-bit platforms have layouts of their own, which nothing checks.
struct Probe {
    uint32_t first;
    uint64_t second;
};
constexpr bool k64Bits = sizeof(void *) == 8;
constexpr bool kI386 = sizeof(void *) == 4 && offsetof(Probe, second) == 4;

constexpr bool is_stated(size_t found, size_t on_64_bits, size_t on_i386) {
    return k64Bits ? found == on_64_bits : !kI386 || found == on_i386;
}

#define JKC_RECORD(record, size, size_i386)                                                                            \
    static_assert(is_stated(sizeof(record), size, size_i386), #record " has another size than callers rely on")
#define JKC_FIELD(record, field, offset, width, offset_i386, width_i386)                                               \
    static_assert(is_stated(offsetof(record, field), offset, offset_i386) &&                                           \
                      is_stated(sizeof(record::field), width, width_i386),                                             \
                  #record "::" #field " stands elsewhere in the layout that callers rely on")

JKC_RECORD(JkcContext, 344, 252);
JKC_FIELD(JkcContext, jis_src_table, 0, 8, 0, 4);
JKC_FIELD(JkcContext, sjis_src_table, 8, 8, 4, 4);
JKC_FIELD(JkcContext, euc_src_table, 16, 8, 8, 4);
JKC_FIELD(JkcContext, euc_src_table_8f, 24, 8, 12, 4);
JKC_FIELD(JkcContext, jis_dst_table, 32, 8, 16, 4);
JKC_FIELD(JkcContext, jis_dst_bits, 40, 8, 20, 4);
JKC_FIELD(JkcContext, jis_dst_srg_table, 48, 8, 24, 4);
JKC_FIELD(JkcContext, jis_dst_srg_bits, 56, 8, 28, 4);
JKC_FIELD(JkcContext, sjis_dst_table, 64, 8, 32, 4);
JKC_FIELD(JkcContext, euc_dst_table, 72, 8, 36, 4);
JKC_FIELD(JkcContext, euc_dst_table32, 80, 8, 40, 4);
JKC_FIELD(JkcContext, uni_def_table, 88, 8, 44, 4);
JKC_FIELD(JkcContext, jis_src_offset, 96, 8, 48, 8);
JKC_FIELD(JkcContext, jis_src_count, 104, 8, 56, 8);
JKC_FIELD(JkcContext, sjis_src_count, 112, 8, 64, 8);
JKC_FIELD(JkcContext, euc_src_count, 120, 8, 72, 8);
JKC_FIELD(JkcContext, euc_src_count_8f, 128, 8, 80, 8);
JKC_FIELD(JkcContext, jis_dst_count, 136, 8, 88, 8);
JKC_FIELD(JkcContext, jis_dst_bits_count, 144, 8, 96, 8);
JKC_FIELD(JkcContext, jis_dst_srg_count, 152, 8, 104, 8);
JKC_FIELD(JkcContext, jis_dst_srg_bits_count, 160, 8, 112, 8);
JKC_FIELD(JkcContext, sjis_dst_count, 168, 8, 120, 8);
JKC_FIELD(JkcContext, euc_dst_count, 176, 8, 128, 8);
JKC_FIELD(JkcContext, euc_dst_count32, 184, 8, 136, 8);
JKC_FIELD(JkcContext, uni_def_count, 192, 8, 144, 8);
JKC_FIELD(JkcContext, in_file, 200, 8, 152, 4);
JKC_FIELD(JkcContext, in_ptr, 208, 8, 156, 4);
JKC_FIELD(JkcContext, in_end, 216, 8, 160, 4);
JKC_FIELD(JkcContext, mode, 224, 4, 164, 4);
JKC_FIELD(JkcContext, sys_errno, 228, 4, 168, 4);
JKC_FIELD(JkcContext, srg_exists, 232, 1, 172, 1);
JKC_FIELD(JkcContext, utfmac_exists, 233, 1, 173, 1);
JKC_FIELD(JkcContext, utfmac_to, 234, 1, 174, 1);
JKC_FIELD(JkcContext, suppress, 235, 1, 175, 1);
JKC_FIELD(JkcContext, read_offset, 240, 8, 176, 8);
JKC_FIELD(JkcContext, block_origin, 248, 8, 184, 4);
JKC_FIELD(JkcContext, first_nochar_index, 256, 8, 188, 8);
JKC_FIELD(JkcContext, last_nochar_index, 264, 8, 196, 8);
JKC_FIELD(JkcContext, nochar_count, 272, 4, 204, 4);
JKC_FIELD(JkcContext, first_nochar, 280, 8, 208, 8);
JKC_FIELD(JkcContext, last_nochar, 288, 8, 216, 8);
JKC_FIELD(JkcContext, blocks, 296, 8, 224, 4);
JKC_FIELD(JkcContext, reader, 304, 8, 228, 4);
JKC_FIELD(JkcContext, user_data, 312, 8, 232, 4);
JKC_FIELD(JkcContext, writer, 320, 8, 236, 4);
JKC_FIELD(JkcContext, observer, 328, 8, 240, 4);
JKC_FIELD(JkcContext, sts, 336, 4, 244, 4);
JKC_FIELD(JkcContext, version, 340, 4, 248, 4);

JKC_RECORD(JkcListHeader, 24, 12);
JKC_FIELD(JkcListHeader, count, 0, 4, 0, 4);
JKC_FIELD(JkcListHeader, first, 8, 8, 4, 4);
JKC_FIELD(JkcListHeader, last, 16, 8, 8, 4);

JKC_RECORD(JkcListNode, 32, 16);
JKC_FIELD(JkcListNode, data, 0, 8, 0, 4);
JKC_FIELD(JkcListNode, prev, 8, 8, 4, 4);
JKC_FIELD(JkcListNode, next, 16, 8, 8, 4);
JKC_FIELD(JkcListNode, header, 24, 8, 12, 4);

JKC_RECORD(JkcBlock, 8220, 8220);
JKC_FIELD(JkcBlock, data, 0, 8192, 0, 8192);
JKC_FIELD(JkcBlock, start, 8192, 4, 8192, 4);
JKC_FIELD(JkcBlock, end, 8196, 4, 8196, 4);
JKC_FIELD(JkcBlock, reserved, 8200, 4, 8200, 4);
JKC_FIELD(JkcBlock, scan_start, 8204, 16, 8204, 16);

JKC_RECORD(JkcTypeName, 16, 12);
JKC_FIELD(JkcTypeName, mask, 0, 4, 0, 4);
JKC_FIELD(JkcTypeName, type, 4, 4, 4, 4);
JKC_FIELD(JkcTypeName, name, 8, 8, 8, 4);

JKC_RECORD(JkcStatusMessage, 16, 12);
JKC_FIELD(JkcStatusMessage, status, 0, 8, 0, 8);
JKC_FIELD(JkcStatusMessage, message, 8, 8, 8, 4);

JKC_RECORD(FileSlot, 72, 56);
JKC_FIELD(FileSlot, context, 0, 8, 0, 4);
JKC_FIELD(FileSlot, data, 8, 8, 4, 4);
JKC_FIELD(FileSlot, size, 16, 8, 8, 8);
JKC_FIELD(FileSlot, capacity, 24, 8, 16, 8);
JKC_FIELD(FileSlot, read_position, 32, 8, 24, 4);
JKC_FIELD(FileSlot, mode, 40, 8, 28, 8);
JKC_FIELD(FileSlot, src_type, 48, 8, 36, 8);
JKC_FIELD(FileSlot, dst_type, 56, 8, 44, 8);
JKC_FIELD(FileSlot, jis_state, 64, 4, 52, 4);

} // namespace
