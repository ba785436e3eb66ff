// EUC-JP as Microsoft code page 51932: the repertoire of code page 50221, in two bytes.
#include "tables/euc.h"
#include "tables/export.h"

namespace jkc::tables {
namespace {

constexpr auto kDecoding = euc_51932().characters;

constexpr auto make_encoding() {
    EncodingTable<uint16_t> table{};
    add_inverse(table, kDecoding);
    add_standard_look_alikes(table, euc_from_jis);
    table[kYenSign] = 0x5C;
    return table;
}

} // namespace
} // namespace jkc::tables

JKC_EXPORT_TABLE(_euc2unibe51932_table00, 0xFCFF, jkc::tables::kDecoding);
JKC_EXPORT_TABLE(_unibe2euc51932_table, jkc::tables::kEncodedCharacters, jkc::tables::make_encoding());
