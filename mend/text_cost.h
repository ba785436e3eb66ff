// How likely a text in UTF-8 is, by the language model of the judgement.
#pragma once

#include <cstdint>
#include <span>

namespace jkc {

// In the units of judge/language.h. Stretches of ASCII count for nothing: a misreading leaves them as they are.
int64_t text_cost(std::span<const uint8_t> text);

} // namespace jkc
