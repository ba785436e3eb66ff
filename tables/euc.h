/** The ways from the EUC variants to Unicode. */
#pragma once

#include "tables/charts.h"
#include "tables/look_alikes.h"
#include "tables/microsoft_jis.h"
#include "tables/table_builder.h"

namespace jkc::tables {

using EucTable = DecodingTable<kTwoByteCodes>;

/** The first byte of a three-byte code, before the two that index a table. */
inline constexpr uint32_t kThreeBytes = 0x8F0000;

/** ASCII, and half-width katakana behind 8E. */
constexpr EucTable euc_single_bytes() {
    EucTable table;
    table.add_identical(0x01, 0x7F);
    table.add_katakana(0x8EA1);
    return table;
}

/** The two-byte codes of the variants that keep to the standard mapping of JIS X 0208. */
constexpr EucTable euc_standard() {
    EucTable table = euc_single_bytes();
    for_each_character(kJisX0208, [&](uint32_t jis, char32_t character) { table.add(euc_from_jis(jis), character); });
    return table;
}

/** The three-byte codes of code page 20932: JIS X 0212. */
constexpr auto euc_20932_three_bytes() {
    DecodingTable<0xEDE4> table;
    for_each_character(kJisX0212, [&](uint32_t jis, char32_t character) { table.add(euc_from_jis(jis), character); });
    return table;
}

/** Code page 51932. */
constexpr EucTable euc_51932() {
    EucTable table = euc_single_bytes();
    for_each_microsoft_jis([&](uint32_t jis, char32_t character) { table.add(euc_from_jis(jis), character); });
    return table;
}

/** The one- and two-byte codes of eucJP-ms. */
constexpr EucTable euc_ms() {
    EucTable table = euc_single_bytes();
    // The control characters of the upper half, but for those that open two- and three-byte codes.
    table.add_identical(0x80, 0x8D);
    table.add_identical(0x90, 0x9F);
    const auto add = [&](uint32_t jis, char32_t character) { table.add(euc_from_jis(jis), character); };
    for_each_microsoft_0208(add);
    for_each_character(kNecRow13, add);
    return table;
}

/** The three-byte codes of eucJP-ms. */
constexpr auto euc_ms_three_bytes() {
    DecodingTable<0xF4FF> table;
    // What the two-byte codes have (№ of JIS X 0212, thirteen symbols of the IBM rows) is not mapped twice.
    table.claimed = euc_ms().claimed;
    const auto add = [&](uint32_t jis, char32_t character) { table.add(euc_from_jis(jis), character); };
    // The full-width tilde is A1C1 here, so the tilde of JIS X 0212 is read as the other of the two look-alikes.
    add(0x2237, 0x301C);
    add(0x2243, 0xFFE4); // the full-width broken bar, where the standard mapping has U+00A6
    for_each_character(kJisX0212, [&](uint32_t jis, char32_t character) {
        if (jis != 0x2237 && jis != 0x2243) {
            add(jis, character);
        }
    });
    for_each_character(kEucJpMsIbmRows, add);
    return table;
}

} // namespace jkc::tables
