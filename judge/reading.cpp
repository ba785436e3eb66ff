#include "judge/reading.h"

#include <cstring>

#include "core/internal.h"
#include "judge/language.h"
#include "tables/single_shifts.h"

namespace jkc {

namespace {

constexpr Character kIllFormedByte{CharClass::kIllFormed, 1, 0};
constexpr Character kCutCharacter{CharClass::kIllFormed, 0, 0};

bool is_euc_byte(uint8_t b) { return b >= 0xA1 && b <= 0xFE; }

// The character at p, where `left` bytes of at least 80 the first begin. ASCII and the end are settled before.
Character sjis_character(const uint8_t *p, size_t left) {
    const uint8_t lead = p[0];
    if (lead >= 0xA1 && lead <= 0xDF) {
        return half_width_katakana(lead, 1);
    }
    if (lead == 0x80 || lead == 0xA0 || lead > 0xFC) {
        return kIllFormedByte;
    }
    if (left < 2) {
        return kCutCharacter;
    }
    const uint8_t trail = p[1];
    const uint32_t code = static_cast<uint32_t>(lead) << 8 | trail;
    if (code >= _sjis2unibe932_table_size || _sjis2unibe932_table[code] == 0) {
        return kIllFormedByte;
    }
    if (lead >= 0xED) {
        return rare_kanji(2);
    }
    const uint32_t pair = lead - (lead < 0xE0 ? 0x81U : 0xC1U);
    const uint32_t cell = trail - (trail > 0x7F ? 0x41U : 0x40U);
    const uint32_t row = 0x21 + pair * 2 + (cell >= 94 ? 1 : 0);
    return jis_character(row << 8 | (cell % 94 + 0x21), 2);
}

Character euc_character(const uint8_t *p, size_t left) {
    if (!is_euc_byte(p[0]) && p[0] != kSs2 && p[0] != kSs3) {
        return kIllFormedByte;
    }
    if (left < 2) {
        return kCutCharacter;
    }
    if (p[0] == kSs2) {
        return p[1] >= 0xA1 && p[1] <= 0xDF ? half_width_katakana(p[1], 2) : kIllFormedByte;
    }
    if (!is_euc_byte(p[1])) {
        return kIllFormedByte;
    }
    const bool shifted = p[0] == kSs3;
    if (shifted) {
        if (left < 3) {
            return kCutCharacter;
        }
        if (!is_euc_byte(p[2])) {
            return kIllFormedByte;
        }
        const uint32_t code = static_cast<uint32_t>(p[1]) << 8 | p[2];
        const bool is_mapped = (code < _euc2unibe20932_table8f_size && _euc2unibe20932_table8f[code] != 0) ||
                               (code < _euc2unibems_table8f_size && _euc2unibems_table8f[code] != 0);
        return is_mapped ? rare_kanji(3) : kIllFormedByte;
    }
    const uint32_t code = static_cast<uint32_t>(p[0]) << 8 | p[1];
    const bool is_mapped = (code < _euc2unibe51932_table00_size && _euc2unibe51932_table00[code] != 0) ||
                           (code < _euc2unibems_table00_size && _euc2unibems_table00[code] != 0) ||
                           (code < _euc2unibe20932_table00_size && _euc2unibe20932_table00[code] != 0);
    return is_mapped ? jis_character(code & 0x7F7F, 2) : kIllFormedByte;
}

Character utf8_character(const uint8_t *p, size_t left) {
    const uint8_t lead = p[0];
    const size_t length = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
    if (lead < 0xC2 || lead > 0xF4) {
        return kIllFormedByte;
    }
    uint32_t c = lead & (0x7FU >> length);
    for (size_t i = 1; i < length; ++i) {
        if (i == left) {
            return kCutCharacter;
        }
        if ((p[i] & 0xC0) != 0x80) {
            return kIllFormedByte;
        }
        c = c << 6 | (p[i] & 0x3FU);
    }
    const uint32_t least = length == 4 ? 0x10000 : length == 3 ? 0x800 : 0x80;
    if (c < least || (c >= 0xD800 && c <= 0xDFFF) || c > 0x10FFFF) {
        return kIllFormedByte;
    }
    return unicode_character(c, static_cast<uint8_t>(length));
}

Character utf16_character(const uint8_t *p, size_t left, size_t high) {
    const auto unit = [p, high](size_t i) { return static_cast<uint32_t>(p[i + high]) << 8 | p[i + 1 - high]; };
    if (left < 2) {
        return kCutCharacter;
    }
    const uint32_t first = unit(0);
    if (first >= 0xD800 && first <= 0xDFFF) {
        const bool pair = first < 0xDC00 && left >= 4 && unit(2) >= 0xDC00 && unit(2) <= 0xDFFF;
        return pair ? Character{CharClass::kOtherScript, 4, 9 * kBit} : Character{CharClass::kIllFormed, 2, 0};
    }
    return unicode_character(first, 2);
}

Character latin_character(const uint8_t *p) {
    if (*p < 0xA0) {
        return {CharClass::kForeignSymbol, 1, 7 * kBit};
    }
    return unicode_character(*p, 1);
}

Character next_character(ReadAs encoding, const uint8_t *p, size_t left) {
    if (encoding == ReadAs::kUtf16Be || encoding == ReadAs::kUtf16Le) {
        return utf16_character(p, left, encoding == ReadAs::kUtf16Be ? 0 : 1);
    }
    if (*p < 0x80) {
        return ascii_character(*p);
    }
    switch (encoding) {
    case ReadAs::kSjis:
        return sjis_character(p, left);
    case ReadAs::kEuc:
        return euc_character(p, left);
    case ReadAs::kUtf8:
        return utf8_character(p, left);
    case ReadAs::kLatin:
        return latin_character(p);
    case ReadAs::kSingleByte:
        return {CharClass::kOtherScript, 1, 6 * kBit};
    default:
        // 94 rows of 94 cells are 13 bits.
        if (left < 2) {
            return kCutCharacter;
        }
        return {p[1] < 0x40 ? CharClass::kIllFormed : CharClass::kOtherScript, 2, 13 * kBit};
    }
}

// How many bytes at the start may be the end of a character.
size_t longest_cut_start(ReadAs encoding) {
    switch (encoding) {
    case ReadAs::kUtf8:
        return 3;
    case ReadAs::kSjis:
    case ReadAs::kEuc:
        return 1;
    default:
        return 0;
    }
}

// Reads from `skipped` on.
void read_from(ReadAs encoding, const uint8_t *bytes, size_t length, size_t skipped, Reading &reading) {
    // The rest of a character, or its beginning, at an end.
    constexpr auto cut_cost = [](size_t bytes) { return (10 + 7 * static_cast<int32_t>(bytes)) * kBit; };
    memset(&reading, 0, sizeof reading);
    reading.cut = skipped != 0;
    reading.pieces[0] = reading.cut ? cut_cost(skipped) : 0;
    CharClass before = CharClass::kStart;
    for (size_t i = skipped; i < length;) {
        const Character character = next_character(encoding, bytes + i, length - i);
        int32_t &piece = reading.pieces[i / kPiece];
        if (character.length == 0) {
            reading.cut = true;
            piece += cut_cost(length - i);
            break;
        }
        piece += transition_cost(before, character.char_class) + character.cost;
        if (character.char_class > CharClass::kPunctuation && character.char_class != CharClass::kControl) {
            ++reading.characters;
        }
        reading.errors += character.char_class == CharClass::kIllFormed ? 1 : 0;
        reading.controls += character.char_class == CharClass::kControl ? 1 : 0;
        before = character.char_class;
        i += character.length;
    }
    for (const int32_t piece : reading.pieces) {
        reading.cost += piece;
    }
}

} // namespace

void read_as(ReadAs encoding, const uint8_t *bytes, size_t length, Reading &reading) {
    read_from(encoding, bytes, length, 0, reading);
    if (encoding == ReadAs::kUtf8) {
        size_t skipped = 0;
        while (skipped < longest_cut_start(encoding) && skipped < length && (bytes[skipped] & 0xC0) == 0x80) {
            ++skipped;
        }
        if (skipped != 0) {
            read_from(encoding, bytes, length, skipped, reading);
        }
    } else if (longest_cut_start(encoding) != 0 && length > 1) {
        Reading other;
        read_from(encoding, bytes, length, 1, other);
        if (other.cost < reading.cost) {
            reading = other;
        }
    }
}

} // namespace jkc
