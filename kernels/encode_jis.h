// The kernel that writes ISO-2022-JP. Without an instruction that packs bytes it is no faster than plain code, as the
// sets change every few characters.
#pragma once

#include "core/bytes.h"
#include "kernels/encode.h"
#include "tables/jis_designations.h"

namespace jkc::JKC_KERNEL_SET {

// An escape sequence is written with the character behind it.
inline EncodedJis encode_jis(const uint16_t *units, size_t count, uint8_t *o, JisTables tables, bool two_byte) {
    const Batch batch = plan(units, count, tables.count, is_odd);
    uint16_t codes[kMostTogether + kUnitsBehind];
    uint16_t sets[kMostTogether + kUnitsBehind];
    for_each_entry(batch, [&](size_t at) {
        codes[at] = tables.codes[units[at]];
        sets[at] = tables.sets[units[at]];
    });
    for (size_t i = 0; i < batch.count; i += kUnits) {
        const Units characters = load_units(units + i);
        const size_t width = batch.count - i < kUnits ? batch.count - i : kUnits;
        const uint32_t ascii = units_between(characters, 0, kLastAscii);
        const Units found = load_units(codes + i); // garbage where all are ASCII
        const uint32_t in_set = units_equal(load_units(sets + i), kJisX0208) & ~units_equal(found, 0);
        const uint32_t controls = units_equal(characters, kEsc) | units_between(characters, kSo, kSi);
        const uint32_t stops = (~(ascii | in_set) | controls) & lanes_of(width);
        const size_t taken = stops != 0 ? lowest(stops) : width;
        const uint32_t two = ~ascii & lanes_of(taken);
        const uint32_t changes = (two ^ (two << 1 | (two_byte ? 1 : 0))) & lanes_of(taken);
        const Units chosen_codes = units_chosen(ascii, characters, found);
        o = changes == 0 ? put_codes(o, chosen_codes, ascii, taken)
                         : put_designated(o, swapped(chosen_codes), two, changes, taken);
        two_byte = taken > 0 ? (two >> (taken - 1) & 1) != 0 : two_byte;
        if (stops != 0) [[unlikely]] {
            return {i + taken, o, two_byte};
        }
    }
    return {batch.count, o, two_byte};
}

} // namespace jkc::JKC_KERNEL_SET
