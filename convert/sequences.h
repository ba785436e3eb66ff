// A strict look at the next sequence of a text: what is well-formed in its encoding, and what it stands for. Cold: the
// decoders look so closely only where their fast loops stop in a text whose losses are counted.
#pragma once

#include <cstddef>
#include <cstdint>

#include "core/unicode.h"

namespace jkc {

struct Sequence {
    enum Kind : uint8_t {
        kPlain,      // nothing can be lost: any step takes it
        kCharacter,  // the character c
        kToldOnly,   // the same, but the old calls do not know the code
        kAscii,      // an ASCII byte where the old calls see none
        kIllFormed,  //
        kUnmappable, // a code without a character, or c in a place where the old calls do not take it
        kTruncated   // the text ends inside it
    };
    Kind kind;
    uint8_t length;
    uint32_t c;
};

constexpr uint32_t kNoCharacter = UINT32_MAX;

constexpr Sequence plain(size_t length) { return {Sequence::kPlain, static_cast<uint8_t>(length), kNoCharacter}; }
constexpr Sequence character(size_t length, uint32_t c) {
    return {Sequence::kCharacter, static_cast<uint8_t>(length), c};
}
constexpr Sequence ill_formed(size_t length) {
    return {Sequence::kIllFormed, static_cast<uint8_t>(length), kNoCharacter};
}
constexpr Sequence truncated(size_t length) {
    return {Sequence::kTruncated, static_cast<uint8_t>(length), kNoCharacter};
}

// At p, with at least one byte left. Less than four bytes are left at the end of the text only. With `all_codes`, a
// character is also found at those of its codes that are not written back.
Sequence look_at_sjis(const uint8_t *p, size_t left, const JkcContext &ctx, bool all_codes);
Sequence look_at_euc(const uint8_t *p, size_t left, const JkcContext &ctx, bool all_codes);
Sequence look_at_utf8(const uint8_t *p, size_t left);

// How JIS text is read at a place.
struct JisState {
    uint8_t set = 0; // a JisDesignation
    bool shifted_out = false;

    bool is_two_byte() const;
};
// A two-byte code is a character without its code point: it is left to the caller to look it up. What is kPlain may
// change the state. Control characters, the space and DEL are themselves in every set, as ISO 2022 has it.
Sequence look_at_jis(const uint8_t *p, size_t left, JisState state);

// At a surrogate; two bytes at least are left.
template <class Order>
constexpr Sequence look_at_surrogate(const uint8_t *p, size_t left) {
    const uint32_t unit = Order::unit(p);
    if (is_high_surrogate(unit) && left < 4) {
        return truncated(left);
    }
    const bool pair = is_high_surrogate(unit) && is_low_surrogate(Order::unit(p + 2));
    return pair ? character(4, combine_surrogates(unit, Order::unit(p + 2))) : ill_formed(2);
}

} // namespace jkc
