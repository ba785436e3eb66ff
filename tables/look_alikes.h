// Six codes of JIS X 0208 whose characters differ between the standard's mapping and Microsoft's, but look the same.
// Texts of either kind of converter are in use, so most encoding tables accept both characters.
#pragma once

#include <cstdint>

#include "tables/table_builder.h"

namespace jkc::tables {

struct LookAlike {
    uint16_t jis;
    char16_t standard;
    char16_t microsoft;
    bool in_standard_euc; // the EUC variants of the standard's mapping encode Microsoft's character too
};

constexpr LookAlike kLookAlikes[] = {
    {0x2141, 0x301C, 0xFF5E, false}, // wave dash and full-width tilde, which JIS X 0212 has as a character of its own
    {0x2142, 0x2016, 0x2225, false}, // double vertical line and parallel sign
    {0x215D, 0x2212, 0xFF0D, true},  // minus sign and full-width hyphen
    {0x2171, 0x00A2, 0xFFE0, true},  // cent sign and its full-width form
    {0x2172, 0x00A3, 0xFFE1, true},  // pound sign and its full-width form
    {0x224C, 0x00AC, 0xFFE2, true},  // not sign and its full-width form
};

// Encodes the standard's characters in a table of Microsoft's mapping.
template <class Entry>
constexpr void add_standard_look_alikes(EncodingTable<Entry> &table, uint32_t (*form_from_jis)(uint32_t)) {
    for (const LookAlike &pair : kLookAlikes) {
        table[pair.standard] = static_cast<Entry>(form_from_jis(pair.jis));
    }
}

// Encodes Microsoft's characters in an EUC table of the standard's mapping.
template <class Entry>
constexpr void add_microsoft_look_alikes(EncodingTable<Entry> &table, uint32_t (*form_from_jis)(uint32_t)) {
    for (const LookAlike &pair : kLookAlikes) {
        if (pair.in_standard_euc) {
            table[pair.microsoft] = static_cast<Entry>(form_from_jis(pair.jis));
        }
    }
}

} // namespace jkc::tables
