// Reads Shift_JIS.
#include "convert/last_bytes.h"
#include "convert/legacy_source.h"

namespace jkc {

namespace {

template <class Writer>
class SjisReader : public Reader {
public:
    static constexpr size_t kLookAhead = Writer::kHasMark ? 4 : 2;
    static constexpr size_t kLongestStep = 2;

    explicit SjisReader(JkcContext *ctx)
        : ctx_(*ctx), table_(ctx->sjis_src_table), text_(*ctx), suppress_(ctx->suppress != 0) {}

    bool fast(const uint8_t *&p, uint8_t *&o, Writer &w, size_t &steps) {
        const uint8_t b = *p;
        if (is_plain(b)) {
            text_.take(p, o, w, steps);
        } else if (is_sjis_katakana(b)) {
            o = katakana(p, o, w);
            ++p;
        } else {
            const uint32_t code = two_byte_code(p[0], p[1]);
            o = write_character(ctx_, o, w, table_[code], {code, code, p}, suppress_);
            p += 2;
        }
        return true;
    }

    Flow step(BlockCursor &in, const Output & /*out*/, uint8_t *&o, Writer &w) {
        return take_last_bytes(*this, text_, is_sjis_katakana(*in.p) ? 1 : 2, in, o, w);
    }

private:
    uint8_t *katakana(const uint8_t *p, uint8_t *o, Writer &w) {
        if constexpr (Writer::kHasMark) {
            uint32_t c = table_[*p];
            if (c == 0) [[unlikely]] {
                c = stand_in(ctx_, {*p, *p, p}); // written also under `suppress`
            }
            return w.put(o, c);
        } else {
            return w.katakana(o, *p);
        }
    }

    JkcContext &ctx_;
    const uint16_t *table_;
    PlainText<Bytes> text_;
    bool suppress_;
};

template <class Writer>
int32_t from_sjis(JkcContext *ctx, bool add_bom = false) {
    return convert<SjisReader<Writer>, Writer>(ctx, add_bom);
}

} // namespace

} // namespace jkc

int32_t _sjisto_jis(JkcContext *ctx) { return jkc::from_sjis<jkc::JisWriter>(ctx); }
int32_t _sjisto_euc(JkcContext *ctx) { return jkc::from_sjis<jkc::EucWriter<jkc::Cascade::kFlavours>>(ctx); }
int32_t _sjisto_unibe(JkcContext *ctx, bool add_bom) {
    return jkc::from_sjis<jkc::Utf16Writer<jkc::BigEndian>>(ctx, add_bom);
}
int32_t _sjisto_unile(JkcContext *ctx, bool add_bom) {
    return jkc::from_sjis<jkc::Utf16Writer<jkc::LittleEndian>>(ctx, add_bom);
}
int32_t _sjisto_utf8(JkcContext *ctx, bool add_bom) { return jkc::from_sjis<jkc::Utf8Writer>(ctx, add_bom); }
