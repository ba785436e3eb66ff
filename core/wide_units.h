// Eight code units of UTF-16 at once.
#pragma once

#include <bit>
#include <type_traits>

#include "core/unicode.h"
#include "core/wide.h"

namespace jkc {

using Units8 = uint16_t __attribute__((vector_size(kWide)));
constexpr size_t kUnits = 8;

// From a byte order to that of the processor, and back.
template <class Order>
inline Units8 in_order(Units8 units) {
    constexpr bool kNative = std::is_base_of_v<LittleEndian, Order> == (std::endian::native == std::endian::little);
    return kNative ? units : units << 8 | units >> 8;
}

template <class Order>
inline Units8 load8(const uint8_t *p) {
    return in_order<Order>(reinterpret_cast<Units8>(load16(p)));
}
template <class Order>
inline void store8(uint8_t *o, Units8 units) {
    units = in_order<Order>(units);
    memcpy(o, &units, sizeof units);
}

constexpr Units8 splat8(uint16_t unit) { return Units8{unit, unit, unit, unit, unit, unit, unit, unit}; }

// Each of the following returns all bits of the units for which it holds.
inline Units8 units_equal(Units8 units, uint16_t unit) { return reinterpret_cast<Units8>(units == splat8(unit)); }
inline Units8 units_between(Units8 units, uint16_t first, uint16_t last) {
    return reinterpret_cast<Units8>(units - splat8(first) <= splat8(static_cast<uint16_t>(last - first)));
}
// Where kMask has bits, they equal those of `unit`.
template <uint16_t kMask>
inline Units8 units_equal_masked(Units8 units, uint16_t unit) {
    return units_equal(units & splat8(kMask), unit);
}

inline bool any_unit(Units8 units) { return any(reinterpret_cast<Bytes16>(units)); }

} // namespace jkc
