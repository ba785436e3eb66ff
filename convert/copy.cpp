#include "convert/copy.h"

#include <type_traits>

#include "convert/ascii_text.h"
#include "convert/byte_encoder.h"
#include "convert/encode_utf16.h"
#include "convert/whole_input.h"

namespace jkc {

namespace {

// Bytes as they stand.
template <size_t kThreshold>
class RawEncoder : public ByteEncoder {
public:
    static constexpr size_t kFlushAbove = kThreshold;
    static constexpr size_t kLongestStep = 2;
};

// Any answer of the writer but 0 ends a copy at once. One code unit is enough to go on: a CR LF that is cut makes two line
// ends. Texts were always copied so.
class ByteCopy : public DecoderBase {
public:
    static constexpr size_t kLookAhead = 1;
    static constexpr size_t kLongestStep = 1;
    static constexpr bool kCountsLosses = false;
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
    static constexpr bool kCountsLosses = false;
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

// Calls make(copy, encoder) with what copies texts of the family. Bytes are handed over above kBytesFlushAbove.
template <size_t kBytesFlushAbove, class Make>
auto with_copy_of(Family family, const JkcContext *ctx, Make make) {
    switch (family) {
    case Family::kUtf16Be:
        return make(std::type_identity<UnitCopy<BigEndian>>(), Utf16Encoder<BigEndian>(ctx));
    case Family::kUtf16Le:
        return make(std::type_identity<UnitCopy<LittleEndian>>(), Utf16Encoder<LittleEndian>(ctx));
    default:
        return make(std::type_identity<ByteCopy>(), RawEncoder<kBytesFlushAbove>());
    }
}

template <size_t kBytesFlushAbove>
int32_t copy_blocks(JkcContext *ctx, Family family, Front skipped, Front written, const WorkArea &area) {
    reset_unmappable(*ctx);
    if (area.block() == nullptr) {
        return end_with(ctx, JKC_EALLOC);
    }
    BlockCursor cursor(ctx);
    if (skipped.length > 0 && cursor.left() >= skipped.length && memcmp(cursor.p, skipped.bytes, skipped.length) == 0) {
        cursor.p += skipped.length;
    }
    return with_copy_of<kBytesFlushAbove>(family, ctx, [&](auto copy, const auto &encoder) {
        ConversionOf<typename decltype(copy)::type, std::decay_t<decltype(encoder)>> conversion(ctx, area.bytes(),
                                                                                                encoder, nullptr);
        write_front(conversion, written);
        return convert_blocks(ctx, cursor, conversion);
    });
}

// Whatever is no Unicode form counts as UTF-8 where BOMs are added and removed.
Family bom_family(int32_t code_type) {
    const Family family = family_of(code_type);
    return is_unicode(family) ? family : Family::kUtf8;
}

} // namespace

void write_front(Conversion &conversion, Front front) {
    memcpy(conversion.o, front.bytes, sizeof front.bytes);
    conversion.o += front.length;
}

Front bom_of_type(int32_t code_type) { return has_bom(code_type) ? bom_of(family_of(code_type)) : kNothing; }

Front front_of_copy(int32_t code_type) {
    const Family family = family_of(code_type);
    return family == Family::kJis ? Front{{kEsc, '(', 'B'}, 3} : bom_of(family);
}

int32_t copy(JkcContext *ctx, int32_t code_type, const WorkArea &area) {
    const Family family = family_of(code_type);
    if (family == Family::kNone) {
        reset_unmappable(*ctx);
        return end_with(ctx, JKC_SUCCESS);
    }
    // The judgement has taken a BOM off.
    const Front skipped = family == Family::kJis ? front_of_copy(code_type) : kNothing;
    return copy_blocks<kCopyFlushAbove>(ctx, family, skipped, bom_of_type(code_type), area);
}

// A BOM that the input still has is skipped, so that there is never a second one.
int32_t add_bom(JkcContext *ctx, int32_t dst_type, const WorkArea &area) {
    const Family family = bom_family(dst_type);
    return copy_blocks<kBomCopyFlushAbove>(ctx, family, bom_of(family), bom_of(family), area);
}

int32_t delete_bom(JkcContext *ctx, int32_t dst_type, const WorkArea &area) {
    return copy_blocks<kBomCopyFlushAbove>(ctx, bom_family(dst_type), kNothing, kNothing, area);
}

} // namespace jkc

int32_t _jkc_copy(JkcContext *ctx, int32_t code_type) { return jkc::copy(ctx, code_type, jkc::WorkArea()); }
int32_t _add_bom(JkcContext *ctx, int32_t dst_type) { return jkc::add_bom(ctx, dst_type, jkc::WorkArea()); }
int32_t _delete_bom(JkcContext *ctx, int32_t dst_type) { return jkc::delete_bom(ctx, dst_type, jkc::WorkArea()); }
