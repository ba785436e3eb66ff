/** Which EUC variants have a code: all that judging a text asks, in a table that fits a cache. */
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace jkc {

enum EucClass : uint8_t {
    kInGeneric = 0x01,         // two bytes, by the standard mapping; the two-byte codes of code page 20932 are the same
    kIn51932 = 0x02,           // two bytes
    kInMs = 0x04,              // two bytes
    kIn20932ThreeBytes = 0x08, // behind 8F
    kInMsThreeBytes = 0x10     // behind 8F
};

/** Where two bytes, both of 0x80 or more, stand in kEucClasses. No variant has codes with others. */
constexpr size_t euc_class_index(uint8_t high, uint8_t low) {
    return static_cast<size_t>(high & 0x7F) << 7 | (low & 0x7F);
}

/** Indexed by euc_class_index(). */
extern const std::array<uint8_t, 0x4000> kEucClasses;

} // namespace jkc
