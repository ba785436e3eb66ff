#include "mend/undo.h"

#include "judge/language.h"
#include "mend/bytes_again.h"
#include "mend/text_again.h"

namespace jkc {

Undone undo(JkcMisreading misreading, std::span<const uint8_t> text, TextBuffer &undone, int64_t &damage) {
    constexpr int64_t kErrorCost = 36 * kBit;
    constexpr int64_t kByteCost = 8 * kBit;
    constexpr size_t kRoom = 1024;
    uint8_t bytes[kRoom];
    size_t held = 0; // of a character whose other bytes come later
    BytesAgain encoder(misreading.read_as);
    TextAgain decoder(misreading);
    const uint8_t *p = text.data();
    const uint8_t *const end = p + text.size();
    do {
        uint8_t *o = bytes + held;
        while (p < end && o + BytesAgain::kLongest <= bytes + kRoom) {
            if (is_ascii(*p)) {
                *o++ = *p++;
                continue;
            }
            const Sequence found = look_at_utf8(p, static_cast<size_t>(end - p));
            o = found.kind == Sequence::kCharacter ? encoder.put(o, found.c) : nullptr;
            if (o == nullptr) {
                return Undone::kNoWay;
            }
            p += found.length;
        }
        uint8_t *const taken = decoder.take(bytes, o, p == end, undone);
        if (taken == nullptr) {
            return decoder.has_many_errors() ? Undone::kNoWay : Undone::kFull;
        }
        held = static_cast<size_t>(o - taken);
        memmove(bytes, taken, held);
    } while (p < end);
    if (undone.replacements() * 2 > decoder.characters) {
        return Undone::kNoWay;
    }
    damage += static_cast<int64_t>(decoder.errors) * kErrorCost + static_cast<int64_t>(decoder.destroyed) * kByteCost;
    return Undone::kAll;
}

} // namespace jkc
