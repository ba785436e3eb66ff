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
            take_two_byte_run(p, o, e, steps);
        } else if (b == kSs2) {
            o = two_byte(p, o, e);
            p += 2;
        } else if (b == kSs3) {
            const uint32_t code = two_byte_code(p[1], p[2]);
            const uint32_t c = code < count_8f_ ? table_8f_[code] : 0;
            o = write_character(ctx_, o, e, c, {code, kThreeByteUnmappable | code, p}, suppress_);
            p += 3;
        } else {
            o = e.ascii(o, b); // C1 bytes stay as they are, also in UTF-8, which is ill-formed then
            ++p;
        }
        return true;
    }

    Flow step(Input &in, const Output & /*out*/, uint8_t *&o, Encoder &e) {
        return take_last_character(*this, text_, length_at(*in.p), in, o, e);
    }

private:
    // Takes the two-byte character at p and those behind it.
    void take_two_byte_run(const uint8_t *&p, uint8_t *&o, Encoder &e, size_t &steps) {
        Encoder local = e; // a copy that no store into the output can alias
        for (;; --steps) {
            o = two_byte(p, o, local);
            p += 2;
            if (steps == 1 || *p < 0xA1) {
                break;
            }
        }
        e = local;
    }

    uint8_t *two_byte(const uint8_t *p, uint8_t *o, Encoder &e) {
        if constexpr (std::is_same_v<Encoder, JisEncoder>) {
            if (p[0] == kSs2) { // JIS has the same byte: it is not looked up
                return e.katakana(o, p[1]);
            }
        }
        const uint32_t code = two_byte_code(p[0], p[1]);
        return write_character(ctx_, o, e, table_[code], {code, code, p}, suppress_);
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
