// A conversion is the same from memory, a stream and a reader, fed in pieces of any size, into buffers of any size, and
// at once in memory; and what it makes is what the code type allows.
#include "core/code_types.h"
#include "core/jis_escape.h"
#include "tests/fuzz/support.h"
#include "tests/fuzz/unicode_text.h"

namespace jkc::fuzz {
namespace {

// Takes output, and answers `answer` instead of taking the piece number `refuse_at`.
struct Writer {
    size_t refuse_at = 0; // from 1; 0: none
    int32_t answer = 0;
    Bytes output;
    size_t pieces = 0;
    uint64_t digest = 0; // of the lengths of the pieces

    static int32_t write(const uint8_t *data, uint64_t length, void *self) {
        auto *writer = static_cast<Writer *>(self);
        JKC_EXPECT(length > 0 && length <= 8193);
        if (++writer->pieces == writer->refuse_at) {
            return writer->answer;
        }
        writer->output.append(data, static_cast<size_t>(length));
        writer->digest = writer->digest * 31 + length;
        return 0;
    }
    bool operator==(const Writer &other) const {
        return output == other.output && pieces == other.pieces && digest == other.digest;
    }
};

struct Order {
    int32_t src, dst;
    JkcConverterOptions options;
    size_t refuse_at;
    int32_t answer;

    explicit Order(Choices &choices)
        : src(kCodeTypes[choices.below(kCodeTypeCount)]), dst(kCodeTypes[choices.below(kCodeTypeCount)]), options{},
          refuse_at(choices.below(16) == 0 ? 1 + choices.below(3) : 0), answer(choices.yes() ? 7 : JKC_EUEXPEOD) {
        constexpr uint32_t kLineTypes[] = {JKC_LINE_KEEP, JKC_LINE_LF, JKC_LINE_CR, JKC_LINE_CRLF};
        options.size = sizeof options;
        options.line_type = kLineTypes[choices.below(4)];
        options.compose = choices.yes() ? 1 : 0;
        options.suppress = choices.below(8) == 0 ? 1 : 0;
        options.jis_2004 = choices.below(4) == 0 ? 1 : 0;
        options.on_loss = static_cast<uint8_t>(choices.below(JKC_ON_LOSS_ESCAPE + 1));
        options.geta = choices.yes() ? 1 : 0;
        options.one_code_each = choices.yes() ? 1 : 0;
        options.places = choices.yes() ? 1 : 0;
    }
};

// Counts what it learns of, which must come in the order of the text.
struct Observer {
    uint64_t losses[JKC_LOSS_TRUNCATED + 1] = {};
    uint64_t last_offset = 0;
    uint64_t text_size = 0;

    static int32_t learn(const JkcLoss *loss, void *self) {
        auto *observer = static_cast<Observer *>(self);
        JKC_EXPECT(loss->kind >= JKC_LOSS_ILL_FORMED && loss->kind <= JKC_LOSS_TRUNCATED && loss->length > 0);
        JKC_EXPECT(loss->offset >= observer->last_offset && loss->offset + loss->length <= observer->text_size);
        ++observer->losses[loss->kind];
        observer->last_offset = loss->offset;
        return 0;
    }
    void expect(const JkcConverterLosses &told) const {
        JKC_EXPECT(told.ill_formed == losses[JKC_LOSS_ILL_FORMED]);
        JKC_EXPECT(told.unmappable == losses[JKC_LOSS_UNMAPPABLE]);
        JKC_EXPECT(told.truncated == losses[JKC_LOSS_TRUNCATED] && told.truncated <= 1);
    }
};

// --- The converter that is fed ---

struct Fed {
    int32_t status = 0;
    Writer writer;
    JkcConverterLosses losses = {};

    uint64_t lost() const { return losses.ill_formed + losses.unmappable + losses.truncated; }
    bool operator==(const Fed &other) const {
        return status == other.status && writer == other.writer && memcmp(&losses, &other.losses, sizeof losses) == 0;
    }
};

class Converter {
public:
    explicit Converter(const Order &order) {
        JKC_EXPECT(jkc_converter_create(&converter_, order.src, order.dst, &order.options) == JKC_SUCCESS);
    }
    ~Converter() { jkc_converter_release(converter_); }
    Converter(const Converter &) = delete;
    Converter &operator=(const Converter &) = delete;

    JkcConverter *get() const { return converter_; }
    void take_losses(Fed &fed) const {
        fed.losses.size = sizeof fed.losses;
        jkc_converter_losses(converter_, &fed.losses);
    }

private:
    JkcConverter *converter_ = nullptr;
};

// `next(left)` is the size of the next piece.
template <class Next>
void feed(const Order &order, const Bytes &text, Fed &fed, Next next) {
    fed.writer.refuse_at = order.refuse_at;
    fed.writer.answer = order.answer;
    const Converter converter(order);
    for (size_t at = 0; at < text.size() && fed.status == JKC_SUCCESS;) {
        const Bytes piece(text.data() + at, std::min<size_t>(next(text.size() - at), text.size() - at));
        fed.status = jkc_converter_feed(converter.get(), piece.data(), piece.size(), Writer::write, &fed.writer);
        at += piece.size();
    }
    if (fed.status == JKC_SUCCESS) {
        fed.status = jkc_converter_finish(converter.get(), Writer::write, &fed.writer);
    }
    converter.take_losses(fed);
}

void feed_whole(const Order &order, const Bytes &text, Fed &fed) {
    feed(order, text, fed, [](size_t left) { return left; });
}

// Into buffers of random sizes; there is no writer to refuse anything.
void fill_buffers(const Order &order, const Bytes &text, Choices &choices, Fed &fed) {
    const Converter converter(order);
    size_t at = 0;
    int32_t stop = JKC_STOP_INPUT;
    while (stop == JKC_STOP_INPUT || stop == JKC_STOP_OUTPUT) {
        const Bytes in(text.data() + at, std::min(choices.piece(), text.size() - at));
        Bytes out;
        out.fill('#', choices.piece());
        const uint8_t *from = in.data();
        uint8_t *to = out.data();
        size_t in_left = in.size();
        size_t out_left = out.size();
        stop = jkc_converter_run(converter.get(), &from, &in_left, &to, &out_left, at + in.size() == text.size());
        JKC_EXPECT(in_left <= in.size() && out_left <= out.size());
        at += in.size() - in_left;
        fed.writer.output.append(out.data(), out.size() - out_left);
    }
    fed.status = stop;
    converter.take_losses(fed);
}

void convert_in_memory(const Order &order, const Bytes &text, const Fed &whole) {
    uint8_t *out = nullptr;
    size_t length = 0;
    Fed fed;
    fed.losses.size = sizeof fed.losses;
    fed.status =
        jkc_convert_memory(order.src, order.dst, text.data(), text.size(), &order.options, &out, &length, &fed.losses);
    JKC_EXPECT(fed.status == whole.status && (out != nullptr) == (fed.status == JKC_SUCCESS));
    if (out != nullptr) {
        fed.writer.output.append(out, length);
        JKC_EXPECT(fed.writer.output == whole.writer.output && (out[length] | out[length + 1]) == 0);
        JKC_EXPECT(memcmp(&fed.losses, &whole.losses, sizeof whole.losses) == 0);
        JKC_EXPECT(length <= jkc_converter_bound(order.dst, text.size()));
    }
    jkc_free(out);
}

// A mark is taken off, and not put back.
bool has_any_bom(const Bytes &text) {
    for (const Family family : {Family::kUtf8, Family::kUtf16Be, Family::kUtf16Le}) {
        const Bom bom = bom_of(family);
        if (text.size() >= bom.length && memcmp(text.data(), bom.bytes, bom.length) == 0) {
            return true;
        }
    }
    return false;
}

// The bytes 80 to A0 but for 8E and 8F are no EUC: decoders of EUC take them as they are, and so does UTF-8.
bool has_no_controls(const Bytes &text) {
    return std::none_of(text.data(), text.data() + text.size(),
                        [](uint8_t byte) { return byte >= 0x80 && byte <= 0xA0 && byte != 0x8E && byte != 0x8F; });
}

// Nor is an escape sequence JIS that is not known, or cut: its bytes are taken as they are, too.
bool knows_escapes(const Bytes &text) {
    const uint8_t *const end = text.data() + text.size();
    for (const uint8_t *p = text.data(); p != end; ++p) {
        if (*p == 0x1B && read_escape(p, static_cast<size_t>(end - p)).kind != SeenEscape::kKnown) {
            return false;
        }
    }
    return true;
}

// Whether text of a code type is such, and so becomes well-formed Unicode. Text of the others does in any case.
bool is_well_formed(int32_t type, const Bytes &text) {
    switch (family_of(type)) {
    case Family::kUtf8:
        return is_utf8(text);
    case Family::kUtf16Be:
    case Family::kUtf16Le:
        return is_utf16(text, family_of(type) == Family::kUtf16Le);
    case Family::kJis:
        return knows_escapes(text);
    case Family::kEuc:
        return has_no_controls(text);
    default:
        return true;
    }
}

// The classic policy writes what is ill-formed as it is, or in ways of its own. The others write nothing that is.
void expect_well_formed(const Order &order, const Bytes &text, const Fed &whole) {
    const bool classic = order.options.on_loss == JKC_ON_LOSS_CLASSIC;
    if (!is_unicode(family_of(order.dst)) || whole.status != JKC_SUCCESS ||
        (classic && (order.options.compose != 0 || !is_well_formed(order.src, text)))) {
        return;
    }
    JKC_EXPECT(is_well_formed(order.dst, whole.writer.output));
}

// Without a loss, text in a Unicode form comes back as it was.
void come_back(Order order, const Bytes &text, const Fed &whole) {
    const bool as_it_is = order.options.line_type == JKC_LINE_KEEP && order.options.compose == 0 &&
                          order.options.one_code_each != 0 && order.options.on_loss != JKC_ON_LOSS_CLASSIC;
    const Family source = family_of(order.src);
    if (!as_it_is || !is_unicode(family_of(order.dst)) || whole.status != JKC_SUCCESS || whole.lost() > 0 ||
        !(source == Family::kSjis || is_unicode(source)) || has_bom(order.src) || has_any_bom(text)) {
        return;
    }
    std::swap(order.src, order.dst);
    Fed back;
    feed_whole(order, whole.writer.output, back);
    JKC_EXPECT(back.status == JKC_SUCCESS && back.lost() == 0 && back.writer.output == text);
}

// UTF-16 in the other byte order becomes the same; and to it, the same in the other order.
void mirror(Order order, const Bytes &text, const Fed &expected) {
    const auto mirrored = [](int32_t type) {
        return type == JKC_TYPE_UTF16BE       ? JKC_TYPE_UTF16LE
               : type == JKC_TYPE_UTF16BE_BOM ? JKC_TYPE_UTF16LE_BOM
               : type == JKC_TYPE_UTF16LE     ? JKC_TYPE_UTF16BE
               : type == JKC_TYPE_UTF16LE_BOM ? JKC_TYPE_UTF16BE_BOM
                                              : static_cast<JkcCodeType>(type);
    };
    const bool from = mirrored(order.src) != order.src;
    const bool to = mirrored(order.dst) != order.dst;
    if ((!from && !to) || (to && !is_well_formed(order.src, text)) || (from && text.size() % 2 != 0) ||
        order.refuse_at != 0) {
        return;
    }
    order.src = mirrored(order.src);
    order.dst = mirrored(order.dst);
    const Bytes swapped(text.data(), text.size());
    if (from) {
        swap_pairs(swapped);
    }
    Fed fed;
    feed_whole(order, swapped, fed);
    if (to) {
        swap_pairs(fed.writer.output);
    }
    JKC_EXPECT(fed.status == expected.status && fed.writer.output == expected.writer.output);
}

void run_fed(Order order, Choices &choices, const Bytes &text) {
    Fed whole;
    Observer observer;
    observer.text_size = text.size();
    order.options.observer = Observer::learn;
    order.options.observer_data = &observer;
    feed_whole(order, text, whole);
    observer.expect(whole.losses);
    order.options.observer = nullptr;
    JKC_EXPECT((whole.status == JKC_ELOSS) == (order.options.on_loss == JKC_ON_LOSS_STOP && whole.lost() > 0) ||
               order.refuse_at != 0);
    Fed cut;
    feed(order, text, cut, [&](size_t) { return choices.piece(); });
    JKC_EXPECT(cut == whole);
    if (order.refuse_at == 0) {
        Fed filled;
        fill_buffers(order, text, choices, filled);
        JKC_EXPECT(filled.status == whole.status && filled.writer.output == whole.writer.output);
        JKC_EXPECT(memcmp(&filled.losses, &whole.losses, sizeof whole.losses) == 0);
        convert_in_memory(order, text, whole);
        expect_well_formed(order, text, whole);
        come_back(order, text, whole);
    }
    mirror(order, text, whole);
}

// --- The whole calls, which judge the text ---

struct Called {
    int32_t status = 0, told = -100, sts = 0;
    uint32_t nochar_count = 0;
    int64_t nochar[4] = {};
    bool jis_2004 = false, has_marks = false;
    Writer writer;
    JkcContext *ctx = nullptr;

    bool operator==(const Called &other) const {
        return status == other.status && told == other.told && sts == other.sts && nochar_count == other.nochar_count &&
               memcmp(nochar, other.nochar, sizeof nochar) == 0 && writer == other.writer;
    }

    static int32_t observe(int32_t code_type, void *self) {
        auto *called = static_cast<Called *>(self);
        called->told = code_type;
        called->jis_2004 = called->ctx->srg_exists != 0;
        called->has_marks = called->ctx->utfmac_exists != 0;
        return 0;
    }
    static int32_t write(const uint8_t *data, uint64_t length, void *self) {
        return Writer::write(data, length, &static_cast<Called *>(self)->writer);
    }
};

template <class Convert>
void call(const Order &order, Called &called, Convert convert) {
    called.writer.refuse_at = order.refuse_at;
    called.writer.answer = order.answer;
    called.ctx = create_jkc();
    JkcContext *ctx = called.ctx;
    ctx->mode = order.options.line_type;
    ctx->suppress = order.options.suppress;
    ctx->utfmac_to = order.options.compose;
    called.status = convert(ctx);
    called.sts = ctx->sts;
    called.nochar_count = ctx->nochar_count;
    const int64_t nochar[] = {ctx->first_nochar_index, ctx->last_nochar_index, ctx->first_nochar, ctx->last_nochar};
    memcpy(called.nochar, nochar, sizeof nochar);
    JKC_EXPECT(ctx->blocks->data == nullptr);
    release_jkc(ctx);
}

void run_called(Order order, Choices &choices, const Bytes &text) {
    const bool hint = choices.yes();
    Called from_memory;
    call(order, from_memory, [&](JkcContext *ctx) {
        return jkc_convert_buffer(ctx, text.data(), text.size(), order.src, order.dst, hint, Called::observe,
                                  Called::write, &from_memory);
    });
    Called from_reader;
    call(order, from_reader, [&](JkcContext *ctx) {
        CutReader reader(text, choices);
        ctx->reader = &reader;
        ctx->mode |= JKC_MODE_READER;
        return jkc_convert_stream(ctx, nullptr, order.src, order.dst, hint, Called::observe, Called::write,
                                  &from_reader);
    });
    JKC_EXPECT(from_reader == from_memory);
    if (choices.below(8) == 0) {
        Called from_stream;
        call(order, from_stream, [&](JkcContext *ctx) {
            const Stream stream(text);
            return jkc_convert_stream(ctx, stream.file(), order.src, order.dst, hint, Called::observe, Called::write,
                                      &from_stream);
        });
        JKC_EXPECT(from_stream == from_memory);
    }
    // A converter that is told this type makes the same of it.
    const bool across_blocks = order.options.line_type != JKC_LINE_KEEP && text.size() > JKC_BLOCK_READ;
    // A whole call that is to compose, and thinks that it can, writes nothing where legacy text needs no conversion.
    const Family family = family_of(from_memory.told);
    const bool composes_legacy = order.options.compose != 0 && from_memory.has_marks && !is_unicode(family);
    if (family != Family::kNone && !across_blocks && !composes_legacy) {
        order.src = from_memory.told;
        order.options.on_loss = JKC_ON_LOSS_CLASSIC;
        order.options.one_code_each = 1;
        order.options.jis_2004 = from_memory.jis_2004 ? 1 : 0;
        // Only a whole call knows that there is nothing to compose, and copies then.
        order.options.compose = from_memory.has_marks ? order.options.compose : 0;
        Fed fed;
        feed_whole(order, text, fed);
        JKC_EXPECT(fed.status == from_memory.status && fed.writer == from_memory.writer);
    }
}

} // namespace
} // namespace jkc::fuzz

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    using namespace jkc::fuzz;
    Choices choices(data, size);
    const Order order(choices);
    const bool whole_calls = choices.below(3) == 0;
    Bytes text;
    choices.take_text(text);
    whole_calls ? run_called(order, choices, text) : run_fed(order, choices, text);
    return 0;
}
