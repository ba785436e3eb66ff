// The decoding tables of the EUC variants.
#pragma once

#include "tables/charts.h"
#include "tables/look_alikes.h"
#include "tables/microsoft_jis.h"
#include "tables/single_shifts.h"
#include "tables/table_builder.h"

namespace jkc::tables {

using EucTable = DecodingTable<kTwoByteCodes>;

// ASCII, and half-width katakana behind SS2.
constexpr EucTable euc_single_bytes() {
    EucTable table;
    table.add_identical(0x01, 0x7F);
    table.add_katakana(uint32_t{kSs2} << 8 | 0xA1);
    return table;
}

// The two-byte codes of the variants that keep to the standard mapping of JIS X 0208.
constexpr EucTable euc_standard() {
    EucTable table = euc_single_bytes();
    for_each_character(kJisX0208, [&](uint32_t jis, char32_t character) { table.add(euc_from_jis(jis), character); });
    return table;
}

// The three-byte codes of code page 20932: JIS X 0212.
constexpr auto euc_20932_three_bytes() {
    DecodingTable<0xEDE4> table;
    for_each_character(kJisX0212, [&](uint32_t jis, char32_t character) { table.add(euc_from_jis(jis), character); });
    return table;
}

// Code page 51932.
constexpr EucTable euc_51932() {
    EucTable table = euc_single_bytes();
    for_each_microsoft_jis([&](uint32_t jis, char32_t character) { table.add(euc_from_jis(jis), character); });
    return table;
}

// The codes of eucJP-ms of one and two bytes.
constexpr EucTable euc_ms() {
    EucTable table = euc_single_bytes();
    // The C1 control characters but for the single shifts.
    table.add_identical(0x80, kSs2 - 1);
    table.add_identical(kSs3 + 1, 0x9F);
    const auto add = [&](uint32_t jis, char32_t character) { table.add(euc_from_jis(jis), character); };
    for_each_microsoft_0208(add);
    for_each_character(kNecRow13, add);
    return table;
}

// The three-byte codes of eucJP-ms.
constexpr auto euc_ms_three_bytes() {
    DecodingTable<0xF4FF> table;
    // Two-byte codes have № of JIS X 0212 and thirteen symbols of the IBM rows already.
    table.claimed = euc_ms().claimed;
    const auto add = [&](uint32_t jis, char32_t character) { table.add(euc_from_jis(jis), character); };
    // The full-width tilde is A1C1 here, so the tilde of JIS X 0212 is decoded to the other look-alike.
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
