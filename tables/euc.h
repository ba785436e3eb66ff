/** What the EUC variants have in common. */
#pragma once

#include "tables/charts.h"
#include "tables/look_alikes.h"
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

} // namespace jkc::tables
