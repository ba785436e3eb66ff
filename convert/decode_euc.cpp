// The decoder of EUC-JP, in the variant whose tables the context has selected.
#include <type_traits>

#include "convert/legacy_decoder.h"

namespace jkc {

namespace {

constexpr int64_t kThreeByteUnmappable = kSs3Prefix; // the record gets a three-byte code whole

constexpr size_t length_at(uint8_t b) { return b == kSs3 ? 3 : b == kSs2 || b >= 0xA1 ? 2 : 1; }

template <class Encoder>
class EucDecoder : public DecoderBase {
public:
    static constexpr size_t kLookAhead = Encoder::kIsUnicode ? 4 : 3;
    static constexpr size_t kLongestStep = 3;

    explicit EucDecoder(JkcContext *ctx)
        : ctx_(*ctx), table_(ctx->euc_src_table), table_8f_(ctx->euc_src_table_8f), count_8f_(ctx->euc_src_count_8f),
          text_(*ctx), suppress_(ctx->suppress != 0) {}

    bool fast(const uint8_t *&p, uint8_t *&o, Encoder &e, size_t &steps) {
        const uint8_t b = *p;
        if (is_ascii(b)) {
            text_.take(p, o, e, steps);
        } else if (b >= 0xA1) {
            return take_two_byte_run(p, o, e, steps);
        } else if (b == kSs2 && is_sjis_katakana(p[1])) {
            uint8_t *written = katakana(p, o, e);
            if (written == nullptr) [[unlikely]] {
                return false;
            }
            o = written;
            p += 2;
        } else if (b == kSs3) {
            uint8_t *written = put_found(o, e, three_byte(p));
            if (written == nullptr) [[unlikely]] {
                return false;
            }
            o = written;
            p += 3;
        } else {
            return false;
        }
        return true;
    }

    Flow step(Input &in, const Output & /*out*/, uint8_t *&o, Encoder &e) {
        return take_one_character(*this, text_, length_at(*in.p), in, o, e);
    }

    // The character at p, which is not ASCII.
    void take(const uint8_t *&p, uint8_t *&o, Encoder &e) {
        const size_t length = length_at(*p);
        if (length == 1) {
            o = e.ascii(o, *p); // C1 bytes stay as they are, also in UTF-8, which is ill-formed then
        } else if (length == 3) {
            const uint32_t code = two_byte_code(p[1], p[2]);
            o = write_character(ctx_, o, e, three_byte(p), {code, kThreeByteUnmappable | code, p}, suppress_);
        } else if (kIsJis && *p == kSs2) { // JIS has the same byte: it is not looked up
            o = katakana(p, o, e);
        } else {
            const uint32_t code = two_byte_code(p[0], p[1]);
            o = write_character(ctx_, o, e, table_[code], {code, code, p}, suppress_);
        }
        p += length;
    }

    // --- For told_step.h. ---

    Sequence look(const uint8_t *p, size_t left, const Losses &losses) const {
        return look_at_euc(p, left, ctx_, losses.knows_all_codes());
    }
    static size_t classic_length(const uint8_t *p, size_t left) { return std::min(length_at(*p), left); }
    static uint8_t *put_character(uint8_t *o, Encoder &e, uint32_t c) { return put_character_of_any_width(o, e, c); }

private:
    static constexpr bool kIsJis = std::is_same_v<Encoder, JisEncoder>;

    // Takes the two-byte character at p and those behind it. Returns whether it took any.
    bool take_two_byte_run(const uint8_t *&p, uint8_t *&o, Encoder &e, size_t &steps) {
        const uint8_t *const begin = p;
        Encoder local = e; // a copy that no store into the output can alias
        for (;;) {
            uint8_t *written = put_found(o, local, table_[two_byte_code(p[0], p[1])]);
            if (written == nullptr) [[unlikely]] {
                steps += p != begin ? 1 : 0; // the caller counts one
                break;
            }
            o = written;
            p += 2;
            if (steps == 1 || *p < 0xA1) {
                break;
            }
            --steps;
        }
        e = local;
        return p != begin;
    }

    // Behind SS2.
    uint8_t *katakana(const uint8_t *p, uint8_t *o, Encoder &e) const {
        if constexpr (kIsJis) {
            return e.katakana(o, p[1]);
        } else {
            return put_found(o, e, table_[two_byte_code(p[0], p[1])]);
        }
    }
    // Behind SS3; 0 for a code without a character.
    uint32_t three_byte(const uint8_t *p) const {
        const uint32_t code = two_byte_code(p[1], p[2]);
        return code < count_8f_ ? table_8f_[code] : 0;
    }

    JkcContext &ctx_;
    const uint16_t *table_;
    const uint16_t *table_8f_;
    uint64_t count_8f_;
    AsciiText<Bytes> text_;
    bool suppress_;
};

template <class Encoder>
constexpr MakeConversion *euc_to = make_conversion<EucDecoder<Encoder>, Encoder>;

} // namespace

} // namespace jkc

JKC_CONVERTERS_FROM_euc(JKC_DEFINE_MAKER, JKC_DEFINE_MAKER)
