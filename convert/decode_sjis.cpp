// The decoder of Shift_JIS.
#include "convert/legacy_decoder.h"

namespace jkc {

namespace {

template <class Encoder>
class SjisDecoder : public DecoderBase {
public:
    static constexpr size_t kLookAhead = Encoder::kIsUnicode ? 4 : 2;
    static constexpr size_t kLongestStep = 2;

    explicit SjisDecoder(JkcContext *ctx)
        : ctx_(*ctx), table_(ctx->sjis_src_table), text_(*ctx), suppress_(ctx->suppress != 0) {}

    bool fast(const uint8_t *&p, uint8_t *&o, Encoder &e, size_t &steps) {
        const uint8_t b = *p;
        if (is_ascii(b)) {
            text_.take(p, o, e, steps);
        } else if (is_sjis_katakana(b)) {
            uint8_t *written = katakana(*p, o, e);
            if (written == nullptr) [[unlikely]] {
                return false;
            }
            o = written;
            ++p;
        } else {
            uint8_t *written = put_found(o, e, table_[two_byte_code(p[0], p[1])]);
            if (written == nullptr) [[unlikely]] {
                return false;
            }
            o = written;
            p += 2;
        }
        return true;
    }

    Flow step(Input &in, const Output & /*out*/, uint8_t *&o, Encoder &e) {
        return take_one_character(*this, text_, length_at(*in.p), in, o, e);
    }

    // The character at p, which is not ASCII.
    void take(const uint8_t *&p, uint8_t *&o, Encoder &e) {
        if (is_sjis_katakana(*p)) {
            uint8_t *written = katakana(*p, o, e);
            // `suppress` does not apply.
            o = written != nullptr ? written : e.put(o, replacement_for(ctx_, {*p, *p, p}));
            ++p;
        } else {
            const uint32_t code = two_byte_code(p[0], p[1]);
            o = write_character(ctx_, o, e, table_[code], {code, code, p}, suppress_);
            p += 2;
        }
    }

    // --- For told_step.h. ---

    Sequence look(const uint8_t *p, size_t left, const Losses &losses) const {
        return look_at_sjis(p, left, ctx_, losses.knows_all_codes());
    }
    static size_t classic_length(const uint8_t *p, size_t left) { return std::min(length_at(*p), left); }
    static uint8_t *put_character(uint8_t *o, Encoder &e, uint32_t c) { return put_character_of_any_width(o, e, c); }

private:
    static size_t length_at(uint8_t b) { return is_ascii(b) || is_sjis_katakana(b) ? 1 : 2; }

    // Null where a table of the caller's has no character.
    uint8_t *katakana(uint8_t b, uint8_t *o, Encoder &e) const {
        if constexpr (Encoder::kIsUnicode) {
            return table_[b] != 0 ? e.put(o, table_[b]) : nullptr;
        } else {
            return e.katakana(o, b);
        }
    }

    JkcContext &ctx_;
    const uint16_t *table_;
    AsciiText<Bytes> text_;
    bool suppress_;
};

template <class Encoder>
constexpr MakeConversion *sjis_to = make_conversion<SjisDecoder<Encoder>, Encoder>;

} // namespace

} // namespace jkc

JKC_CONVERTERS_FROM_sjis(JKC_DEFINE_MAKER, JKC_DEFINE_MAKER)
