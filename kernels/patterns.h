// What the scanner of an eliminated encoding must still look for. Pattern::match(at) tells at which of a vector's bytes
// the pattern begins; at(n) are the bytes n behind them, in vectors of any width: those of core/wide.h, and those of the
// kernels. Pattern::may_match(at) is a quick test whether there may be any.
#pragma once

#include "kernels/kernels.h"

namespace jkc {

// Where a four-byte sequence of UTF-8 may stand.
struct FourBytePattern {
    static constexpr Find *Kernels::*kKernel = &Kernels::find_four_bytes;
    static constexpr ptrdiff_t kLength = 4;

    template <class At>
    static auto may_match(const At &at) {
        return equals_masked<0xF8>(at(0), 0xF0);
    }
    template <class At>
    static auto match(const At &at) {
        return equals_masked<0xF8>(at(0), 0xF0) & equals_masked<0xC0>(at(1), 0x80) & equals_masked<0xC0>(at(2), 0x80) &
               equals_masked<0xC0>(at(3), 0x80);
    }
};

// Where a combining mark may stand in UTF-8: CC 86, CC 88, E3 82 99, E3 82 9A.
struct Utf8MarkPattern {
    static constexpr Find *Kernels::*kKernel = &Kernels::find_utf8_marks;

    template <class At>
    static auto may_match(const At &at) {
        const auto first = at(0);
        const auto second = at(1);
        return (equals(first, 0xCC) & equals_masked<0xF1>(second, 0x80)) | (equals(first, 0xE3) & equals(second, 0x82));
    }
    template <class At>
    static auto match(const At &at) {
        const auto first = at(0);
        const auto second = at(1);
        const auto third = at(2);
        return (equals(first, 0xCC) & (equals(second, 0x86) | equals(second, 0x88))) |
               (equals(first, 0xE3) & equals(second, 0x82) & (equals(third, 0x99) | equals(third, 0x9A)));
    }
};

// Where a character of UTF-8 may stand that tells whether a combining mark behind it is one: a two-byte one, or one of
// U+3000 to U+30FF.
struct DecisivePattern {
    static constexpr FindLast *Kernels::*kKernel = &Kernels::find_last_decisive;

    template <class At>
    static auto match(const At &at) {
        const auto first = at(0);
        const auto second = at(1);
        return (equals_masked<0xE0>(first, 0xC0) & equals_masked<0xC0>(second, 0x80)) |
               (equals(first, 0xE3) & equals_masked<0xFC>(second, 0x80));
    }
};

// Surrogate pairs of either byte order, told by the high bytes of their code units: a big-endian pair matches at its
// first byte, a little-endian one at its second.
struct PairPattern {
    static constexpr Find *Kernels::*kKernel = &Kernels::find_pairs;

    template <class At>
    static auto may_match(const At &at) {
        return match(at);
    }
    template <class At>
    static auto match(const At &at) {
        return equals_masked<0xFC>(at(0), 0xD8) & equals_masked<0xFC>(at(2), 0xDC);
    }
};

// The combining marks of UTF-16 in either byte order, where code units begin.
struct Utf16MarkPattern {
    static constexpr Find *Kernels::*kKernel = &Kernels::find_utf16_marks;

    template <class At>
    static auto may_match(const At &at) {
        const auto first = at(0);
        const auto second = at(1);
        return (equals(first, 0x30) & equals_masked<0xFC>(second, 0x98)) |
               (equals_masked<0xFC>(first, 0x98) & equals(second, 0x30)) | equals(first, 0x03);
    }
    template <class At>
    static auto match(const At &at) {
        const auto first = at(0);
        const auto second = at(1);
        return (is_mark(first, second) | is_mark(second, first)) & even_places(first);
    }
    template <class V>
    static auto is_mark(V high, V low) {
        return (equals(high, 0x03) & (equals(low, 0x06) | equals(low, 0x08))) |
               (equals(high, 0x30) & (equals(low, 0x99) | equals(low, 0x9A)));
    }
};

} // namespace jkc
