// A part of a text, by which it is judged whether it is mojibake.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

namespace jkc {

constexpr size_t kMendSample = 2048;

// Copies it: the characters that are not ASCII from the first one on, and what stands around them. Empty: the text is
// ASCII. `whole`: nothing but stretches of ASCII is left out.
std::span<const uint8_t> sample_of(std::span<const uint8_t> text, uint8_t (&room)[kMendSample], bool &whole);

} // namespace jkc
