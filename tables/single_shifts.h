// The single shifts of EUC.
#pragma once

#include <cstdint>

namespace jkc {

constexpr uint8_t kSs2 = 0x8E; // in front of a half-width katakana
constexpr uint8_t kSs3 = 0x8F; // in front of a three-byte code

// A three-byte code as a number is this and its last two bytes.
constexpr uint32_t kSs3Prefix = uint32_t{kSs3} << 16;

} // namespace jkc
