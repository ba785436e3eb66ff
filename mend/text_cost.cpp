#include "mend/text_cost.h"

#include "convert/sequences.h"
#include "judge/language.h"

namespace jkc {

namespace {

Character character_of(uint32_t c, uint8_t length) {
    constexpr int32_t kReplacementBits = 8; // as likely on either side of a misreading
    if (c == kReplacement) {
        return {CharClass::kForeignSymbol, length, kReplacementBits * kBit};
    }
    return unicode_character(c, length);
}

} // namespace

int64_t text_cost(std::span<const uint8_t> text) {
    // The same character again, or the next one in a list of characters.
    constexpr int32_t kExpectedCost = 2 * kBit;
    int64_t cost = 0;
    CharClass before = CharClass::kStart;
    uint32_t last = 0;
    const uint8_t *const end = text.data() + text.size();
    for (const uint8_t *p = text.data(); p < end;) {
        const Sequence found = look_at_utf8(p, static_cast<size_t>(end - p));
        const bool ascii = found.kind == Sequence::kPlain;
        const uint32_t c = ascii ? *p : found.kind == Sequence::kCharacter ? found.c : kReplacement;
        const Character character = character_of(c, found.length);
        if (!ascii && (c == last || c == last + 1)) {
            cost += kExpectedCost;
        } else if (!ascii || last >= 0x80) {
            cost += transition_cost(before, character.char_class) + character.cost;
        }
        before = character.char_class;
        last = c;
        p += found.length;
    }
    return cost;
}

} // namespace jkc
