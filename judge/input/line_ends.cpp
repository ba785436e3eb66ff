// Which line ends the kept input has: asked by judge(), and by callers of _check_ln().
#include "core/bytes.h"
#include "core/code_types.h"
#include "core/wide_units.h"
#include "judge/input/block_cursor.h"

namespace {

using jkc::BlockCursor;

constexpr int kAllLineEnds = JKC_LINE_LF | JKC_LINE_CR | JKC_LINE_CRLF;

// The units that are looked at: bytes or UTF-16 code units, one by one or sixteen bytes at a time.
struct Byte {
    using Wide = jkc::Bytes16;
    static constexpr size_t kSize = 1;
    static uint32_t unit(const uint8_t *p) { return *p; }
    static Wide where(const uint8_t *p, uint8_t b) { return jkc::equals(jkc::load16(p), b); }
};
template <class Order>
struct Utf16 {
    using Wide = jkc::Units8;
    static constexpr size_t kSize = 2;
    static uint32_t unit(const uint8_t *p) { return Order::unit(p); }
    static Wide where(const uint8_t *p, uint8_t b) { return jkc::units_equal(jkc::load8<Order>(p), b); }
};

template <class Wide>
int bit_if_any(Wide found, int bit) {
    return jkc::any(reinterpret_cast<jkc::Bytes16>(found)) ? bit : 0;
}

// Looks at the units of a block but the last ones, which may form a CR LF with the next block's. Returns where these
// begin. What kind of line end a CR or LF is depends on its neighbour alone.
template <class Unit>
const uint8_t *look_at_many(const uint8_t *p, const uint8_t *end, int &bits) {
    constexpr ptrdiff_t kReach = jkc::kWide + Unit::kSize;
    if (end - p <= kReach) {
        return p;
    }
    bits |= Unit::unit(p) == jkc::kLf ? JKC_LINE_LF : 0; // the only LF with nothing in front
    typename Unit::Wide lf{};
    typename Unit::Wide cr{};
    typename Unit::Wide cr_lf{};
    for (; end - p > kReach; p += jkc::kWide) {
        const auto crs = Unit::where(p, jkc::kCr);
        const auto lfs_behind = Unit::where(p + Unit::kSize, jkc::kLf);
        lf |= lfs_behind & ~crs;
        cr |= crs & ~lfs_behind;
        cr_lf |= crs & lfs_behind;
    }
    bits |= bit_if_any(lf, JKC_LINE_LF) | bit_if_any(cr, JKC_LINE_CR) | bit_if_any(cr_lf, JKC_LINE_CRLF);
    const bool within_pair = Unit::unit(p - Unit::kSize) == jkc::kCr && Unit::unit(p) == jkc::kLf;
    return within_pair ? p + Unit::kSize : p;
}

template <class Unit>
int line_ends_of(JkcContext *ctx, int bits) {
    BlockCursor in(ctx);
    while (bits != kAllLineEnds) {
        in.p += look_at_many<Unit>(in.p, in.end, bits) - in.p;
        if (bits == kAllLineEnds) {
            break;
        }
        in.ensure(2 * Unit::kSize);
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
    if (jkc::is_set(code_type)) {
        return JKC_ECTYPE;
    }
    // UTF-16 behind a BOM is looked at by bytes: callers know its CR LF as "LF and CR".
    const jkc::Family family = jkc::has_bom(code_type) ? jkc::Family::kNone : jkc::family_of(code_type);
    return family == jkc::Family::kUtf16Be   ? line_ends_of<Utf16<jkc::BigEndian>>(ctx, bits)
           : family == jkc::Family::kUtf16Le ? line_ends_of<Utf16<jkc::LittleEndian>>(ctx, bits)
                                             : line_ends_of<Byte>(ctx, bits);
}
