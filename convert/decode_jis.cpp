// The decoder of ISO-2022-JP.
#include <type_traits>

#include "convert/ascii_text.h"
#include "convert/legacy_decoder.h"
#include "tables/other_codes.h"

namespace jkc {

namespace {

template <class Encoder>
constexpr bool kIsJis = std::is_same_v<Encoder, JisEncoder>;

// The JIS source table that the context has selected.
class JisTable {
public:
    explicit JisTable(const JkcContext &ctx) { load(ctx); }

    void load(const JkcContext &ctx) {
        const bool narrow = ctx.jis_src_table == _jis2unibe50221_table;
        table16_ = narrow ? static_cast<const uint16_t *>(ctx.jis_src_table) : nullptr;
        table32_ = narrow ? nullptr : static_cast<const uint32_t *>(ctx.jis_src_table);
        offset_ = ctx.jis_src_offset;
        count_ = ctx.jis_src_count;
    }

    // 0 for a code without a character.
    uint32_t look_up(uint32_t code) const {
        const uint64_t index = code - offset_;
        if (index >= count_) {
            return 0;
        }
        return table16_ != nullptr ? table16_[index] : table32_[index];
    }

private:
    const uint16_t *table16_ = nullptr;
    const uint32_t *table32_ = nullptr;
    uint64_t offset_ = 0;
    uint64_t count_ = 0;
};

// --- JIS to JIS. ---

// With the target tables of JIS X 0213:2004, a character that plane 1 lacks is looked up in the table of the supplementary
// characters under the same number. Existing output relies on it.
uint8_t *put_from_supplementary_table(const JkcContext &ctx, uint8_t *o, JisEncoder &e, uint32_t c) {
    if (ctx.jis_dst_table != _unibe2jis2022jp2004_table || c >= ctx.jis_dst_srg_count || e.entry(c) != 0 ||
        ctx.jis_dst_srg_table[c] == 0 || !(c < ctx.jis_dst_bits_count)) {
        return nullptr;
    }
    return e.put_code(o, ctx.jis_dst_srg_table[c], ctx.jis_dst_bits[c]);
}

uint8_t *write_jis_to_jis(JkcContext &ctx, uint8_t *o, JisEncoder &e, uint32_t c, const SourceCode &code,
                          bool suppress) {
    if (c > 0xFFFF) { // looked up as if the source code were the character; `suppress` does not apply
        return write_in_jisx0208(ctx, o, e, code.index, code.index, code.p);
    }
    if (c == 0) {
        c = code.index != kQuestionMark ? replacement_for(ctx, code) : kQuestionMark;
    }
    if (c == kQuestionMark) {
        o = e.enter(o, kJisX0208); // also when `suppress` then writes nothing
        return suppress ? o : e.replacement(o);
    }
    if (uint8_t *written = e.put(o, c)) {
        return written;
    }
    if (uint8_t *written = put_from_supplementary_table(ctx, o, e, c)) {
        return written;
    }
    return suppress ? o : write_in_jisx0208(ctx, o, e, c, c, code.p);
}

template <class Encoder>
class JisDecoder : public DecoderBase {
public:
    static constexpr size_t kLookAhead = 4; // the longest escape sequence
    static constexpr size_t kLongestStep = 2;

    explicit JisDecoder(JkcContext *ctx)
        : ctx_(*ctx), table_(*ctx), text_(*ctx), suppress_(ctx->suppress != 0), drops_lost_(drops_lost(*ctx)),
          first_table_(ctx->jis_src_table) {}

    bool fast(const uint8_t *&p, uint8_t *&o, Encoder &e, size_t &steps) {
        const uint8_t b = *p;
        if (b == kEsc) {
            return take_escape(p, steps);
        }
        if (is_two_byte()) {
            const uint32_t c = table_.look_up(two_byte_code(p[0], p[1]));
            uint8_t *written = kIsJis<Encoder> && c > 0xFFFF ? nullptr : put_character(o, e, c);
            if (written == nullptr) [[unlikely]] {
                return false;
            }
            o = written;
            p += 2;
            return true;
        }
        if (set_ == kKatakana || shifted_out_ || b == kSo || b == kSi || !is_ascii(b)) {
            return false;
        }
        text_.take(p, o, e, steps);
        return true;
    }

    Flow step(Input &in, const Output & /*out*/, uint8_t *&o, Encoder &e) {
        const uint8_t b = *in.p;
        if (b == kEsc) {
            shifted_out_ = false;
            return escape(in, o, e);
        }
        if (is_two_byte()) {
            if (in.left() < 2) {
                return end(JKC_EUEXPEOD);
            }
            o = two_byte(o, e, in.p);
            in.p += 2;
            return Flow::kNext;
        }
        if (set_ == kKatakana) {
            o = is_katakana_code(b) ? katakana(o, e, b) : ill_formed(o, e);
        } else if (shifted_out_) {
            shifted_out_ = is_katakana_code(b);
            if (shifted_out_) {
                o = shifted_out_katakana(o, e, b);
            } else if (b != kSi) {
                o = ill_formed(o, e);
            }
        } else if (b == kSo) {
            shifted_out_ = true;
        } else if (!is_ascii(b)) {
            o = ill_formed(o, e);
        } else if (b != kSi) {
            const uint8_t *p = in.p;
            size_t one = 1;
            text_.take(p, o, e, one, in.left() > 1);
            in.p = p;
            return Flow::kNext;
        }
        ++in.p;
        return Flow::kNext;
    }

    // --- For told_step.h. ---

    void read_as_written() { reads_as_written_ = true; }
    // Its control functions are no characters.
    static uint32_t plain_character(const uint8_t * /*p*/) { return 0; }

    Sequence look(const uint8_t *p, size_t left, const Losses &losses) {
        Sequence seen = look_at_jis(p, left, {set_, is_out_});
        if (*p == kSo || *p == kSi || *p == kEsc) {
            is_out_ = *p == kSo ? is_out_ || seen.kind == Sequence::kPlain : is_out_ && seen.kind != Sequence::kPlain;
        }
        if (seen.kind == Sequence::kCharacter && seen.length == 2) {
            look_up(p, losses, seen);
        }
        if (!losses.is_classic()) {
            return seen;
        }
        if (seen.kind == Sequence::kAscii) {
            return is_out_ && !shifted_out_ ? plain(1) : jkc::ill_formed(1);
        }
        if (seen.kind == Sequence::kCharacter && is_out_ && !(kShiftsToKatakana && shifted_out_)) {
            seen.kind = Sequence::kUnmappable; // it becomes a letter
        }
        return seen;
    }
    bool resting() const { return !is_out_; }
    size_t classic_length(const uint8_t *p, size_t left) const {
        if (*p == kEsc) {
            const SeenEscape seen = read_escape(p, left);
            return seen.kind == SeenEscape::kTruncated ? left : size_t{seen.length};
        }
        return is_two_byte() ? std::min<size_t>(2, left) : 1;
    }
    // Null also for what is below U+0080, which no two bytes stand for: the table has the single bytes too.
    uint8_t *put_character(uint8_t *o, Encoder &e, uint32_t c) const {
        if (c > 0xFFFF) [[unlikely]] {
            return e.put_supplementary(o, c);
        }
        if (c < 0x80) [[unlikely]] {
            return nullptr;
        }
        if constexpr (!Encoder::kIsUnicode) {
            if (is_half_width_katakana(c)) [[unlikely]] {
                return e.katakana(o, sjis_katakana_byte(c));
            }
        }
        return e.put(o, c);
    }
    void put_ascii(Input &in, uint8_t *&o, Encoder &e) const {
        const uint8_t *p = in.p;
        size_t one = 1;
        text_.take(p, o, e, one, in.left() > 1);
        in.p = p;
    }

private:
    // Between SO and SI.
    static constexpr bool kShiftsToKatakana = !Encoder::kIsUnicode && !kIsJis<Encoder>;

    void look_up(const uint8_t *p, const Losses &losses, Sequence &seen) const {
        const uint32_t code = two_byte_code(p[0], p[1]);
        seen.c = table_.look_up(code);
        if (seen.c == 0 && losses.knows_all_codes() && ctx_.jis_src_table == _jis2unibe50221_table) {
            seen.c = other_jis_code(code);
            seen.kind = Sequence::kToldOnly;
        }
        if (seen.c == 0) {
            seen = {Sequence::kUnmappable, 2, kNoCharacter};
        } else if (seen.c > 0xFFFF && kIsJis<Encoder> && losses.is_classic()) {
            seen.kind = Sequence::kUnmappable;
        }
    }

    // A Unicode target leaves out a code without a character only when the option is exactly 1.
    static bool drops_lost(const JkcContext &ctx) {
        return Encoder::kIsUnicode ? ctx.suppress == 1 : ctx.suppress != 0;
    }

    bool is_two_byte() const { return set_ >= kJisX0208; }

    // --- Characters. ---

    uint8_t *two_byte(uint8_t *o, Encoder &e, const uint8_t *p) {
        const uint32_t index = two_byte_code(p[0], p[1]);
        const SourceCode code{index, index, p};
        uint32_t c = table_.look_up(index);
        if constexpr (kIsJis<Encoder>) {
            return write_jis_to_jis(ctx_, o, e, c, code, suppress_);
        } else {
            if (c == 0 && index == kQuestionMark) [[unlikely]] {
                c = kQuestionMark; // not recorded
            }
            if (c > 0xFFFF) [[unlikely]] {
                if (uint8_t *written = e.put_supplementary(o, c)) {
                    return written;
                }
                c = high_surrogate(c); // which no table has
            }
            return write_character(ctx_, o, e, c, code, drops_lost_);
        }
    }

    static uint8_t *katakana(uint8_t *o, Encoder &e, uint8_t b) {
        if constexpr (Encoder::kIsUnicode) {
            return e.put(o, half_width_katakana(b));
        } else {
            return e.katakana(o, b | 0x80);
        }
    }

    // Between SO and SI only EUC and Shift_JIS get katakana. The other targets get the bytes as ASCII letters.
    static uint8_t *shifted_out_katakana(uint8_t *o, Encoder &e, uint8_t b) {
        if constexpr (Encoder::kIsUnicode) {
            return e.put(o, b);
        } else if constexpr (kIsJis<Encoder>) {
            *o = b; // without an escape sequence
            return o + 1;
        } else {
            return e.katakana(o, b | 0x80);
        }
    }

    // An ill-formed byte is never recorded.
    uint8_t *ill_formed(uint8_t *o, Encoder &e) {
        if (suppress_) {
            return o;
        }
        return e.ascii(o, '?');
    }

    // --- Escape sequences. Unknown ones are copied as they stand, whatever the target. ---

    void copy(Input &in, uint8_t *&o, Encoder &e, size_t length) {
        o = e.raw(o, in.p, length);
        in.p += length;
    }

    void designate(JisDesignation set) {
        shifted_out_ = false;
        set_ = set;
        if (reads_as_written_ && set_ == kJisX0208 && ctx_.jis_src_table != first_table_) {
            select_source_tables(ctx_, first_table_ == _jis2unibe50221_table ? JKC_TYPE_JIS : JKC_TYPE_JIS2004);
        }
        select_plane(ctx_, set_);
        table_.load(ctx_);
    }

    // A known one, which takes the bytes of two steps.
    bool take_escape(const uint8_t *&p, size_t &steps) {
        const SeenEscape seen = read_escape(p, kLookAhead);
        if (seen.kind != SeenEscape::kKnown) {
            return false;
        }
        designate(seen.set);
        p += seen.length;
        steps -= steps > 1 ? 1 : 0;
        return true;
    }

    Flow escape(Input &in, uint8_t *&o, Encoder &e) {
        const SeenEscape seen = read_escape(in.p, in.left());
        switch (seen.kind) {
        case SeenEscape::kTruncated:
            copy(in, o, e, in.left());
            return end(JKC_SUCCESS);
        case SeenEscape::kUnknown:
            copy(in, o, e, seen.length);
            // A conversion from JIS to JIS ends at an ESC that begins no sequence.
            return kIsJis<Encoder> && seen.length == 1 ? end(JKC_SUCCESS) : Flow::kNext;
        default:
            designate(seen.set);
            in.p += seen.length;
            return Flow::kNext;
        }
    }

    JkcContext &ctx_;
    JisTable table_;
    AsciiText<Bytes, kEsc, kSo, kSi> text_;
    bool suppress_;
    bool drops_lost_;
    bool reads_as_written_ = false; // a plane of JIS X 0213 stays selected otherwise when JIS X 0208 follows
    const void *first_table_;
    JisDesignation set_ = kAscii;
    bool shifted_out_ = false;
    bool is_out_ = false; // the same for look(): what is no katakana does not end it
};

template <class Encoder>
constexpr MakeConversion *jis_to = make_conversion<JisDecoder<Encoder>, Encoder>;

} // namespace

} // namespace jkc

JKC_CONVERTERS_FROM_jis(JKC_DEFINE_MAKER, JKC_DEFINE_MAKER)
