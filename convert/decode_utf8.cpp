// The decoder of UTF-8.
#include "convert/ascii_text.h"
#include "convert/compose.h"
#include "convert/encoders.h"

namespace jkc {

namespace {

using EucOfOneTable = EucEncoder<Cascade::kNone>;

// --- How each target encodes a character that is not ASCII; null when it is unmappable. ---

template <class Encoder>
uint8_t *put(uint8_t *o, Encoder &e, uint32_t c) {
    return e.put(o, c);
}
// In JIS a one-byte code is an ASCII byte, and a character without a designation of its own goes to JIS X 0208.
uint8_t *put(uint8_t *o, JisEncoder &e, uint32_t c) {
    const uint32_t code = e.entry(c);
    if (code < 0x100) [[unlikely]] {
        return code == 0 ? nullptr : e.ascii(o, static_cast<uint8_t>(code));
    }
    uint8_t *written = e.put(o, c);
    bool found = true;
    return written != nullptr ? written : e.put_in_jisx0208(o, c, found);
}
// Half-width katakana need no table. The overline becomes the tilde, which stands in its place in JIS X 0201.
template <class Encoder>
uint8_t *write(uint8_t *o, Encoder &e, uint32_t c) {
    if (is_half_width_katakana(c)) {
        return e.katakana(o, sjis_katakana_byte(c));
    }
    return c == kOverline ? e.ascii(o, '~') : put(o, e, c);
}

template <class Order>
uint8_t *write(uint8_t *o, Utf16Encoder<Order> &e, uint32_t c) {
    return e.put(o, c);
}
uint8_t *write(uint8_t *o, Utf8Encoder &e, uint32_t c) { return e.put(o, c); }

// --- Four-byte sequences. On the way to Shift_JIS and EUC they count as ill-formed. ---

template <class Encoder>
constexpr bool kTakesFourBytes = true;
template <>
constexpr bool kTakesFourBytes<SjisEncoder> = false;
template <>
constexpr bool kTakesFourBytes<EucOfOneTable> = false;

// --- Replacements. ---

template <class Encoder>
uint8_t *replacement(uint8_t *o, Encoder &e) {
    return e.replacement(o);
}
// Within UTF-8 the replacement is NUL and '?'. Programs that read such output know a loss by the NUL.
uint8_t *replacement(uint8_t *o, Utf8Encoder &e) { return e.ascii(e.ascii(o, 0), '?'); }

template <class Encoder>
class Utf8Decoder : public DecoderBase {
public:
    static constexpr size_t kLookAhead = 6; // a kana and its combining mark
    static constexpr size_t kLongestStep = 3;

    explicit Utf8Decoder(JkcContext *ctx)
        : ctx_(*ctx), text_(*ctx), composes_(composes(*ctx)), suppress_(ctx->suppress != 0) {}

    bool fast(const uint8_t *&p, uint8_t *&o, Encoder &e, size_t &steps) {
        if (is_ascii(p[0])) {
            text_.take(p, o, e, steps);
            return true;
        }
        if (is_three_byte(get_four_bytes(p))) [[likely]] {
            return composes_ ? take_three_byte_run<true>(p, o, e, steps) : take_three_byte_run<false>(p, o, e, steps);
        }
        if ((p[0] & 0xE0) == 0xC0 && p[0] >= kLowestLead && is_trail(p[1])) {
            const uint32_t c = utf8_code_point(p[0], p[1]);
            if ((composes_ && (class_of(c) & kCyrillicBase) != 0) || (kIsJis && c == kYenSign)) {
                return false;
            }
            uint8_t *written = put_raw(o, e, c, p, 2);
            if (written == nullptr) [[unlikely]] {
                return false;
            }
            o = written;
            p += 2;
            return true;
        }
        return false;
    }

    Flow step(Input &in, const Output &out, uint8_t *&o, Encoder &e) {
        const uint8_t *p = in.p;
        const size_t left = in.left();
        const size_t length = length_at(p, left);
        if (length == kTruncated) {
            return truncated(in, o, e);
        }
        if (length == kIllFormed) {
            if (ill_formed_ == 0) {
                ill_formed_at_ = position_of(ctx_, p);
            }
            ++ill_formed_;
            ++in.p;
            return Flow::kNext;
        }
        if (ill_formed_ > 0 && !write_ill_formed(out, o, e)) {
            return Flow::kFull;
        }
        take(p, left, length, o, e);
        in.p = p;
        return Flow::kNext;
    }

    bool resting() const { return ill_formed_ == 0; }

    // The writer wants no more: the input counts as truncated here. The status is that of the last write.
    int32_t stop(const Input &in, uint8_t *&o, Encoder &e) {
        truncated(in, o, e);
        return JKC_SUCCESS;
    }

    // --- For told_step.h. ---

    Sequence look(const uint8_t *p, size_t left, const Losses & /*losses*/) const {
        Sequence seen = look_at_utf8(p, left);
        if (seen.kind == Sequence::kCharacter && composes_ && seen.length < 4 && left >= size_t{2} * seen.length) {
            const uint32_t composed = composed_with(seen.c, p + seen.length, seen.length);
            if (composed != 0) {
                seen = jkc::character(size_t{2} * seen.length, composed);
            }
        }
        return seen;
    }
    static size_t classic_length(const uint8_t *p, size_t left) {
        const size_t length = length_at(p, left);
        return length == kTruncated ? left : std::max<size_t>(length, 1);
    }
    static uint8_t *put_character(uint8_t *o, Encoder &e, uint32_t c) {
        if constexpr (kIsJis) {
            if (c == kYenSign && e.entry(c) > 0xFF) {
                return nullptr; // a code of two bytes in a set of single ones
            }
        }
        return c > 0xFFFF ? e.put_supplementary(o, c) : write(o, e, c);
    }
    bool finish_pending(const Output &out, uint8_t *&o, Encoder &e) {
        return ill_formed_ == 0 || write_ill_formed(out, o, e);
    }

private:
    static constexpr bool kIsJis = std::is_same_v<Encoder, JisEncoder>;
    static constexpr uint8_t kLowestLead = 0xC2; // C0 and C1 would begin overlong forms of ASCII

    // Whether three bytes may not stand for it: an overlong form or a surrogate.
    static bool is_ill_formed(uint32_t c) { return c - 0x800 >= 0xD800 - 0x800 && (c < 0x800 || is_surrogate(c)); }

    // Of four bytes from the start of a character on.
    static bool is_three_byte(uint32_t bytes) { return (bytes & 0xC0C0F0) == 0x8080E0; }
    static uint32_t three_byte_code_point(uint32_t bytes) {
        return (bytes & 0x0F) << 12 | (bytes >> 2 & 0xFC0) | (bytes >> 16 & 0x3F);
    }

    // Takes the three-byte character at p and those behind it that do not compose. Returns whether it took any.
    template <bool kComposes>
    bool take_three_byte_run(const uint8_t *&p, uint8_t *&o, Encoder &e, size_t &steps) {
        const uint8_t *const begin = p;
        Encoder local = e; // a copy that no store into the output can alias
        for (uint32_t bytes = get_four_bytes(p); is_three_byte(bytes); bytes = get_four_bytes(p)) {
            const uint32_t c = three_byte_code_point(bytes);
            if (is_ill_formed(c) || (kComposes && (class_of(c) & kKanaBase) != 0)) [[unlikely]] {
                break;
            }
            uint8_t *written = put_raw(o, local, c, p, 3);
            if (written == nullptr) [[unlikely]] {
                break;
            }
            o = written;
            p += 3;
            if (--steps == 0) {
                break;
            }
        }
        e = local;
        steps += p != begin ? 1 : 0; // the caller counts one
        return p != begin;
    }

    // What length_at() returns for an ill-formed sequence.
    static constexpr size_t kIllFormed = 0;
    static constexpr size_t kTruncated = 99;
    static constexpr int64_t kIllFormedPerReplacement = 3;

    // Length of the character at p. An ill-formed sequence within the last three bytes of the input ends the conversion;
    // before them its first byte is ill-formed.
    static size_t length_at(const uint8_t *p, size_t left) {
        if (is_ascii(p[0])) {
            return 1;
        }
        if (left == 1) {
            return kTruncated;
        }
        const size_t broken = left <= 3 ? kTruncated : kIllFormed;
        if ((p[0] & 0xE0) == 0xC0) {
            return is_trail(p[1]) ? 2 : broken;
        }
        if (left < 3) {
            return kTruncated;
        }
        if ((p[0] & 0xF0) == 0xE0) {
            return is_trail(p[1]) && is_trail(p[2]) ? 3 : broken;
        }
        if constexpr (kTakesFourBytes<Encoder>) {
            if ((p[0] & 0xF8) == 0xF0 && left > 3 && is_trail(p[1]) && is_trail(p[2]) && is_trail(p[3])) {
                return 4;
            }
        }
        return broken;
    }

    // Converts the character at p, together with the combining mark behind it where the two compose.
    void take(const uint8_t *&p, size_t left, size_t length, uint8_t *&o, Encoder &e) {
        if (length == 1) {
            size_t one = 1;
            text_.take(p, o, e, one, left > 1);
            return;
        }
        if (length == 4) {
            if constexpr (kTakesFourBytes<Encoder>) {
                o = supplementary(o, e, p);
                p += 4;
            }
            return;
        }
        const uint32_t c = length == 2 ? utf8_code_point(p[0], p[1]) : utf8_code_point(p[0], p[1], p[2]);
        const uint32_t composed = composes_ && left >= 2 * length ? composed_with(c, p + length, length) : 0;
        if (composed != 0) {
            o = composed_character(o, e, composed, p);
            p += 2 * length;
        } else {
            o = character(o, e, c, p, length);
            p += length;
        }
    }

    // A base composes with a combining mark of its own length only.
    uint32_t composed_with(uint32_t base, const uint8_t *mark, size_t length) const {
        if (length == 2) {
            const bool two_bytes = (mark[0] & 0xE0) == 0xC0 && is_trail(mark[1]);
            return two_bytes ? compose(base, class_of(base), utf8_code_point(mark[0], mark[1])) : 0;
        }
        const bool three_bytes = (mark[0] & 0xF0) == 0xE0 && is_trail(mark[1]) && is_trail(mark[2]);
        return three_bytes ? compose(base, class_of(base), utf8_code_point(mark[0], mark[1], mark[2])) : 0;
    }

    uint16_t class_of(uint32_t c) const { return c < ctx_.uni_def_count ? ctx_.uni_def_table[c] : uint16_t{0}; }

    // The character of `length` bytes at p; null when it is lost.
    static uint8_t *put_raw(uint8_t *o, Encoder &e, uint32_t c, const uint8_t *p, size_t length) {
        if constexpr (std::is_same_v<Encoder, Utf8Encoder>) {
            return e.raw(o, p, length);
        } else {
            return write(o, e, c);
        }
    }

    // The same, also with a loss.
    uint8_t *character(uint8_t *o, Encoder &e, uint32_t c, const uint8_t *p, size_t length) {
        if constexpr (std::is_same_v<Encoder, Utf8Encoder>) {
            return e.raw(o, p, length); // also an overlong form or a surrogate
        } else {
            return composed_character(o, e, c, p);
        }
    }

    uint8_t *composed_character(uint8_t *o, Encoder &e, uint32_t c, const uint8_t *p) {
        uint8_t *written = write(o, e, c);
        if (written == nullptr) {
            written = e.put_lossy(o, c);
        }
        return written != nullptr ? written : write_replacement(o, e, position_of(ctx_, p), c);
    }

    uint8_t *supplementary(uint8_t *o, Encoder &e, const uint8_t *p) {
        if constexpr (std::is_same_v<Encoder, Utf8Encoder>) {
            return e.raw(o, p, 4);
        } else {
            const uint32_t c = utf8_code_point(p[0], p[1], p[2], p[3]);
            if (uint8_t *written = e.put_supplementary(o, c)) {
                return written;
            }
            return write_replacement(o, e, position_of(ctx_, p), c);
        }
    }

    // For an unmappable character or ill-formed bytes. A replacement that the table has is neither recorded nor suppressed.
    [[gnu::noinline]] uint8_t *write_replacement(uint8_t *o, Encoder &e, int64_t position, int64_t code) {
        if constexpr (!Encoder::kIsUnicode) {
            if (e.table_replacement() != 0) {
                return e.put_table_replacement(o);
            }
        }
        record_unmappable_at(ctx_, position, code);
        return suppress_ ? o : replacement(o, e);
    }

    // Replaces the pending ill-formed bytes: one replacement for every three, nothing under `suppress`. False when output
    // must be handed over in between.
    bool write_ill_formed(const Output &out, uint8_t *&o, Encoder &e) {
        while (ill_formed_ > 0 && !suppress_) {
            o = write_replacement(o, e, ill_formed_at_, kIllFormedBytes);
            const int64_t group = std::min(ill_formed_, kIllFormedPerReplacement);
            ill_formed_ -= group;
            ill_formed_at_ += group;
            if (out.full(o)) {
                return false;
            }
        }
        ill_formed_ = 0;
        return true;
    }

    // Ends the conversion at a truncated sequence: one replacement, unless under `suppress`.
    Flow truncated(const Input &in, uint8_t *&o, Encoder &e) {
        if (!suppress_) {
            o = write_replacement(o, e, ill_formed_ > 0 ? ill_formed_at_ : position_of(ctx_, in.p), kIllFormedBytes);
        }
        return end(JKC_SUCCESS);
    }

    JkcContext &ctx_;
    AsciiText<Bytes> text_;
    bool composes_;
    bool suppress_;
    int64_t ill_formed_ = 0;    // ill-formed bytes in a row, not replaced yet
    int64_t ill_formed_at_ = 0; // offset of the first of them
};

// From UTF-8 no other variant of EUC-JP is tried.
template <class Encoder>
using EncoderFromUtf8 = std::conditional_t<std::is_same_v<Encoder, encoders::euc>, EucOfOneTable, Encoder>;

template <class Encoder>
constexpr MakeConversion *utf8_to = make_conversion<Utf8Decoder<EncoderFromUtf8<Encoder>>, EncoderFromUtf8<Encoder>>;

} // namespace

} // namespace jkc

JKC_CONVERTERS_FROM_utf8(JKC_DEFINE_MAKER, JKC_DEFINE_MAKER)
