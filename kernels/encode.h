// Kernels that look units up in tables and write them in a target.
#pragma once

#include "kernels/kernels.h"
#include "kernels/masks.h"
#include "tables/characters.h"

namespace jkc::JKC_KERNEL_SET {

// What is looked up, 32 units at a time, each step for all of them before the next one: a wide load must not wait for
// narrow stores.
struct Batch {
    size_t count;
    uint32_t beyond_ascii = 0; // a bit for each 32 units of which some are to be looked up
};
static_assert(kMostTogether <= 32 * kUnits);

// Up to the first unit that the table does not reach, or that is odd.
template <class IsOdd>
inline Batch plan(const uint16_t *units, size_t count, uint64_t table_count, const IsOdd &odd) {
    Batch batch = {count};
    const auto first_beyond = static_cast<uint16_t>(table_count);
    for (size_t i = 0; i < count; i += kUnits) {
        const Units v = load_units(units + i);
        const uint32_t lanes = lanes_of(count - i);
        const uint32_t others = ~units_between(v, 0, kLastAscii) & lanes;
        batch.beyond_ascii |= static_cast<uint32_t>(others != 0) << (i / kUnits);
        const uint32_t beyond = table_count <= 0xFFFF ? units_between(v, first_beyond, 0xFFFF) : 0;
        const uint32_t stops = (beyond | odd(v)) & others;
        if (stops != 0) [[unlikely]] {
            batch.count = i + lowest(stops);
            break;
        }
    }
    return batch;
}

// Calls look_up(index) for what is to be looked up.
template <class LookUp>
inline void for_each_entry(const Batch &batch, const LookUp &look_up) {
    for (uint32_t left = batch.beyond_ascii; left != 0; left &= left - 1) {
        const size_t i = lowest(left) * kUnits;
        const size_t end = batch.count - i < kUnits ? batch.count : i + kUnits;
        size_t at = i;
        for (; at + 4 <= end; at += 4) {
            look_up(at);
            look_up(at + 1);
            look_up(at + 2);
            look_up(at + 3);
        }
        for (; at < end; ++at) {
            look_up(at);
        }
    }
}
inline void look_up_entries(const Batch &batch, const uint16_t *units, const uint16_t *table, uint16_t *found) {
    for_each_entry(batch, [=](size_t at) { found[at] = table[units[at]]; });
}
inline void look_up_entries(const Batch &batch, const uint16_t *units, const uint32_t *table, uint16_t *found) {
    for_each_entry(batch, [=](size_t at) {
        const uint32_t code = table[units[at]];
        found[at] = code <= 0xFFFF ? static_cast<uint16_t>(code) : 0;
    });
}

inline size_t look_up_characters(uint16_t *units, size_t count, LookUpTable table) {
    const Batch batch = plan(units, count, table.count, [](Units) { return 0U; });
    uint16_t found[kMostTogether + kUnitsBehind];
    look_up_entries(batch, units, table.entries, found);
    for (uint32_t left = batch.beyond_ascii; left != 0; left &= left - 1) {
        const size_t i = lowest(left) * kUnits;
        const Units codes = load_units(units + i);
        const Units characters = load_units(found + i);
        const uint32_t ascii = units_between(codes, 0, kLastAscii);
        store_units(units + i, units_chosen(ascii, codes, characters));
        const uint32_t stops = (units_between(characters, 0, kLastAscii) | units_between(characters, 0xD800, 0xDFFF)) &
                               ~ascii & lanes_of(batch.count - i);
        if (stops != 0) [[unlikely]] {
            return i + lowest(stops);
        }
    }
    return batch.count;
}

// What some routes treat in ways of their own.
inline uint32_t is_odd(Units v) {
    return units_between(v, 0xFF61, 0xFF9F) | units_equal(v, kOverline) | units_equal(v, kYenSign);
}

template <class Table>
Encoded encode_legacy(const uint16_t *units, size_t count, uint8_t *o, Table table) {
    const Batch batch = plan(units, count, table.count, is_odd);
    uint16_t found[kMostTogether + kUnitsBehind];
    look_up_entries(batch, units, table.entries, found);
    for (size_t i = 0; i < batch.count; i += kUnits) {
        const Units characters = load_units(units + i);
        const size_t width = batch.count - i < kUnits ? batch.count - i : kUnits;
        const Units codes = load_units(found + i); // garbage where all are ASCII
        const uint32_t ascii = units_between(characters, 0, kLastAscii);
        const uint32_t stops = units_between(codes, 0, 0xFF) & ~ascii & lanes_of(width);
        const size_t taken = stops != 0 ? lowest(stops) : width;
        o = put_codes(o, units_chosen(ascii, characters, codes), ascii, taken);
        if (stops != 0) [[unlikely]] {
            return {i + taken, o};
        }
    }
    return {batch.count, o};
}

inline uint8_t *encode_utf8(const uint16_t *units, size_t count, uint8_t *o) {
    for (size_t i = 0; i < count; i += kUnits) {
        const Units v = load_units(units + i);
        const size_t width = count - i < kUnits ? count - i : kUnits;
        if ((~units_between(v, 0, kLastAscii) & lanes_of(width)) == 0) {
            put_low_bytes(o, v);
            o += width;
        } else {
            o = put_utf8(o, units + i, width);
        }
    }
    return o;
}

template <bool kBig>
uint8_t *encode_utf16(const uint16_t *units, size_t count, uint8_t *o) {
    for (size_t i = 0; i < count; i += kUnits) {
        const Units v = load_units(units + i);
        store_units(o + 2 * i, kBig ? swapped(v) : v);
    }
    return o + 2 * count;
}

} // namespace jkc::JKC_KERNEL_SET
