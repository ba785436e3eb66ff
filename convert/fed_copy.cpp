// The copy whose losses are counted: it copies what is well-formed in runs and looks at the rest closely.
#include <type_traits>

#include "convert/ascii_text.h"
#include "convert/copy.h"
#include "convert/encoders.h"
#include "judge/scan/two_byte_run.h"
#include "judge/scan/utf8_run.h"

namespace jkc {

namespace {

// --- Where well-formed text ends, not behind `end`. `end` is a boundary between bytes only; three bytes behind it are
//     readable. ---

// Passes characters, whose length `length_at` tells, 0 where there is none, for a short while.
template <class LengthAt>
const uint8_t *pass_characters(const uint8_t *p, const uint8_t *end, LengthAt length_at) {
    const uint8_t *const until = end - p > kStride ? p + kStride : end;
    while (p < until) {
        const size_t length = length_at(p);
        if (length == 0 || length > static_cast<size_t>(end - p)) {
            break;
        }
        p += length;
    }
    return p;
}

// The text of a family: `look` looks closely, `run` passes ordinary text in wide steps.
template <class Encoder, Sequence kLook(const uint8_t *p, size_t left, const JkcContext &ctx),
          const uint8_t *kRun(const uint8_t *p, const uint8_t *end)>
class StatelessText {
public:
    using Target = Encoder;

    explicit StatelessText(const JkcContext *ctx) : ctx_(*ctx) {}

    const uint8_t *well_formed_end(const uint8_t *p, const uint8_t *end) const {
        for (;;) {
            const uint8_t *const run_end = kRun(p, end);
            const uint8_t *const next = pass_characters(run_end, end, [this](const uint8_t *at) {
                const Sequence seen = kLook(at, kLongestCharacter, ctx_);
                return is_well_formed(seen) ? size_t{seen.length} : 0;
            });
            if (next - p < kStride || next - run_end < kStride) {
                return next;
            }
            p = next;
        }
    }
    Sequence look(const uint8_t *p, size_t left) const {
        const Sequence seen = kLook(p, left, ctx_);
        return is_well_formed(seen) ? plain(seen.length) : seen;
    }

    static constexpr bool resting() { return true; }
    static uint8_t *resume(uint8_t *o) { return o; }
    static uint8_t *put_mark(uint8_t *o, Encoder &e, bool geta) { return DecoderBase::put_mark(o, e, geta); }

private:
    static constexpr size_t kLongestCharacter = 4;

    // A code without a character is well-formed.
    static bool is_well_formed(const Sequence &seen) {
        return seen.kind != Sequence::kIllFormed && seen.kind != Sequence::kTruncated;
    }

    const JkcContext &ctx_;
};

Sequence look_for_sjis(const uint8_t *p, size_t left, const JkcContext &ctx) {
    return look_at_sjis(p, left, ctx, false);
}
Sequence look_for_euc(const uint8_t *p, size_t left, const JkcContext &ctx) { return look_at_euc(p, left, ctx, false); }
Sequence look_for_utf8(const uint8_t *p, size_t left, const JkcContext & /*ctx*/) { return look_at_utf8(p, left); }

template <class Ordinary>
const uint8_t *two_byte_run_end(const uint8_t *p, const uint8_t *end) {
    typename Ordinary::Katakana unused;
    return ordinary_two_byte_run<Ordinary>(p, end, unused).end;
}
const uint8_t *utf8_run_end(const uint8_t *p, const uint8_t *end) { return ordinary_utf8_run(p, end).end; }

using SjisText = StatelessText<SjisEncoder, look_for_sjis, two_byte_run_end<OrdinarySjis>>;
using EucText = StatelessText<EucEncoder<Cascade::kNone>, look_for_euc, two_byte_run_end<OrdinaryEuc>>;
using Utf8Text = StatelessText<Utf8Encoder, look_for_utf8, utf8_run_end>;

// JIS text. A mark for a loss is in a set of its own: what stands behind it is designated anew.
class JisText {
public:
    using Target = JisEncoder;

    explicit JisText(const JkcContext * /*ctx*/) {}

    const uint8_t *well_formed_end(const uint8_t *p, const uint8_t *end) {
        for (;;) {
            const uint8_t *next = pass_set(p, end);
            if (end - next >= static_cast<ptrdiff_t>(sizeof escape_) && *next == kEsc) {
                const SeenEscape seen = read_escape(next, sizeof escape_);
                if (seen.kind == SeenEscape::kKnown) {
                    designate(next, seen);
                    next += seen.length;
                }
            }
            if (next == p) {
                return p;
            }
            p = next;
        }
    }
    Sequence look(const uint8_t *p, size_t left) {
        const Sequence seen = look_at_jis(p, left, state_);
        if (seen.kind == Sequence::kIllFormed || seen.kind == Sequence::kTruncated) {
            return seen;
        }
        if (*p == kEsc) {
            designate(p, read_escape(p, left));
        } else if (*p == kSo || *p == kSi) {
            state_.shifted_out = *p == kSo;
            is_interrupted_ = false;
        }
        return plain(seen.length);
    }

    bool resting() const { return !is_interrupted_; }
    uint8_t *resume(uint8_t *o) {
        if (is_interrupted_) {
            is_interrupted_ = false;
            if (state_.shifted_out) {
                *o++ = kSo;
            } else {
                memcpy(o, escape_, sizeof escape_);
                o += escape_length_;
            }
        }
        return o;
    }
    uint8_t *put_mark(uint8_t *o, JisEncoder &e, bool geta) {
        if (state_.shifted_out && !is_interrupted_) {
            *o++ = kSi;
        }
        JisEncoder of_mark = e; // which stands in ASCII
        if (state_.set != kAscii && !is_interrupted_) {
            of_mark.enter(o, state_.set);
            o = of_mark.enter(o, kAscii);
        }
        is_interrupted_ = state_.shifted_out || state_.set != kAscii;
        return of_mark.finish(DecoderBase::put_mark(o, of_mark, geta));
    }

private:
    // Passes text of the set that is designated.
    const uint8_t *pass_set(const uint8_t *p, const uint8_t *end) const {
        if (state_.shifted_out) {
            return p;
        }
        if (state_.set == kAscii) {
            p = skip_ascii<kEsc, kSo, kSi>(p, end);
            while (p < end && is_ascii(*p) && *p != kEsc && *p != kSo && *p != kSi) {
                ++p;
            }
            return p;
        }
        const bool is_two_byte = state_.is_two_byte();
        const uint8_t last = is_two_byte ? 0x7E : 0x5F;
        while (end - p >= static_cast<ptrdiff_t>(kWide) && !any(~between(load16(p), 0x21, last))) {
            p += kWide;
        }
        const ptrdiff_t width = is_two_byte ? 2 : 1;
        while (end - p >= width && in_range(p[0], last) && in_range(p[width - 1], last)) {
            p += width;
        }
        return p;
    }
    void designate(const uint8_t *p, const SeenEscape &seen) {
        state_ = {seen.set, false};
        memcpy(escape_, p, seen.length);
        escape_length_ = seen.length;
        is_interrupted_ = false;
    }

    static bool in_range(uint8_t b, uint8_t last) { return b >= 0x21 && b <= last; }

    JisState state_;
    bool is_interrupted_ = false; // by a mark
    uint8_t escape_[4] = {};      // the last designation
    uint8_t escape_length_ = 0;
};

// --- The copies. Any answer of the writer but 0 ends one at once. ---

struct CopyBase : DecoderBase {
    static constexpr bool kClosesAfterEnd = false;

    static size_t classic_length(const uint8_t * /*p*/, size_t /*left*/) { return 0; }
    template <class Encoder>
    static uint8_t *put_character(uint8_t * /*o*/, Encoder & /*e*/, uint32_t /*c*/) {
        return nullptr;
    }
};

template <class Text>
class FedByteCopy : public CopyBase {
public:
    static constexpr size_t kLookAhead = 4;
    static constexpr size_t kLongestStep = 1;

    explicit FedByteCopy(const JkcContext *ctx) : lines_(*ctx), text_(ctx) {}

    template <class Encoder>
    bool fast(const uint8_t *&p, uint8_t *&o, Encoder &e, size_t &steps) {
        const uint8_t *const end = text_.well_formed_end(p, p + steps);
        const auto length = static_cast<size_t>(end - p);
        if (length == 0) {
            return false;
        }
        if (lines_.keeps_line_ends()) {
            o = e.raw(o, p, length);
            p = end;
        } else {
            for (size_t left = length; p < end; --left) {
                lines_.take(p, o, e, left);
            }
        }
        steps -= length - 1;
        return true;
    }

    template <class Encoder>
    Flow step(Input &in, const Output & /*out*/, uint8_t *&o, Encoder &e) {
        const uint8_t *p = in.p;
        size_t one = 1;
        lines_.take(p, o, e, one, in.left() > 1);
        in.p = p;
        return Flow::kNext;
    }

    bool resting() const { return text_.resting(); }
    Sequence look(const uint8_t *p, size_t left, const Losses & /*losses*/) { return text_.look(p, left); }
    uint8_t *resume(uint8_t *o) { return text_.resume(o); }
    uint8_t *put_mark(uint8_t *o, typename Text::Target &e, bool geta) { return text_.put_mark(o, e, geta); }

private:
    AsciiText<RawBytes> lines_;
    Text text_;
};

template <class Order>
class FedUnitCopy : public CopyBase {
public:
    static constexpr size_t kLookAhead = 4;
    static constexpr size_t kLongestStep = 2;

    explicit FedUnitCopy(const JkcContext *ctx)
        : line_type_(*ctx), keeps_line_ends_((ctx->mode & JKC_MODE_LINE_TYPE) == JKC_LINE_KEEP) {}

    template <class Encoder>
    bool fast(const uint8_t *&p, uint8_t *&o, Encoder &e, size_t &steps) {
        for (; steps > kUnits; steps -= kUnits) {
            const Units8 units = load8<Order>(p);
            const Units8 line_ends = keeps_line_ends_ ? Units8{} : units_equal(units, kLf) | units_equal(units, kCr);
            if (any_unit(line_ends | units_equal_masked<0xF800>(units, 0xD800))) {
                break;
            }
            o = e.units(o, units);
            p += kWide;
        }
        const uint32_t unit = Order::unit(p);
        const bool pair = is_high_surrogate(unit) && is_low_surrogate(Order::unit(p + 2));
        if (unit == kCr || (is_surrogate(unit) && !(pair && steps > 1))) {
            return false; // may take two units
        }
        o = unit == kLf ? e.line_end(o, line_type_.lf) : e.unit(o, unit);
        p += 2;
        if (pair) {
            o = e.unit(o, Order::unit(p));
            p += 2;
            --steps;
        }
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

    static Sequence look(const uint8_t *p, size_t left, const Losses & /*losses*/) {
        if (left < 2) {
            return truncated(left);
        }
        const Sequence seen = is_surrogate(Order::unit(p)) ? look_at_surrogate<Order>(p, left) : plain(2);
        return seen.kind == Sequence::kCharacter ? plain(seen.length) : seen;
    }

private:
    LineType line_type_;
    bool keeps_line_ends_;
};

// An encoder whose output is handed over at another fill.
template <class Encoder, size_t kThreshold>
class CopyEncoder : public Encoder {
public:
    static constexpr size_t kFlushAbove = kThreshold;
    static constexpr size_t kLongestStep = 2;

    explicit CopyEncoder(JkcContext *ctx) : Encoder(ctx) {}
};

struct Request {
    ConversionRoom &room;
    JkcContext *ctx;
    uint8_t *area;
    Losses *losses;
};

template <class Decoder, class Encoder>
Conversion *make(const Request &request) {
    return make_conversion<Decoder, Encoder>(request.room, request.ctx, request.area, false, request.losses);
}

template <size_t kBytesFlushAbove>
Conversion *make_copy(const Request &request, Family family) {
    const auto of_bytes = [&request]<class Text>(std::type_identity<Text> /*text*/) {
        return make<FedByteCopy<Text>, CopyEncoder<typename Text::Target, kBytesFlushAbove>>(request);
    };
    switch (family) {
    case Family::kUtf16Be:
        return make<FedUnitCopy<BigEndian>, Utf16Encoder<BigEndian>>(request);
    case Family::kUtf16Le:
        return make<FedUnitCopy<LittleEndian>, Utf16Encoder<LittleEndian>>(request);
    case Family::kUtf8:
        return of_bytes(std::type_identity<Utf8Text>());
    case Family::kEuc:
        return of_bytes(std::type_identity<EucText>());
    case Family::kJis:
        return of_bytes(std::type_identity<JisText>());
    default:
        return of_bytes(std::type_identity<SjisText>());
    }
}

} // namespace

Conversion *make_fed_copy(ConversionRoom &room, JkcContext *ctx, uint8_t *area, int32_t src_type, int32_t dst_type,
                          Losses *losses) {
    const Family family = family_of(dst_type);
    const Request request{room, ctx, area, losses};
    Conversion *made = src_type == dst_type ? make_copy<kCopyFlushAbove>(request, family)
                                            : make_copy<kBomCopyFlushAbove>(request, family);
    write_front(*made, bom_of_type(dst_type));
    return made;
}

} // namespace jkc
