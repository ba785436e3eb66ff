#include "judge/input/line_ends.h"

#include "core/code_types.h"
#include "judge/input/block_cursor.h"

namespace jkc {

namespace {

// UTF-16 behind a BOM is looked at by bytes: callers know its CR LF as "LF and CR".
Family units_of(int code_type) { return has_bom(code_type) ? Family::kNone : family_of(code_type); }

// The end of a block but for its last unit, which the next block goes on with. A CR LF stays whole. Copies that follow
// rely on it: to them, a CR at a block's end is a line end of its own.
template <class Unit>
const uint8_t *end_of_whole_line_ends(const uint8_t *p, const uint8_t *end) {
    end -= (end - p) % Unit::kSize;
    const bool pair =
        end - p >= 2 * Unit::kSize && Unit::unit(end - 2 * Unit::kSize) == kCr && Unit::unit(end - Unit::kSize) == kLf;
    return pair || p == end ? end : end - Unit::kSize;
}

template <class Unit>
int line_ends_of_blocks(JkcContext *ctx, int bits) {
    LineEndsBy<Unit> ends(bits);
    for (BlockCursor in(ctx); !ends.has_all(); in.carry_over()) {
        const uint8_t *end = in.is_last() ? in.end : end_of_whole_line_ends<Unit>(in.p, in.end);
        in.p += ends.take(in.p, end) - in.p;
        if (in.is_last() || ends.has_all()) {
            break;
        }
    }
    return ends.bits();
}

} // namespace

int LineEnds::of(int code_type) const {
    if (is_set(code_type)) {
        return JKC_ECTYPE;
    }
    const Family units = units_of(code_type);
    return units == Family::kUtf16Be ? big.bits() : units == Family::kUtf16Le ? little.bits() : bytes.bits();
}

} // namespace jkc

int _check_ln(JkcContext *ctx, int bits, int code_type) {
    using namespace jkc;
    if (is_set(code_type)) {
        return JKC_ECTYPE;
    }
    const Family units = units_of(code_type);
    return units == Family::kUtf16Be   ? line_ends_of_blocks<Utf16Units<BigEndian>>(ctx, bits)
           : units == Family::kUtf16Le ? line_ends_of_blocks<Utf16Units<LittleEndian>>(ctx, bits)
                                       : line_ends_of_blocks<ByteUnits>(ctx, bits);
}
