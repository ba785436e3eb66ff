// The escape sequences of ISO-2022-JP, and the tables that they select.
#pragma once

#include <cstddef>

#include "core/bytes.h"
#include "core/internal.h"
#include "tables/jis_designations.h"

namespace jkc {

// What an ESC begins.
struct SeenEscape {
    enum Kind : uint8_t {
        kKnown,
        kUnknown,  // `length` bytes are passed; the one behind them is text
        kTruncated // more bytes are needed to tell
    };
    Kind kind;
    uint8_t length;
    JisDesignation set; // that a reader decodes with: several sequences have the same
};

constexpr SeenEscape read_four_byte_escape(uint8_t final_byte) {
    switch (final_byte) {
    case 'D':
        return {SeenEscape::kKnown, 4, kJisX0212};
    case 'O':
    case 'Q':
        return {SeenEscape::kKnown, 4, kJisX0213Plane1Of2004};
    case 'P':
        return {SeenEscape::kKnown, 4, kJisX0213Plane2};
    default:
        return {SeenEscape::kUnknown, 3, kNoDesignation};
    }
}

constexpr SeenEscape read_escape(const uint8_t *p, size_t left) {
    if (left < 3) {
        return {SeenEscape::kTruncated, 0, kNoDesignation};
    }
    if (p[1] == '(') {
        switch (p[2]) {
        case 'I':
            return {SeenEscape::kKnown, 3, kKatakana};
        case 'B':
        case 'H':
        case 'J':
            return {SeenEscape::kKnown, 3, kAscii};
        default:
            return {SeenEscape::kUnknown, 2, kNoDesignation};
        }
    }
    if (p[1] != '$') {
        return {SeenEscape::kUnknown, 1, kNoDesignation};
    }
    switch (p[2]) {
    case '@':
    case 'B':
    case 'J':
        return {SeenEscape::kKnown, 3, kJisX0208};
    case '(':
        return left < 4 ? SeenEscape{SeenEscape::kTruncated, 0, kNoDesignation} : read_four_byte_escape(p[3]);
    default:
        return {SeenEscape::kUnknown, 2, kNoDesignation};
    }
}

// A plane of JIS X 0213 that is designated stays selected in the context; what is designated without a plane is
// decoded in it.
inline void select_plane(JkcContext &ctx, JisDesignation set) {
    if (set == kJisX0213Plane1Of2004) {
        ctx.jis_src_table = _jis2unibe2022jp2004_table01;
        ctx.jis_src_offset = 0;
        ctx.jis_src_count = _jis2unibe2022jp2004_table01_size;
    } else if (set == kJisX0213Plane2) {
        ctx.jis_src_table = _jis2unibe2022jp2004_table02;
        ctx.jis_src_offset = _jis2unibe2022jp2004_table02_offset;
        ctx.jis_src_count = _jis2unibe2022jp2004_table02_size;
    }
}

// A half-width katakana in its 7-bit form.
constexpr bool is_katakana_code(uint8_t b) { return b >= 0x21 && b <= 0x5F; }

} // namespace jkc
