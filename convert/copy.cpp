// Copies text within one encoding: only line ends and byte-order marks change.
#include "convert/byte_writer.h"
#include "convert/loop.h"
#include "convert/plain_text.h"
#include "convert/to_utf16.h"

namespace jkc {

namespace {

// Bytes as they stand.
template <size_t kThreshold>
class RawWriter : public ByteWriter {
public:
    static constexpr size_t kFlushAbove = kThreshold;
    static constexpr size_t kLongestStep = 2;
};

// A copy looks at one byte or unit at a time: a CR at a block's end is a line end of its own, whatever follows. And it
// knows no end but that of the input: any answer of the writer but 0 ends it at once.
class ByteCopy : public Reader {
public:
    static constexpr size_t kLookAhead = 1;
    static constexpr size_t kLongestStep = 1;
    static constexpr bool kClosesAfterEnd = false;

    explicit ByteCopy(const JkcContext *ctx) : text_(*ctx) {}

    template <class Writer>
    bool fast(const uint8_t *&p, uint8_t *&o, Writer &w, size_t &steps) {
        if (steps < 2) {
            return false;
        }
        text_.take(p, o, w, steps);
        return true;
    }

    template <class Writer>
    Flow step(BlockCursor &in, const Output & /*out*/, uint8_t *&o, Writer &w) {
        const uint8_t *p = in.p;
        size_t one = 1;
        text_.take(p, o, w, one, in.left() > 1);
        in.p += p - in.p;
        return Flow::kNext;
    }

private:
    PlainText<RawBytes> text_;
};

template <class Order>
class UnitCopy : public Reader {
public:
    static constexpr size_t kLookAhead = 2;
    static constexpr size_t kLongestStep = 2;
    static constexpr bool kClosesAfterEnd = false;

    explicit UnitCopy(const JkcContext *ctx)
        : line_type_(*ctx), keeps_line_ends_((ctx->mode & JKC_MODE_LINE_TYPE) == JKC_LINE_KEEP) {}

    template <class Writer>
    bool fast(const uint8_t *&p, uint8_t *&o, Writer &w, size_t &steps) {
        for (; steps > kUnits; steps -= kUnits) {
            const Units8 units = load8<Order>(p);
            if (!keeps_line_ends_ && any_unit(units_equal(units, kLf) | units_equal(units, kCr))) {
                break;
            }
            o = w.units(o, units);
            p += kWide;
        }
        const uint32_t unit = Order::unit(p);
        if (unit == kCr) {
            return false; // may take two units
        }
        o = unit == kLf ? w.line_end(o, line_type_.lf) : w.unit(o, unit);
        p += 2;
        return true;
    }

    template <class Writer>
    Flow step(BlockCursor &in, const Output & /*out*/, uint8_t *&o, Writer &w) {
        if (in.left() < 2) { // an odd last byte stays
            *o++ = *in.p++;
            return Flow::kNext;
        }
        const uint32_t unit = Order::unit(in.p);
        in.p += 2;
        if (unit == kCr) {
            const bool pair = in.left() >= 2 && Order::unit(in.p) == kLf;
            o = w.line_end(o, pair ? line_type_.cr_lf : line_type_.cr);
            in.p += pair ? 2 : 0;
        } else {
            o = unit == kLf ? w.line_end(o, line_type_.lf) : w.unit(o, unit);
        }
        return Flow::kNext;
    }

private:
    LineType line_type_;
    bool keeps_line_ends_;
};

constexpr uint8_t kUtf8Mark[] = {0xEF, 0xBB, 0xBF};
constexpr uint8_t kBigEndianMark[] = {0xFE, 0xFF};
constexpr uint8_t kLittleEndianMark[] = {0xFF, 0xFE};
constexpr uint8_t kEnterAscii[] = {kEsc, '(', 'B'};

// A sequence of bytes at the front of the text: skipped in the input, written to the output.
struct Front {
    const uint8_t *bytes = nullptr;
    size_t length = 0;
};
template <size_t kLength>
constexpr Front front(const uint8_t (&bytes)[kLength]) {
    return {bytes, kLength};
}
constexpr Front kNothing;

template <class Source, class Writer>
int32_t copy(JkcContext *ctx, Writer w, Front skipped, Front written) {
    reset_nochar(*ctx);
    BlockCursor in(ctx);
    if (skipped.length > 0 && in.left() >= skipped.length && memcmp(in.p, skipped.bytes, skipped.length) == 0) {
        in.p += skipped.length;
    }
    uint8_t *o = Output::begin();
    for (size_t i = 0; i < written.length; ++i) {
        *o++ = written.bytes[i];
    }
    Source r(ctx);
    return convert_blocks(ctx, in, Output(ctx, Writer::kFlushAbove), o, r, w);
}

int32_t copy_bytes(JkcContext *ctx, Front skipped = kNothing, Front written = kNothing) {
    return copy<ByteCopy>(ctx, RawWriter<8159>(), skipped, written);
}
int32_t copy_marked_bytes(JkcContext *ctx, Front skipped = kNothing, Front written = kNothing) {
    return copy<ByteCopy>(ctx, RawWriter<8187>(), skipped, written);
}
template <class Order>
int32_t copy_units(JkcContext *ctx, Front skipped = kNothing, Front written = kNothing) {
    return copy<UnitCopy<Order>>(ctx, Utf16Writer<Order>(ctx), skipped, written);
}

} // namespace

} // namespace jkc

int32_t _jkc_copy(JkcContext *ctx, int32_t code_type) {
    using namespace jkc;
    switch (code_type) {
    case JKC_TYPE_ASCII:
    case JKC_TYPE_SJIS:
    case JKC_TYPE_EUC:
    case JKC_TYPE_EUC_20932:
    case JKC_TYPE_EUC_51932:
    case JKC_TYPE_EUC_MS:
    case JKC_TYPE_UTF8:
        return copy_bytes(ctx);
    case JKC_TYPE_JIS:
    case JKC_TYPE_JIS2004:
        return copy_bytes(ctx, front(kEnterAscii)); // the text starts in ASCII anyway
    case JKC_TYPE_UTF8_BOM:
        return copy_bytes(ctx, kNothing, front(kUtf8Mark));
    case JKC_TYPE_UTF16BE:
        return copy_units<BigEndian>(ctx);
    case JKC_TYPE_UTF16BE_BOM:
        return copy_units<BigEndian>(ctx, kNothing, front(kBigEndianMark));
    case JKC_TYPE_UTF16LE:
        return copy_units<LittleEndian>(ctx);
    case JKC_TYPE_UTF16LE_BOM:
        return copy_units<LittleEndian>(ctx, kNothing, front(kLittleEndianMark));
    default:
        reset_nochar(*ctx);
        return end_with(ctx, JKC_SUCCESS);
    }
}

// A mark that the input still has is skipped, so that there is never a second one.
int32_t _add_bom(JkcContext *ctx, int32_t dst_type) {
    using namespace jkc;
    switch (dst_type) {
    case JKC_TYPE_UTF16LE:
    case JKC_TYPE_UTF16LE_BOM:
        return copy_units<LittleEndian>(ctx, front(kLittleEndianMark), front(kLittleEndianMark));
    case JKC_TYPE_UTF16BE:
    case JKC_TYPE_UTF16BE_BOM:
        return copy_units<BigEndian>(ctx, front(kBigEndianMark), front(kBigEndianMark));
    default:
        return copy_marked_bytes(ctx, front(kUtf8Mark), front(kUtf8Mark));
    }
}

int32_t _delete_bom(JkcContext *ctx, int32_t dst_type) {
    using namespace jkc;
    switch (dst_type) {
    case JKC_TYPE_UTF16LE:
    case JKC_TYPE_UTF16LE_BOM:
        return copy_units<LittleEndian>(ctx);
    case JKC_TYPE_UTF16BE:
    case JKC_TYPE_UTF16BE_BOM:
        return copy_units<BigEndian>(ctx);
    default:
        return copy_marked_bytes(ctx);
    }
}
