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

JKC_RECORD(JkcLoss, 56, 52);
JKC_FIELD(JkcLoss, size, 0, 8, 0, 4);
JKC_FIELD(JkcLoss, offset, 8, 8, 4, 8);
JKC_FIELD(JkcLoss, length, 16, 4, 12, 4);
JKC_FIELD(JkcLoss, kind, 20, 4, 16, 4);
JKC_FIELD(JkcLoss, code, 24, 8, 20, 8);
JKC_FIELD(JkcLoss, code_point, 32, 8, 28, 8);
JKC_FIELD(JkcLoss, line, 40, 8, 36, 8);
JKC_FIELD(JkcLoss, column, 48, 8, 44, 8);

JKC_RECORD(JkcConverterOptions, 40, 28);
JKC_FIELD(JkcConverterOptions, size, 0, 8, 0, 4);
JKC_FIELD(JkcConverterOptions, line_type, 8, 4, 4, 4);
JKC_FIELD(JkcConverterOptions, compose, 12, 1, 8, 1);
JKC_FIELD(JkcConverterOptions, suppress, 13, 1, 9, 1);
JKC_FIELD(JkcConverterOptions, jis_2004, 14, 1, 10, 1);
JKC_FIELD(JkcConverterOptions, on_loss, 15, 1, 11, 1);
JKC_FIELD(JkcConverterOptions, geta, 16, 1, 12, 1);
JKC_FIELD(JkcConverterOptions, one_code_each, 17, 1, 13, 1);
JKC_FIELD(JkcConverterOptions, places, 18, 1, 14, 1);
JKC_FIELD(JkcConverterOptions, reserved, 19, 5, 15, 5);
JKC_FIELD(JkcConverterOptions, observer, 24, 8, 20, 4);
JKC_FIELD(JkcConverterOptions, observer_data, 32, 8, 24, 4);

JKC_RECORD(JkcConverterLosses, 184, 172);
JKC_FIELD(JkcConverterLosses, size, 0, 8, 0, 4);
JKC_FIELD(JkcConverterLosses, ill_formed, 8, 8, 4, 8);
JKC_FIELD(JkcConverterLosses, unmappable, 16, 8, 12, 8);
JKC_FIELD(JkcConverterLosses, truncated, 24, 8, 20, 8);
JKC_FIELD(JkcConverterLosses, first, 32, 56, 28, 52);
JKC_FIELD(JkcConverterLosses, last, 88, 56, 80, 52);
JKC_FIELD(JkcConverterLosses, nochar_count, 144, 8, 132, 8);
JKC_FIELD(JkcConverterLosses, first_nochar_offset, 152, 8, 140, 8);
JKC_FIELD(JkcConverterLosses, last_nochar_offset, 160, 8, 148, 8);
JKC_FIELD(JkcConverterLosses, first_nochar, 168, 8, 156, 8);
JKC_FIELD(JkcConverterLosses, last_nochar, 176, 8, 164, 8);

JKC_RECORD(JkcDetectorOptions, 16, 12);
JKC_FIELD(JkcDetectorOptions, size, 0, 8, 0, 4);
JKC_FIELD(JkcDetectorOptions, preferred, 8, 4, 4, 4);
JKC_FIELD(JkcDetectorOptions, reserved, 12, 4, 8, 4);

JKC_RECORD(JkcEvidence, 48, 48);
JKC_FIELD(JkcEvidence, type, 0, 4, 0, 4);
JKC_FIELD(JkcEvidence, reserved, 4, 4, 4, 4);
JKC_FIELD(JkcEvidence, valid, 8, 8, 8, 8);
JKC_FIELD(JkcEvidence, ill_formed, 16, 8, 16, 8);
JKC_FIELD(JkcEvidence, kana, 24, 8, 24, 8);
JKC_FIELD(JkcEvidence, penalty, 32, 8, 32, 8);
JKC_FIELD(JkcEvidence, first_error, 40, 8, 40, 8);

JKC_RECORD(JkcDetection, 480, 476);
JKC_FIELD(JkcDetection, size, 0, 8, 0, 4);
JKC_FIELD(JkcDetection, length, 8, 8, 4, 8);
JKC_FIELD(JkcDetection, judged, 16, 4, 12, 4);
JKC_FIELD(JkcDetection, judged_set, 20, 4, 16, 4);
JKC_FIELD(JkcDetection, line_ends, 24, 4, 20, 4);
JKC_FIELD(JkcDetection, srg_exists, 28, 1, 24, 1);
JKC_FIELD(JkcDetection, utfmac_exists, 29, 1, 25, 1);
JKC_FIELD(JkcDetection, line_ends_bytes, 30, 1, 26, 1);
JKC_FIELD(JkcDetection, line_ends_utf16be, 31, 1, 27, 1);
JKC_FIELD(JkcDetection, line_ends_utf16le, 32, 1, 28, 1);
JKC_FIELD(JkcDetection, reserved, 33, 7, 29, 7);
JKC_FIELD(JkcDetection, evidence, 40, 384, 36, 384);
JKC_FIELD(JkcDetection, utf8_first_error, 424, 8, 420, 8);
JKC_FIELD(JkcDetection, utf8_two_byte, 432, 8, 428, 8);
JKC_FIELD(JkcDetection, utf8_longer, 440, 8, 436, 8);
JKC_FIELD(JkcDetection, nul_count, 448, 8, 444, 8);
JKC_FIELD(JkcDetection, control_count, 456, 8, 452, 8);
JKC_FIELD(JkcDetection, decision, 464, 4, 460, 4);
JKC_FIELD(JkcDetection, open, 468, 4, 464, 4);
JKC_FIELD(JkcDetection, rule, 472, 4, 468, 4);
JKC_FIELD(JkcDetection, confidence, 476, 4, 472, 4);

JKC_RECORD(JkcMisreading, 8, 8);
JKC_FIELD(JkcMisreading, was, 0, 4, 0, 4);
JKC_FIELD(JkcMisreading, read_as, 4, 4, 4, 4);

JKC_RECORD(JkcMending, 56, 52);
JKC_FIELD(JkcMending, size, 0, 8, 0, 4);
JKC_FIELD(JkcMending, count, 8, 4, 4, 4);
JKC_FIELD(JkcMending, confidence, 12, 4, 8, 4);
JKC_FIELD(JkcMending, lost, 16, 8, 12, 8);
JKC_FIELD(JkcMending, steps, 24, 32, 20, 32);

} // namespace
