// The decoder of UTF-16 in either byte order.
#include "convert/ascii_text.h"
#include "convert/compose.h"
#include "convert/legacy_decoder.h"
#include "core/wide_units.h"

namespace jkc {

namespace {

// --- How each target encodes a character, ASCII included; null when it is unmappable. ---

// The overline and the yen sign become the ASCII bytes that stand in their places in JIS X 0201.
uint8_t *write(uint8_t *o, SjisEncoder &e, uint32_t c) {
    return c == kOverline ? e.ascii(o, '~') : c == kYenSign ? e.ascii(o, '\\') : e.put_mixed(o, c);
}
uint8_t *write(uint8_t *o, encoders::euc &e, uint32_t c) {
    return c == kOverline ? e.ascii(o, '~') : e.put_mixed(o, c);
}
uint8_t *write(uint8_t *o, JisEncoder &e, uint32_t c) {
    if (is_half_width_katakana(c)) {
        return e.katakana(o, sjis_katakana_byte(c));
    }
    return c == kOverline ? e.ascii(o, '~') : c == kYenSign ? e.ascii(o, '\\') : e.put_mixed(o, c);
}
template <class Encoder>
uint8_t *write(uint8_t *o, Encoder &e, uint32_t c) {
    return e.put_mixed(o, c);
}

template <class Encoder>
constexpr bool kIsUtf16 = false;
template <class Order>
constexpr bool kIsUtf16<Utf16Encoder<Order>> = true;

template <class Order, class Encoder>
class Utf16Decoder : public DecoderBase {
public:
    static constexpr size_t kLookAhead = 4;
    static constexpr size_t kLongestStep = 2;

    explicit Utf16Decoder(JkcContext *ctx)
        : ctx_(*ctx), text_(*ctx), composes_(composes(*ctx)), suppress_(ctx->suppress != 0) {}

    bool fast(const uint8_t *&p, uint8_t *&o, Encoder &e, size_t &steps) {
        if (steps < 2) {
            return false; // CR LF takes two
        }
        if (take_mixed(p, o, e, steps)) {
            return true;
        }
        uint32_t unit = Order::unit(p);
        if (unit < 0x80) {
            text_.take(p, o, e, steps);
            return true;
        }
        if (!stands_alone(unit)) [[unlikely]] {
            return false;
        }
        for (bool some = false;; some = true) {
            uint8_t *written = write(o, e, unit);
            if (written == nullptr) [[unlikely]] {
                steps += some ? 1 : 0; // the caller counts one
                return some;
            }
            o = written;
            p += 2;
            unit = Order::unit(p);
            if (steps == 1 || unit < 0x80 || !stands_alone(unit)) {
                return true;
            }
            --steps;
        }
    }

    Flow step(Input &in, const Output & /*out*/, uint8_t *&o, Encoder &e) {
        if (in.left() < 2) {
            return end(JKC_EUEXPEOD);
        }
        const bool has_next = in.left() >= 4;
        const uint32_t unit = Order::unit(in.p);
        const uint32_t next = has_next ? Order::unit(in.p + 2) : 0;
        if (unit < 0x80) {
            const uint8_t *p = in.p;
            size_t one = 1;
            text_.take(p, o, e, one, has_next);
            in.p = p;
            return Flow::kNext;
        }
        if (needs_a_partner(unit)) {
            return surrogate(in, unit, has_next, next, o, e);
        }
        const uint32_t composed = composes_ && has_next ? compose(unit, ctx_.uni_def_table[unit], next) : 0;
        o = character(o, e, composed != 0 ? composed : unit, in.p);
        in.p += composed != 0 ? 4 : 2;
        return Flow::kNext;
    }

    // --- For told_step.h. ---

    Sequence look(const uint8_t *p, size_t left, const Losses & /*losses*/) const {
        if (left < 2) {
            return truncated(left);
        }
        const uint32_t unit = Order::unit(p);
        if (is_surrogate(unit)) {
            return look_at_surrogate<Order>(p, left);
        }
        const uint32_t composed =
            composes_ && left >= 4 ? compose(unit, ctx_.uni_def_table[unit], Order::unit(p + 2)) : 0;
        return unit < 0x80 ? plain(2) : composed != 0 ? jkc::character(4, composed) : jkc::character(2, unit);
    }
    static size_t classic_length(const uint8_t * /*p*/, size_t left) { return std::min<size_t>(2, left); }
    static uint8_t *put_character(uint8_t *o, Encoder &e, uint32_t c) {
        return c > 0xFFFF ? e.put_supplementary(o, c) : Encoder::is_lossy(c) ? nullptr : write(o, e, c);
    }

private:
    // Within UTF-16 surrogates are copied one by one.
    static bool needs_a_partner(uint32_t unit) { return !kIsUtf16<Encoder> && is_high_surrogate(unit); }

    // Takes code units eight at a time, as long as each is a character and some are not ASCII. Returns whether it took
    // any.
    bool take_mixed(const uint8_t *&p, uint8_t *&o, Encoder &e, size_t &steps) {
        if (composes_ || steps <= kUnits || (!kIsUtf16<Encoder> && is_all_ascii(load8<Order>(p)))) {
            return false;
        }
        const size_t before = steps;
        Encoder local = e; // a copy that no store into the output can alias
        while (steps > kUnits) {
            const Units8 units = load8<Order>(p);
            const bool ascii = !kIsUtf16<Encoder> && is_all_ascii(units);
            if (ascii || any_unit(stops(units))) {
                break;
            }
            if constexpr (kIsUtf16<Encoder>) {
                o = e.units(o, units);
                p += kWide;
            } else {
                size_t taken = 0;
                for (; taken < kUnits; ++taken) {
                    uint8_t *written = write(o, local, Order::unit(p));
                    if (written == nullptr) [[unlikely]] {
                        break;
                    }
                    o = written;
                    p += 2;
                }
                if (taken < kUnits) [[unlikely]] {
                    steps -= taken;
                    break;
                }
            }
            steps -= kUnits;
        }
        e = local;
        if (steps == before) {
            return false;
        }
        ++steps; // the caller counts one
        return true;
    }
    static bool is_all_ascii(Units8 units) { return !any_unit(~units_between(units, 0, 0x7F)); }
    Units8 stops(Units8 units) const {
        const Units8 line_ends = text_.keeps_line_ends() ? Units8{} : units_equal(units, kLf) | units_equal(units, kCr);
        Units8 lossy = units_equal_masked<0xF800>(units, 0xD800);
        if constexpr (!Encoder::kIsUnicode && !std::is_same_v<Encoder, JisEncoder>) {
            lossy |= units_between(units, 0x80, 0x9F); // unmappable, or is_lossy()
        }
        if constexpr (std::is_same_v<Encoder, SjisEncoder>) {
            lossy |= units_equal_masked<0xFFFC>(units, 0xF8F0);
        }
        return line_ends | lossy;
    }

    // Whether the code unit is a character, and one that does not compose, of which write() tells whether it is lost.
    bool stands_alone(uint32_t unit) const {
        return !is_surrogate(unit) && !Encoder::is_lossy(unit) &&
               !(composes_ && (ctx_.uni_def_table[unit] & kAnyBase) != 0);
    }

    uint8_t *character(uint8_t *o, Encoder &e, uint32_t c, const uint8_t *p) {
        uint8_t *written = write(o, e, c);
        if (written == nullptr) {
            written = e.put_lossy(o, c);
        }
        return written != nullptr ? written : unmappable(o, e, c, p);
    }

    // A character that is unmappable in the target.
    uint8_t *unmappable(uint8_t *o, Encoder &e, uint32_t c, const uint8_t *p) {
        if constexpr (std::is_same_v<Encoder, JisEncoder>) {
            return suppress_ ? o : write_in_jisx0208(ctx_, o, e, c, c, p);
        } else {
            record_unmappable(ctx_, p, c);
            return suppress_ ? o : e.replacement(o);
        }
    }

    Flow surrogate(Input &in, uint32_t high, bool has_next, uint32_t next, uint8_t *&o, Encoder &e) {
        const bool pair = has_next && is_low_surrogate(next);
        if constexpr (std::is_same_v<Encoder, JisEncoder>) {
            uint8_t *written = pair ? e.put_supplementary(o, combine_surrogates(high, next)) : nullptr;
            in.p += written != nullptr ? 4 : 2;
            if (written != nullptr) {
                o = written;
            } else if (!suppress_) {
                // The low surrogate follows as a character of its own.
                o = write_in_jisx0208(ctx_, o, e, 0, 0, in.p - 2);
            }
            return Flow::kNext;
        } else if constexpr (Encoder::kIsUnicode) {
            if (!has_next) {
                return end(JKC_EUEXPEOD);
            }
            o = pair ? e.put_supplementary(o, combine_surrogates(high, next)) : unmappable(o, e, high, in.p);
            in.p += pair ? 4 : 2;
            return Flow::kNext;
        } else {
            // An unmappable pair gets one replacement and is recorded with the high surrogate.
            uint8_t *written = pair ? e.put_supplementary(o, combine_surrogates(high, next)) : nullptr;
            o = written != nullptr ? written : character(o, e, high, in.p);
            in.p += pair ? 4 : 2;
            return has_next ? Flow::kNext : end(JKC_EUEXPEOD);
        }
    }

    JkcContext &ctx_;
    AsciiText<Units<Order>> text_;
    bool composes_;
    bool suppress_;
};

template <class Encoder>
constexpr MakeConversion *unibe_to = make_conversion<Utf16Decoder<BigEndian, Encoder>, Encoder>;
template <class Encoder>
constexpr MakeConversion *unile_to = make_conversion<Utf16Decoder<LittleEndian, Encoder>, Encoder>;

} // namespace

} // namespace jkc

JKC_CONVERTERS_FROM_unibe(JKC_DEFINE_MAKER, JKC_DEFINE_MAKER)
    JKC_CONVERTERS_FROM_unile(JKC_DEFINE_MAKER, JKC_DEFINE_MAKER)
