// Which EUC variants have a code: all that the EUC scanner asks, in a table that fits a cache.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace jkc {

enum EucClass : uint8_t {
    kInGeneric = 0x01,         // two bytes, by the standard mapping, as in code page 20932
    kIn51932 = 0x02,           // two bytes
    kInMs = 0x04,              // two bytes
    kIn20932ThreeBytes = 0x08, // behind SS3
    kInMsThreeBytes = 0x10     // behind SS3
};

// Both bytes are 0x80 or more: no variant has other codes.
constexpr size_t euc_class_index(uint8_t high, uint8_t low) {
    return static_cast<size_t>(high & 0x7F) << 7 | (low & 0x7F);
}

// Indexed by euc_class_index().
extern const std::array<uint8_t, 0x4000> kEucClasses;

} // namespace jkc
