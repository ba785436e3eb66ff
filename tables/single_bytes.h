// Encodings of a byte a character, as which other texts are misread. ASCII is the same in all of them.
#pragma once

#include <cstdint>

namespace jkc {

enum class SingleByteSet : uint8_t { kLatin1, kCp1252, kCp850, kCp437, kMacRoman };
constexpr int kSingleByteSets = 5;

// The byte of a character beyond ASCII; 0: none. Where CP1252 has no character, browsers read the C1 control character
// of that number.
uint8_t single_byte(SingleByteSet set, uint32_t c);

// The character of a byte beyond ASCII.
uint32_t single_byte_character(SingleByteSet set, uint8_t byte);

} // namespace jkc
