#include "mend/text_again.h"

#include <algorithm>

#include "core/context.h"
#include "mend/bytes_again.h"

namespace jkc {

TextAgain::TextAgain(int32_t was) : was_(was), family_(family_of(was)) {
    set_defaults(ctx_);
    select_source_tables(ctx_, was);
}

Sequence TextAgain::look(const uint8_t *p, size_t left) const {
    switch (family_) {
    case Family::kSjis:
        return look_at_sjis(p, left, ctx_, true);
    case Family::kEuc:
        return look_at_euc(p, left, ctx_, true);
    default:
        return look_at_utf8(p, left);
    }
}

// What is left of one character, with what stands for lost bytes.
size_t TextAgain::damaged_length(const uint8_t *p, size_t left) const {
    size_t length = 1;
    if (family_ == Family::kUtf8) {
        const size_t longest = std::min(left, is_trail(*p) || *p == kLostByte ? 3 : utf8_length(*p));
        while (length < longest && (is_trail(p[length]) || p[length] == kLostByte)) {
            ++length;
        }
        return length;
    }
    const bool whole_code = left > 1 && (p[0] == kLostByte ? !is_ascii(p[1]) : p[1] == kLostByte);
    return whole_code ? 2 : std::max<size_t>(1, std::min<size_t>(left, look(p, left).length));
}

const uint8_t *TextAgain::take(const uint8_t *p, const uint8_t *end, bool last, TextBuffer &text) {
    constexpr std::ptrdiff_t kLookAhead = 4;
    while (p < end && (last || end - p >= kLookAhead)) {
        const auto left = static_cast<size_t>(end - p);
        if (is_ascii(*p)) {
            if (!text.put(*p++)) {
                return nullptr;
            }
            continue;
        }
        const Sequence found = look(p, left);
        ++characters;
        if (found.kind == Sequence::kCharacter || found.kind == Sequence::kToldOnly) {
            p += found.length;
            if (!text.put(found.c)) {
                return nullptr;
            }
            continue;
        }
        const size_t length = damaged_length(p, left);
        errors += std::find(p, p + length, kLostByte) == p + length ? 1 : 0;
        p += length;
        if (!text.put(kReplacement)) {
            return nullptr;
        }
    }
    return p;
}

} // namespace jkc
