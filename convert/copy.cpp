// Copies text within one encoding: only line ends and BOMs change.
#include "convert/ascii_text.h"
#include "convert/byte_encoder.h"
#include "convert/encode_utf16.h"
#include "convert/whole_input.h"
#include "core/code_types.h"
#include "core/work_area.h"

namespace jkc {

namespace {

// Bytes as they stand.
template <size_t kThreshold>
class RawEncoder : public ByteEncoder {
public:
    static constexpr size_t kFlushAbove = kThreshold;
    static constexpr size_t kLongestStep = 2;
};

// A copy looks at one code unit at a time: a CR at a block's end is a line end of its own, whatever follows. Any answer
// of the writer but 0 ends it at once.
class ByteCopy : public DecoderBase {
public:
    static constexpr size_t kLookAhead = 1;
    static constexpr size_t kLongestStep = 1;
    static constexpr bool kClosesAfterEnd = false;

    explicit ByteCopy(const JkcContext *ctx) : text_(*ctx) {}

    template <class Encoder>
    bool fast(const uint8_t *&p, uint8_t *&o, Encoder &e, size_t &steps) {
        if (steps < 2) {
            return false;
        }
        text_.take(p, o, e, steps);
        return true;
    }

    template <class Encoder>
    Flow step(Input &in, const Output & /*out*/, uint8_t *&o, Encoder &e) {
        const uint8_t *p = in.p;
        size_t one = 1;
        text_.take(p, o, e, one, in.left() > 1);
        in.p = p;
        return Flow::kNext;
    }

private:
    AsciiText<RawBytes> text_;
};

template <class Order>
class UnitCopy : public DecoderBase {
public:
    static constexpr size_t kLookAhead = 2;
    static constexpr size_t kLongestStep = 2;
    static constexpr bool kClosesAfterEnd = false;

    explicit UnitCopy(const JkcContext *ctx)
        : line_type_(*ctx), keeps_line_ends_((ctx->mode & JKC_MODE_LINE_TYPE) == JKC_LINE_KEEP) {}

    template <class Encoder>
    bool fast(const uint8_t *&p, uint8_t *&o, Encoder &e, size_t &steps) {
        for (; steps > kUnits; steps -= kUnits) {
            const Units8 units = load8<Order>(p);
            if (!keeps_line_ends_ && any_unit(units_equal(units, kLf) | units_equal(units, kCr))) {
                break;
            }
            o = e.units(o, units);
            p += kWide;
        }
        const uint32_t unit = Order::unit(p);
        if (unit == kCr) {
            return false; // may take two units
        }
        o = unit == kLf ? e.line_end(o, line_type_.lf) : e.unit(o, unit);
        p += 2;
        return true;
    }

    template <class Encoder>
    Flow step(Input &in, const Output & /*out*/, uint8_t *&o, Encoder &e) {
        if (in.left() < 2) { // a last odd byte stays
            *o++ = *in.p++;
            return Flow::kNext;
        }
        const uint32_t unit = Order::unit(in.p);
        in.p += 2;
        if (unit == kCr) {
            const bool pair = in.left() >= 2 && Order::unit(in.p) == kLf;
            o = e.line_end(o, pair ? line_type_.cr_lf : line_type_.cr);
            in.p += pair ? 2 : 0;
        } else {
            o = unit == kLf ? e.line_end(o, line_type_.lf) : e.unit(o, unit);
        }
        return Flow::kNext;
    }

private:
    LineType line_type_;
    bool keeps_line_ends_;
};

// A sequence of bytes at the front of the text: skipped in the input, written to the output.
struct Front {
    const uint8_t *bytes;
    size_t length;
};
constexpr Front kNothing{nullptr, 0};
constexpr uint8_t kEnterAscii[] = {kEsc, '(', 'B'};

template <class Copy, class Encoder>
int32_t copy(JkcContext *ctx, const Encoder &e, Front skipped, Front written) {
    reset_unmappable(*ctx);
    const WorkArea area;
    if (area.block() == nullptr) {
        return end_with(ctx, JKC_EALLOC);
    }
    BlockCursor cursor(ctx);
    if (skipped.length > 0 && cursor.left() >= skipped.length && memcmp(cursor.p, skipped.bytes, skipped.length) == 0) {
        cursor.p += skipped.length;
    }
    ConversionOf<Copy, Encoder> conversion(ctx, area.bytes(), e);
    for (size_t i = 0; i < written.length; ++i) {
        *conversion.o++ = written.bytes[i];
    }
    return convert_blocks(ctx, cursor, conversion);
}

// Copies in code units of the family; those that are bytes are handed over above kBytesFlushAbove.
template <size_t kBytesFlushAbove>
int32_t copy_within(JkcContext *ctx, Family family, Front skipped, Front written) {
    switch (family) {
    case Family::kUtf16Be:
        return copy<UnitCopy<BigEndian>>(ctx, Utf16Encoder<BigEndian>(ctx), skipped, written);
    case Family::kUtf16Le:
        return copy<UnitCopy<LittleEndian>>(ctx, Utf16Encoder<LittleEndian>(ctx), skipped, written);
    default:
        return copy<ByteCopy>(ctx, RawEncoder<kBytesFlushAbove>(), skipped, written);
    }
}

// Whatever is no Unicode form counts as UTF-8 where BOMs are added and removed.
Family bom_family(int32_t code_type) {
    const Family family = family_of(code_type);
    return is_unicode(family) ? family : Family::kUtf8;
}
constexpr size_t kBomFlushAbove = 8187;

} // namespace

} // namespace jkc

int32_t _jkc_copy(JkcContext *ctx, int32_t code_type) {
    using namespace jkc;
    constexpr size_t kFlushAbove = 8159;
    const Family family = family_of(code_type);
    if (family == Family::kNone) {
        reset_unmappable(*ctx);
        return end_with(ctx, JKC_SUCCESS);
    }
    // A designation of ASCII at the front says nothing: the text starts in ASCII anyway.
    const Front skipped = family == Family::kJis ? Front{kEnterAscii, sizeof kEnterAscii} : kNothing;
    const Bom bom = bom_of(family);
    const Front written = has_bom(code_type) ? Front{bom.bytes, bom.length} : kNothing;
    return copy_within<kFlushAbove>(ctx, family, skipped, written);
}

// A BOM that the input still has is skipped, so that there is never a second one.
int32_t _add_bom(JkcContext *ctx, int32_t dst_type) {
    const jkc::Family family = jkc::bom_family(dst_type);
    const jkc::Bom bom = jkc::bom_of(family);
    const jkc::Front front{bom.bytes, bom.length};
    return jkc::copy_within<jkc::kBomFlushAbove>(ctx, family, front, front);
}

int32_t _delete_bom(JkcContext *ctx, int32_t dst_type) {
    return jkc::copy_within<jkc::kBomFlushAbove>(ctx, jkc::bom_family(dst_type), jkc::kNothing, jkc::kNothing);
}
