#include "mend/text_cost.h"

#include <algorithm>
#include <string_view>

#include "convert/sequences.h"
#include "judge/language.h"

namespace jkc {

namespace {

// What a character costs that follows from the one before.
constexpr int32_t kExpectedCost = 2 * kBit;

constexpr int32_t kHalfWidthCost = 4 * kBit;

constexpr bool is_drawn(uint32_t c) { return c >= 0x2500 && c < 0x25A1; }
constexpr bool is_block(uint32_t c) { return c >= 0x2580; }

bool has_arm(std::u32string_view ends, uint32_t c) { return c < 0x2580 && ends.find(c) == ends.npos; }

constexpr bool is_japanese(CharClass c) { return c >= CharClass::kHiragana && c < CharClass::kForeignLetter; }

// Whether a line is drawn on, or ends in both characters, or a bar goes on.
bool is_drawn_on(uint32_t last, uint32_t c) {
    constexpr std::u32string_view kNoneToTheRight = U"│┐┘┤║╕╖╗╛╜╝╡╢╣";
    constexpr std::u32string_view kNoneToTheLeft = U"│┌└├║╒╓╔╘╙╚╞╟╠";
    if (is_block(last) || is_block(c)) {
        return is_block(last) == is_block(c);
    }
    return has_arm(kNoneToTheRight, last) == has_arm(kNoneToTheLeft, c);
}

bool is_expected(uint32_t last, uint32_t c) {
    return c == last || c == last + 1 || (is_drawn(last) && is_drawn(c) && is_drawn_on(last, c));
}

} // namespace

TextCost text_cost(std::span<const uint8_t> text) {
    TextCost cost;
    CharClass before = CharClass::kStart;
    uint32_t last = 0;
    const uint8_t *const end = text.data() + text.size();
    for (const uint8_t *p = text.data(); p < end;) {
        const Sequence found = look_at_utf8(p, static_cast<size_t>(end - p));
        const bool ascii = found.kind == Sequence::kPlain;
        const uint32_t c = ascii ? *p : found.kind == Sequence::kCharacter ? found.c : kReplacement;
        p += found.length;
        if (c == kReplacement) { // neither likely nor unlikely: a loss must not be a gain
            before = CharClass::kStart;
            last = c;
            continue;
        }
        const Character character = unicode_character(c, found.length);
        if (!ascii || last >= 0x80) {
            const int32_t full = transition_cost(before, character.char_class) + character.cost;
            cost.as_it_is += !ascii && is_expected(last, c) ? std::min(full, kExpectedCost) : full;
            cost.as_mended += full + (is_half_width_katakana(c) ? kHalfWidthCost : 0);
            ++cost.characters;
            cost.japanese += !ascii && is_japanese(character.char_class) ? 1 : 0;
        }
        before = character.char_class;
        last = c;
    }
    return cost;
}

} // namespace jkc
