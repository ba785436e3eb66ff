/** EUC-JP as Microsoft code page 51932: the repertoire of code page 50221, in two bytes. */
#include "tables/euc.h"
#include "tables/export.h"
#include "tables/microsoft_jis.h"

namespace jkc::tables {
namespace {

constexpr auto make_decoding() {
    EucTable table = euc_single_bytes();
    for_each_microsoft_jis([&](uint32_t jis, char32_t character) { table.add(euc_from_jis(jis), character); });
    return table.characters;
}
constexpr auto kDecoding = make_decoding();

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
