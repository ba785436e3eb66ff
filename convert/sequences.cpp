#include "convert/sequences.h"

#include <algorithm>

#include "core/jis_escape.h"
#include "core/unicode.h"
#include "tables/other_codes.h"

namespace jkc {

namespace {

constexpr bool is_sjis_lead(uint8_t b) { return (b >= 0x81 && b <= 0x9F) || (b >= 0xE0 && b <= 0xFC); }
constexpr bool is_sjis_trail(uint8_t b) { return b >= 0x40 && b <= 0xFC && b != 0x7F; }
constexpr bool is_euc_byte(uint8_t b) { return b >= 0xA1 && b <= 0xFE; }
constexpr bool is_jis_byte(uint8_t b) { return b >= 0x21 && b <= 0x7E; }

// A code of `length` bytes for which the table has `c`, and another table `other`.
Sequence found(size_t length, uint32_t c, uint32_t other) {
    if (c != 0) {
        return character(length, c);
    }
    if (other != 0) {
        return {Sequence::kToldOnly, static_cast<uint8_t>(length), other};
    }
    return {Sequence::kUnmappable, static_cast<uint8_t>(length), kNoCharacter};
}

// How many bytes at p continue a code whose trail bytes follow its first byte.
template <class IsTrail>
size_t trails(const uint8_t *p, size_t left, size_t wanted, IsTrail is_trail_byte) {
    size_t count = 0;
    while (count < wanted && count + 1 < left && is_trail_byte(p[1 + count])) {
        ++count;
    }
    return count;
}

// A code of which only the first `seen` bytes are well-formed.
Sequence broken(size_t seen, size_t left) { return seen == left ? truncated(seen) : ill_formed(seen); }

} // namespace

Sequence look_at_sjis(const uint8_t *p, size_t left, const JkcContext &ctx, bool all_codes) {
    if (is_ascii(*p)) {
        return plain(1);
    }
    if (is_sjis_katakana(*p)) {
        return character(1, ctx.sjis_src_table[*p]);
    }
    if (!is_sjis_lead(*p)) {
        return ill_formed(1);
    }
    if (left < 2 || !is_sjis_trail(p[1])) {
        return broken(1, left);
    }
    const uint32_t code = two_byte_code(p[0], p[1]);
    return found(2, ctx.sjis_src_table[code], all_codes ? other_sjis_code(code) : 0);
}

Sequence look_at_euc(const uint8_t *p, size_t left, const JkcContext &ctx, bool all_codes) {
    if (is_ascii(*p)) {
        return plain(1);
    }
    if (*p == kSs2) {
        const bool katakana = left > 1 && is_sjis_katakana(p[1]);
        return katakana ? character(2, half_width_katakana(p[1] & 0x7F)) : broken(1, left);
    }
    if (*p == kSs3) {
        const size_t seen = trails(p, left, 2, is_euc_byte);
        if (seen < 2) {
            return broken(1 + seen, left);
        }
        const uint32_t code = two_byte_code(p[1], p[2]);
        const bool is_ms = ctx.euc_src_table_8f == _euc2unibems_table8f;
        return found(3, code < ctx.euc_src_count_8f ? ctx.euc_src_table_8f[code] : 0,
                     all_codes && is_ms ? other_euc_ms_code(code) : 0);
    }
    if (!is_euc_byte(*p)) {
        return ill_formed(1);
    }
    if (left < 2 || !is_euc_byte(p[1])) {
        return broken(1, left);
    }
    const uint32_t code = two_byte_code(p[0], p[1]);
    // The variants that have row 13 at all.
    const bool has_row_13 = ctx.euc_src_table == _euc2unibe51932_table00 || ctx.euc_src_table == _euc2unibems_table00;
    const bool has_row_92 = ctx.euc_src_table == _euc2unibe51932_table00;
    const bool knows = all_codes && (code < 0xAEA1 ? has_row_13 : has_row_92);
    return found(2, ctx.euc_src_table[code], knows ? other_jis_code(code & 0x7F7F) : 0);
}

// The longest beginning of a character is one ill-formed sequence, as Unicode recommends.
Sequence look_at_utf8(const uint8_t *p, size_t left) {
    const uint8_t lead = p[0];
    if (is_ascii(lead)) {
        return plain(1);
    }
    if (lead < 0xC2 || lead > 0xF4) {
        return ill_formed(1);
    }
    const uint8_t lowest = lead == 0xE0 ? 0xA0 : lead == 0xF0 ? 0x90 : 0x80;
    const uint8_t highest = lead == 0xED ? 0x9F : lead == 0xF4 ? 0x8F : 0xBF;
    if (left > 1 && (p[1] < lowest || p[1] > highest)) {
        return ill_formed(1);
    }
    const size_t length = utf8_length(lead);
    const size_t seen = 1 + trails(p, left, length - 1, is_trail);
    if (seen < length) {
        return broken(seen, left);
    }
    return character(length, length == 2   ? utf8_code_point(p[0], p[1])
                             : length == 3 ? utf8_code_point(p[0], p[1], p[2])
                                           : utf8_code_point(p[0], p[1], p[2], p[3]));
}

bool JisState::is_two_byte() const { return set >= kJisX0208; }

namespace {

Sequence look_at_escape(const uint8_t *p, size_t left) {
    const SeenEscape seen = read_escape(p, left);
    switch (seen.kind) {
    case SeenEscape::kKnown:
        return plain(seen.length);
    case SeenEscape::kUnknown:
        return ill_formed(seen.length);
    default:
        return left < 2 || p[1] == '$' || p[1] == '(' ? truncated(left) : ill_formed(1);
    }
}

} // namespace

Sequence look_at_jis(const uint8_t *p, size_t left, JisState state) {
    const uint8_t b = *p;
    if (b == kEsc) {
        return look_at_escape(p, left);
    }
    const bool is_shift = b == kSo || b == kSi;
    if (state.set == kAscii && (is_shift ? !state.shifted_out || b == kSi : is_ascii(b) && !state.shifted_out)) {
        return plain(1);
    }
    if (!is_ascii(b) || is_shift) {
        return ill_formed(1);
    }
    if (!is_jis_byte(b)) {
        return {Sequence::kAscii, 1, b};
    }
    if (!state.is_two_byte()) {
        return is_katakana_code(b) ? character(1, half_width_katakana(b)) : ill_formed(1);
    }
    return left > 1 && is_jis_byte(p[1]) ? character(2, 0) : broken(1, left);
}

} // namespace jkc
