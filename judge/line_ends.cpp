// Which line ends the kept input has.
#include "core/bytes.h"
#include "core/internal.h"
#include "core/unicode.h"
#include "judge/block_cursor.h"
#include "judge/pattern.h"

namespace {

using jkc::BlockCursor;

constexpr int kAllLineEnds = JKC_LINE_LF | JKC_LINE_CR | JKC_LINE_CRLF;
constexpr int kHighestCodeType = 63;

// Bytes of which line ends are made, whatever the unit.
struct LineEndBytes {
    static bool may_match(const uint8_t *p) { return jkc::any(match(p)); }
    static jkc::Bytes16 match(const uint8_t *p) {
        const jkc::Bytes16 bytes = jkc::load16(p);
        return jkc::equals(bytes, jkc::kLf) | jkc::equals(bytes, jkc::kCr);
    }
};

// What is walked in: bytes or UTF-16 units. kLookAhead bytes are kept together across block edges.
struct Byte {
    static constexpr size_t kSize = 1;
    static constexpr size_t kLookAhead = 2;
    static uint32_t unit(const uint8_t *p) { return *p; }
};
template <class Order>
struct Utf16 {
    static constexpr size_t kSize = 2;
    static constexpr size_t kLookAhead = 4;
    static uint32_t unit(const uint8_t *p) { return Order::unit(p); }
};

template <class Unit>
int line_ends_of(JkcContext *ctx, int bits) {
    BlockCursor in(ctx);
    while (bits != kAllLineEnds) {
        if (in.left() > Unit::kLookAhead) {
            // The last bytes are left to a closer look, which carries them into the next block.
            const uint8_t *found = jkc::find_pattern<LineEndBytes>(in.p, in.end - (Unit::kLookAhead - 1));
            in.p += static_cast<size_t>(found - in.p) / Unit::kSize * Unit::kSize;
        }
        in.ensure(Unit::kLookAhead);
        if (in.left() < Unit::kSize) {
            break;
        }
        const uint32_t unit = Unit::unit(in.p);
        in.p += Unit::kSize;
        if (unit == jkc::kLf) {
            bits |= JKC_LINE_LF;
        } else if (unit == jkc::kCr) {
            if (in.left() >= Unit::kSize && Unit::unit(in.p) == jkc::kLf) {
                in.p += Unit::kSize;
                bits |= JKC_LINE_CRLF;
            } else {
                bits |= JKC_LINE_CR;
            }
        }
    }
    return bits;
}

} // namespace

int _check_ln(JkcContext *ctx, int bits, int code_type) {
    if (code_type > kHighestCodeType) {
        return JKC_ECTYPE;
    }
    switch (code_type) {
    case JKC_TYPE_UTF16BE:
        return line_ends_of<Utf16<jkc::BigEndian>>(ctx, bits);
    case JKC_TYPE_UTF16LE:
        return line_ends_of<Utf16<jkc::LittleEndian>>(ctx, bits);
    default:
        // UTF-16 behind a mark is walked by bytes too: callers know its CR LF as "LF and CR".
        return line_ends_of<Byte>(ctx, bits);
    }
}
