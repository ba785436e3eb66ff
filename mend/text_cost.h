// How likely a text in UTF-8 is, by the language model of the judgement.
#pragma once

#include <cstdint>
#include <span>

namespace jkc {

// In the units of judge/language.h. Stretches of ASCII count for nothing: a misreading leaves them as they are.
struct TextCost {
    int64_t as_it_is = 0; // of a text that may be sound: lists of characters and drawn boxes are likely
    int64_t as_mended =
        0; // of one that may come of chance: half-width katakana, which single bytes become, are unlikely
    int64_t characters = 0; // that cost something
    int64_t japanese = 0;   // of them
};

TextCost text_cost(std::span<const uint8_t> text);

} // namespace jkc
