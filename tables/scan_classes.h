// The classes of the BMP reduced to a byte each: all that the scanners for Unicode ask.
#pragma once

#include <array>
#include <cstdint>

namespace jkc {

enum ScanClass : uint8_t {
    kScanEvidence = 0x01, // speaks for Japanese text
    kScanText = 0x02,     // may stand in a text
    kScanSpecial = 0x04,  // in UTF-16: a high surrogate, or a replacement character of either byte order
    kScanKana = 0x10,     // a kana; all of them are evidence
    kScanBase = 0x40,     // composes with a combining mark
    kScanMark = 0x80,     // a combining mark; the bit of a base shifted by one
};
static_assert(kScanBase << 1 == kScanMark);

// Indexed by UTF-16 code unit.
extern const std::array<uint8_t, 0x10000> kScanClasses;

} // namespace jkc
