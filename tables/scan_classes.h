/** The classes of the characters once more, in one byte each and cut to what scanning a text asks. */
#pragma once

#include <array>
#include <cstdint>

namespace jkc {

enum ScanClass : uint8_t {
    kScanEvidence = 0x01, // speaks for Japanese text
    kScanText = 0x02,     // may stand in a text
    kScanSpecial = 0x04,  // in UTF-16: a high surrogate, or a unit that one byte order exempts
    kScanKana = 0x10,     // a kana; all of them are evidence
    kScanBase = 0x40,     // composes with a combining mark
    kScanMark = 0x80,     // a combining mark; behind a base its bit meets the base's, shifted by one
};
static_assert(kScanBase << 1 == kScanMark);

/** What U+FFFD and, read in the other byte order, its bytes are. */
constexpr uint32_t kReplacement = 0xFFFD;
constexpr uint32_t kSwappedReplacement = 0xFDFF;

/** Indexed by UTF-16 unit. */
extern const std::array<uint8_t, 0x10000> kScanClasses;

} // namespace jkc
