// Reads UTF-16 in either byte order.
#include "convert/compose.h"
#include "convert/legacy_source.h"
#include "convert/loop.h"
#include "convert/plain_text.h"
#include "core/wide_units.h"

namespace jkc {

namespace {

using EucOfAnyTable = EucWriter<Cascade::kFlavours>;

// --- What each target does with a character, 7-bit or not; null when it lacks it. ---

// Where the overline and the yen sign stand in JIS X 0201, and what these bytes are in ASCII.
uint8_t *write(uint8_t *o, SjisWriter &w, uint32_t c) {
    return c == kOverline ? w.plain(o, '~') : c == kYenSign ? w.plain(o, '\\') : w.put_mixed(o, c);
}
uint8_t *write(uint8_t *o, EucOfAnyTable &w, uint32_t c) {
    return c == kOverline ? w.plain(o, '~') : w.put_mixed(o, c);
}
uint8_t *write(uint8_t *o, JisWriter &w, uint32_t c) {
    if (c >= 0xFF61 && c <= 0xFF9F) {
        return w.katakana(o, static_cast<uint8_t>(c - 0xFF40));
    }
    return c == kOverline ? w.plain(o, '~') : c == kYenSign ? w.plain(o, '\\') : w.put_mixed(o, c);
}
template <class Writer>
uint8_t *write(uint8_t *o, Writer &w, uint32_t c) {
    return w.put_mixed(o, c);
}

template <class Writer>
constexpr bool kIsUtf16 = false;
template <class Order>
constexpr bool kIsUtf16<Utf16Writer<Order>> = true;

template <class Order, class Writer>
class Utf16Reader : public Reader {
public:
    static constexpr size_t kLookAhead = 4;
    static constexpr size_t kLongestStep = 2;

    explicit Utf16Reader(JkcContext *ctx)
        : ctx_(*ctx), text_(*ctx), composes_(composes(*ctx)), suppress_(ctx->suppress != 0) {}

    bool fast(const uint8_t *&p, uint8_t *&o, Writer &w, size_t &steps) {
        if (steps < 2) {
            return false; // CR LF are two units
        }
        if (take_mixed(p, o, w, steps)) {
            return true;
        }
        uint32_t unit = Order::unit(p);
        if (unit < 0x80) {
            text_.take(p, o, w, steps);
            return true;
        }
        if (!stands_alone(unit)) [[unlikely]] {
            return false;
        }
        for (;;) {
            o = character(o, w, unit, p);
            p += 2;
            unit = Order::unit(p);
            if (steps == 1 || unit < 0x80 || !stands_alone(unit)) {
                return true;
            }
            --steps;
        }
    }

    Flow step(BlockCursor &in, const Output & /*out*/, uint8_t *&o, Writer &w) {
        if (in.left() < 2) {
            return end(JKC_EUEXPEOD);
        }
        const bool has_next = in.left() >= 4;
        const uint32_t unit = Order::unit(in.p);
        const uint32_t next = has_next ? Order::unit(in.p + 2) : 0;
        if (unit < 0x80) {
            const uint8_t *p = in.p;
            size_t one = 1;
            text_.take(p, o, w, one, has_next);
            in.p += p - in.p;
            return Flow::kNext;
        }
        if (needs_a_partner(unit)) {
            return surrogate(in, unit, has_next, next, o, w);
        }
        const uint32_t composed = composes_ && has_next ? compose(unit, ctx_.uni_def_table[unit], next) : 0;
        o = character(o, w, composed != 0 ? composed : unit, in.p);
        in.p += composed != 0 ? 4 : 2;
        return Flow::kNext;
    }

private:
    // UTF-16 output copies surrogates unit by unit.
    static bool needs_a_partner(uint32_t unit) { return !kIsUtf16<Writer> && is_high_surrogate(unit); }

    // Takes units eight at a time, as long as each is a character by itself and some of them are not 7-bit. Returns
    // whether there were any.
    bool take_mixed(const uint8_t *&p, uint8_t *&o, Writer &w, size_t &steps) {
        if (composes_) {
            return false;
        }
        const size_t before = steps;
        Writer local = w; // which no store into the output can touch
        while (steps > kUnits) {
            const Units8 units = load8<Order>(p);
            const bool plain = !kIsUtf16<Writer> && !any_unit(~units_between(units, 0, 0x7F));
            if (plain || any_unit(stops(units))) {
                break;
            }
            if constexpr (kIsUtf16<Writer>) {
                o = w.units(o, units);
                p += kWide;
            } else {
                for (size_t i = 0; i < kUnits; ++i) {
                    o = character(o, local, Order::unit(p), p);
                    p += 2;
                }
            }
            steps -= kUnits;
        }
        w = local;
        if (steps == before) {
            return false;
        }
        ++steps; // the caller counts one
        return true;
    }
    Units8 stops(Units8 units) const {
        const Units8 line_ends = text_.keeps_line_ends() ? Units8{} : units_equal(units, kLf) | units_equal(units, kCr);
        return kIsUtf16<Writer> ? line_ends : line_ends | units_equal_masked<0xFC00>(units, 0xD800);
    }

    bool stands_alone(uint32_t unit) const {
        return !needs_a_partner(unit) && !(composes_ && (ctx_.uni_def_table[unit] & kAnyBase) != 0);
    }

    uint8_t *character(uint8_t *o, Writer &w, uint32_t c, const uint8_t *p) {
        if (uint8_t *written = write(o, w, c)) [[likely]] {
            return written;
        }
        return lacking(o, w, c, p);
    }

    // A character that the target lacks.
    uint8_t *lacking(uint8_t *o, Writer &w, uint32_t c, const uint8_t *p) {
        if constexpr (std::is_same_v<Writer, JisWriter>) {
            return suppress_ ? o : write_in_jisx0208(ctx_, o, w, c, c, p);
        } else {
            record_nochar(ctx_, p, c);
            return suppress_ ? o : w.question_mark(o);
        }
    }

    Flow surrogate(BlockCursor &in, uint32_t high, bool has_next, uint32_t next, uint8_t *&o, Writer &w) {
        const bool pair = has_next && is_low_surrogate(next);
        if constexpr (std::is_same_v<Writer, JisWriter>) {
            const bool written = pair && plane2(combine_surrogates(high, next), o, w);
            if (!written && !suppress_) {
                o = write_in_jisx0208(ctx_, o, w, 0, 0, in.p); // the partner follows as a character of its own
            }
            in.p += written ? 4 : 2;
            return Flow::kNext;
        } else if constexpr (Writer::kHasMark) {
            if (!has_next) {
                return end(JKC_EUEXPEOD);
            }
            o = pair ? w.put_supplementary(o, combine_surrogates(high, next)) : lacking(o, w, high, in.p);
            in.p += pair ? 4 : 2;
            return Flow::kNext;
        } else {
            // No table has surrogates: one substitute, recorded with the high one, stands for the pair.
            o = character(o, w, high, in.p);
            in.p += pair ? 4 : 2;
            return has_next ? Flow::kNext : end(JKC_EUEXPEOD);
        }
    }

    bool plane2(uint32_t c, uint8_t *&o, JisWriter &w) const {
        const uint32_t index = c - 0x20000;
        if (c < 0x20000 || c > 0x2FFFF || index >= ctx_.jis_dst_srg_count || ctx_.jis_dst_srg_table[index] == 0) {
            return false;
        }
        o = w.put_code(o, ctx_.jis_dst_srg_table[index], ctx_.jis_dst_srg_bits[index]);
        return true;
    }

    JkcContext &ctx_;
    PlainText<Units<Order>> text_;
    bool composes_;
    bool suppress_;
};

template <class Order, class Writer>
int32_t from_utf16(JkcContext *ctx, bool add_bom = false) {
    return convert<Utf16Reader<Order, Writer>, Writer>(ctx, add_bom);
}

} // namespace

} // namespace jkc

int32_t _unibeto_jis(JkcContext *ctx) { return jkc::from_utf16<jkc::BigEndian, jkc::JisWriter>(ctx); }
int32_t _unibeto_sjis(JkcContext *ctx) { return jkc::from_utf16<jkc::BigEndian, jkc::SjisWriter>(ctx); }
int32_t _unibeto_euc(JkcContext *ctx) { return jkc::from_utf16<jkc::BigEndian, jkc::EucOfAnyTable>(ctx); }
int32_t _unibeto_unibe(JkcContext *ctx, bool add_bom) {
    return jkc::from_utf16<jkc::BigEndian, jkc::Utf16Writer<jkc::BigEndian>>(ctx, add_bom);
}
int32_t _unibeto_unile(JkcContext *ctx, bool add_bom) {
    return jkc::from_utf16<jkc::BigEndian, jkc::Utf16Writer<jkc::LittleEndian>>(ctx, add_bom);
}
int32_t _unibeto_utf8(JkcContext *ctx, bool add_bom) {
    return jkc::from_utf16<jkc::BigEndian, jkc::Utf8Writer>(ctx, add_bom);
}
int32_t _unileto_jis(JkcContext *ctx) { return jkc::from_utf16<jkc::LittleEndian, jkc::JisWriter>(ctx); }
int32_t _unileto_sjis(JkcContext *ctx) { return jkc::from_utf16<jkc::LittleEndian, jkc::SjisWriter>(ctx); }
int32_t _unileto_euc(JkcContext *ctx) { return jkc::from_utf16<jkc::LittleEndian, jkc::EucOfAnyTable>(ctx); }
int32_t _unileto_unibe(JkcContext *ctx, bool add_bom) {
    return jkc::from_utf16<jkc::LittleEndian, jkc::Utf16Writer<jkc::BigEndian>>(ctx, add_bom);
}
int32_t _unileto_unile(JkcContext *ctx, bool add_bom) {
    return jkc::from_utf16<jkc::LittleEndian, jkc::Utf16Writer<jkc::LittleEndian>>(ctx, add_bom);
}
int32_t _unileto_utf8(JkcContext *ctx, bool add_bom) {
    return jkc::from_utf16<jkc::LittleEndian, jkc::Utf8Writer>(ctx, add_bom);
}
