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
            o = katakana(p, o, e);
            ++p;
        } else {
            const uint32_t code = two_byte_code(p[0], p[1]);
            o = write_character(ctx_, o, e, table_[code], {code, code, p}, suppress_);
            p += 2;
        }
        return true;
    }

    Flow step(Input &in, const Output & /*out*/, uint8_t *&o, Encoder &e) {
        return take_last_character(*this, text_, is_sjis_katakana(*in.p) ? 1 : 2, in, o, e);
    }

private:
    uint8_t *katakana(const uint8_t *p, uint8_t *o, Encoder &e) {
        if constexpr (Encoder::kIsUnicode) {
            uint32_t c = table_[*p];
            if (c == 0) [[unlikely]] {
                c = replacement_for(ctx_, {*p, *p, p}); // `suppress` does not apply
            }
            return e.put(o, c);
        } else {
            return e.katakana(o, *p);
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
