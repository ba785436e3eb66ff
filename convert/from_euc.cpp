// Reads EUC-JP in the flavour whose tables the context has selected.
#include <type_traits>

#include "convert/last_bytes.h"
#include "convert/legacy_source.h"

namespace jkc {

namespace {

constexpr int64_t kThreeByteNoChar = 0x8F0000; // what the record adds to the last two bytes of a three-byte code

constexpr size_t length_at(uint8_t b) { return b == kSs3 ? 3 : b == kSs2 || b >= 0xA1 ? 2 : 1; }

template <class Writer>
class EucReader : public Reader {
public:
    static constexpr size_t kLookAhead = Writer::kHasMark ? 4 : 3;
    static constexpr size_t kLongestStep = 3;

    explicit EucReader(JkcContext *ctx)
        : ctx_(*ctx), table_(ctx->euc_src_table), table_8f_(ctx->euc_src_table_8f), count_8f_(ctx->euc_src_count_8f),
          text_(*ctx), suppress_(ctx->suppress != 0) {}

    bool fast(const uint8_t *&p, uint8_t *&o, Writer &w, size_t &steps) {
        const uint8_t b = *p;
        if (is_plain(b)) {
            text_.take(p, o, w, steps);
        } else if (b >= 0xA1) {
            take_two_byte_run(p, o, w, steps);
        } else if (b == kSs2) {
            o = two_byte(p, o, w);
            p += 2;
        } else if (b == kSs3) {
            const uint32_t code = two_byte_code(p[1], p[2]);
            const uint32_t c = code < count_8f_ ? table_8f_[code] : 0;
            o = write_character(ctx_, o, w, c, {code, kThreeByteNoChar | code, p}, suppress_);
            p += 3;
        } else {
            o = w.plain(o, b); // 80 to A0 stay as they are; in UTF-8 too, which has no place for them
            ++p;
        }
        return true;
    }

    Flow step(BlockCursor &in, const Output & /*out*/, uint8_t *&o, Writer &w) {
        return take_last_bytes(*this, text_, length_at(*in.p), in, o, w);
    }

private:
    // Takes the two-byte character at p, and those behind it.
    void take_two_byte_run(const uint8_t *&p, uint8_t *&o, Writer &w, size_t &steps) {
        Writer local = w; // which no store into the output can touch
        for (;; --steps) {
            o = two_byte(p, o, local);
            p += 2;
            if (steps == 1 || *p < 0xA1) {
                break;
            }
        }
        w = local;
    }

    uint8_t *two_byte(const uint8_t *p, uint8_t *o, Writer &w) {
        if constexpr (std::is_same_v<Writer, JisWriter>) {
            if (p[0] == kSs2) { // both sides have the byte: no table, whatever it is
                return w.katakana(o, p[1]);
            }
        }
        const uint32_t code = two_byte_code(p[0], p[1]);
        return write_character(ctx_, o, w, table_[code], {code, code, p}, suppress_);
    }

    JkcContext &ctx_;
    const uint16_t *table_;
    const uint16_t *table_8f_;
    uint64_t count_8f_;
    PlainText<Bytes> text_;
    bool suppress_;
};

template <class Writer>
int32_t from_euc(JkcContext *ctx, bool add_bom = false) {
    return convert<EucReader<Writer>, Writer>(ctx, add_bom);
}

} // namespace

} // namespace jkc

int32_t _eucto_jis(JkcContext *ctx) { return jkc::from_euc<jkc::JisWriter>(ctx); }
int32_t _eucto_sjis(JkcContext *ctx) { return jkc::from_euc<jkc::SjisWriter>(ctx); }
int32_t _eucto_euc(JkcContext *ctx) { return jkc::from_euc<jkc::EucWriter<jkc::Cascade::kFlavours>>(ctx); }
int32_t _eucto_unibe(JkcContext *ctx, bool add_bom) {
    return jkc::from_euc<jkc::Utf16Writer<jkc::BigEndian>>(ctx, add_bom);
}
int32_t _eucto_unile(JkcContext *ctx, bool add_bom) {
    return jkc::from_euc<jkc::Utf16Writer<jkc::LittleEndian>>(ctx, add_bom);
}
int32_t _eucto_utf8(JkcContext *ctx, bool add_bom) { return jkc::from_euc<jkc::Utf8Writer>(ctx, add_bom); }
