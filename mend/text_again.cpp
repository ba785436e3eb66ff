#include "mend/text_again.h"

#include <algorithm>

#include "core/context.h"
#include "judge/language.h"
#include "mend/bytes_again.h"
#include "tables/other_codes.h"

namespace jkc {

namespace {

constexpr size_t kLongestCharacter = 4;

// Without them a reading as CP1252 has U+FFFD or a question mark.
constexpr uint8_t kNotInCp1252[] = {0x81, 0x8D, 0x8F, 0x90, 0x9D};

bool is_found(const Sequence &sequence) {
    return sequence.kind == Sequence::kCharacter || sequence.kind == Sequence::kToldOnly;
}

// The other code of a character that code page 932 has twice, by its bytes; 0: it has none. Symbols, numerals and the
// kanji of the extension do.
uint32_t other_code(const uint8_t *p) {
    const bool may_have = p[0] == 0x81 || p[0] == 0x87 || (p[0] >= 0xFA && p[0] <= 0xFC);
    return may_have ? sjis_code_beside(two_byte_code(p[0], p[1])) : 0;
}

} // namespace

TextAgain::TextAgain(JkcMisreading misreading) : misreading_(misreading), family_(family_of(misreading.was)) {
    if (family_ != Family::kUtf8) {
        set_defaults(ctx_);
        select_source_tables(ctx_, misreading.was);
    }
    if (misreading.read_as == JKC_READ_CP1252) {
        lost_bytes_ = kNotInCp1252;
    }
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

int32_t TextAgain::cost_of_two(const uint8_t *p, size_t left) const {
    constexpr int32_t kDamaged = 40 * kBit;
    const Sequence first = look(p, left);
    if (!is_found(first) || first.length >= left || is_ascii(p[first.length])) {
        return is_found(first) ? unicode_character(first.c, first.length).cost : kDamaged;
    }
    const Sequence second = look(p + first.length, left - first.length);
    if (!is_found(second)) {
        return kDamaged;
    }
    const Character one = unicode_character(first.c, first.length);
    const Character other = unicode_character(second.c, second.length);
    return one.cost + transition_cost(one.char_class, other.char_class) + other.cost;
}

// How likely what follows is as it stands, up to ASCII or to what is lost.
int32_t TextAgain::cost_of_run(const uint8_t *p, const uint8_t *end) const {
    constexpr int32_t kByteCost = 16 * kBit;
    int32_t cost = 0;
    CharClass before = CharClass::kStart;
    while (p < end && !is_ascii(*p) && *p != kLostByte) {
        const Sequence found = look(p, static_cast<size_t>(end - p));
        const Character character =
            is_found(found) ? unicode_character(found.c, found.length) : Character{CharClass::kIllFormed, 1, kByteCost};
        cost += transition_cost(before, character.char_class) + character.cost;
        before = character.char_class;
        p += character.length;
    }
    return cost;
}

// Whether a code of two bytes that was lost had the lead byte of the character whose trail byte is at p.
bool TextAgain::is_trail_of_lost(const uint8_t *p, const uint8_t *end) const {
    constexpr std::ptrdiff_t kFarEnough = 16;
    constexpr int32_t kTrailCost = 8 * kBit;
    if (family_ == Family::kUtf8 || misreading_.read_as >= JKC_READ_CP1252 || end - p < 2 || is_ascii(*p)) {
        return false;
    }
    end = std::min(end, p + kFarEnough);
    return cost_of_run(p + 1, end) + kTrailCost < cost_of_run(p, end);
}

// Code page 932 has some characters twice, among them those at FA40 to FC4B. Where both of the codes fit, those bytes are
// taken that are the likelier characters. They are the trail byte of one and the lead byte of the next.
void TextAgain::prefer_other_code(uint8_t *p, size_t left) const {
    const uint32_t other = p[1] >= 0xFA ? other_code(p + 1) : 0;
    if (other == 0) {
        return;
    }
    const uint8_t changed[] = {p[0], static_cast<uint8_t>(other >> 8), static_cast<uint8_t>(other), p[3]};
    if (cost_of_two(changed, sizeof changed) < cost_of_two(p, left)) {
        std::copy(changed + 1, changed + 3, p + 1);
    }
}

// What is ill-formed with one code may be well-formed with the other.
bool TextAgain::put_back_other_code(uint8_t *p, size_t left) const {
    for (size_t i = 0; i + 1 < std::min(left, kLongestCharacter); ++i) {
        const uint32_t other = other_code(p + i);
        if (other == 0) {
            continue;
        }
        uint8_t changed[kLongestCharacter] = {};
        std::copy(p, p + std::min(left, kLongestCharacter), changed);
        changed[i] = static_cast<uint8_t>(other >> 8);
        changed[i + 1] = static_cast<uint8_t>(other);
        if (is_found(look(changed, std::min(left, kLongestCharacter)))) {
            std::copy(changed + i, changed + i + 2, p + i);
            return true;
        }
    }
    return false;
}

// Of the bytes that may have stood in a place, one alone makes a character of code page 932: nothing else is certain.
bool TextAgain::put_back_lost(uint8_t *p, size_t left) const {
    const size_t length = std::min(left, kLongestCharacter);
    uint8_t *const lost = std::find_if(p, p + length, [](uint8_t b) { return b == kLostByte || b == '?' || b == ' '; });
    if (lost == p + length) {
        return false;
    }
    const uint8_t before = *lost;
    constexpr uint8_t kNoBreakSpace[] = {0xA0}; // which became a space
    uint8_t only = 0;
    int32_t count = 0;
    for (const uint8_t b : before == ' ' ? kNoBreakSpace : lost_bytes_) {
        *lost = b;
        const Sequence found = look(p, length);
        const bool fits = is_found(found) && found.length > static_cast<size_t>(lost - p) &&
                          found.c < _unibe2sjis932_table_size && _unibe2sjis932_table[found.c] != 0;
        only = fits ? b : only;
        count += fits ? 1 : 0;
    }
    *lost = count == 1 ? only : before;
    return count == 1;
}

bool TextAgain::put_back(uint8_t *p, size_t left) const {
    if (misreading_.read_as == JKC_READ_CP1252 || misreading_.read_as == JKC_READ_LATIN1) {
        return put_back_lost(p, left);
    }
    return misreading_.read_as == JKC_TYPE_SJIS && put_back_other_code(p, left);
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
    if (left > 1 && *p == kLostByte) { // all bytes that CP1252 lacks are lead bytes of Shift_JIS
        const bool lead = family_ == Family::kSjis && !lost_bytes_.empty() && p[1] >= 0x40 && p[1] != 0x7F;
        return lead || !is_ascii(p[1]) ? 2 : 1;
    }
    return left > 1 && p[1] == kLostByte ? 2 : std::max<size_t>(1, std::min<size_t>(left, look(p, left).length));
}

// Each end of a text may be a part of a character.
bool TextAgain::has_many_errors() const {
    constexpr uint64_t kAtEnds = 3;
    constexpr uint64_t kCharactersPerError = 16;
    return errors > kAtEnds && errors > kAtEnds + characters / kCharactersPerError;
}

uint8_t *TextAgain::take(uint8_t *p, const uint8_t *end, bool last, TextBuffer &text) {
    const bool doubtful = family_ == Family::kEuc && misreading_.read_as == JKC_TYPE_SJIS;
    while (p < end && (last || end - p >= static_cast<std::ptrdiff_t>(kLongestCharacter))) {
        const auto left = static_cast<size_t>(end - p);
        if (is_ascii(*p)) {
            if (!text.put(*p)) {
                return nullptr;
            }
            ++p;
            continue;
        }
        if (doubtful && left >= kLongestCharacter) {
            prefer_other_code(p, left);
        }
        Sequence found = look(p, left);
        if (!is_found(found) && put_back(p, left)) {
            found = look(p, left);
        }
        ++characters;
        size_t length = found.length;
        if (!is_found(found)) {
            length = damaged_length(p, left);
            const auto lost = static_cast<size_t>(std::count(p, p + length, kLostByte));
            errors += lost == 0 ? 1 : 0;
            if (has_many_errors()) {
                return nullptr;
            }
            destroyed += length - lost;
            found.c = kReplacement;
            if (lost > 0 && is_trail_of_lost(p + length, end)) {
                ++length;
                ++destroyed;
                if (!text.put(kReplacement)) {
                    return nullptr;
                }
            }
        }
        if (!text.put(found.c)) {
            return nullptr;
        }
        p += length;
    }
    return p;
}

} // namespace jkc
