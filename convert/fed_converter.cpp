// The converter that is fed: keeps a conversion, and what of the input it cannot take yet, between calls.
#include <algorithm>
#include <cstdlib>
#include <cstring>

#include "convert/compose.h"
#include "convert/copy.h"
#include "convert/line_places.h"
#include "convert/routes.h"
#include "core/context.h"

namespace jkc {

namespace {

// More than any decoder looks ahead, or any front that is skipped.
constexpr size_t kHeldRoom = 64;

// ASCII counts as Shift_JIS on either side.
int32_t without_ascii(int32_t type) { return type == JKC_TYPE_ASCII ? static_cast<int32_t>(JKC_TYPE_SJIS) : type; }

bool is_line_type(uint32_t type) {
    return type == JKC_LINE_KEEP || type == JKC_LINE_LF || type == JKC_LINE_CR || type == JKC_LINE_CRLF;
}

// The fields that the caller's version of the record has; the others are 0.
JkcConverterOptions read_options(const JkcConverterOptions *given) {
    JkcConverterOptions options = {};
    if (given != nullptr) {
        memcpy(&options, given, std::min(given->size, sizeof options));
    }
    return options;
}

} // namespace

} // namespace jkc

struct JkcConverter {
    JkcContext ctx; // has no blocks
    jkc::Losses losses;
    jkc::LinePlaces *places; // null: nobody asks for these
    int32_t src_type;
    int32_t dst_type;
    jkc::Conversion *conversion; // in `room`; null: the front of the text has not been looked at
    jkc::Stop stop;              // kOutput and kEnd: output of this stop is still to be handed over
    size_t handed_over;          // how much of it is already
    bool ended;
    int32_t status; // once it has ended
    size_t held_length;
    uint8_t held[jkc::kHeldRoom]; // input that the conversion cannot take before it sees more
    jkc::ConversionRoom room;
    uint8_t area[sizeof(JkcBlock)];
};

namespace jkc {

namespace {

// Whether the text is copied: within one encoding there is nothing to convert, unless it composes.
bool is_copy(const JkcConverter &c) {
    const bool same_encoding = c.src_type == c.dst_type || jkc_cmp_bom(c.src_type, c.dst_type) != 0;
    return same_encoding && !(composes(c.ctx) && is_unicode(family_of(c.dst_type)));
}

void start_conversion(JkcConverter &c) {
    select_source_tables(c.ctx, c.src_type);
    select_target_tables(c.ctx, c.dst_type);
    c.conversion = is_copy(c)
                       ? make_fed_copy(c.room, &c.ctx, c.area, c.src_type, c.dst_type, &c.losses)
                       : find_route(c.src_type, c.dst_type)(c.room, &c.ctx, c.area, has_bom(c.dst_type), &c.losses);
    if (c.places != nullptr) {
        c.places->start(static_cast<uint64_t>(c.ctx.read_offset));
    }
}

void reset(JkcConverter &c) {
    reset_unmappable(c.ctx);
    c.losses.reset();
    c.ctx.read_offset = 0;
    c.conversion = nullptr;
    c.stop = Stop::kInput;
    c.handed_over = 0;
    c.ended = false;
    c.status = JKC_SUCCESS;
    c.held_length = 0;
}

// The input of one call: what is held from the calls before and, behind it, what the caller gives.
class Feed {
public:
    Feed(JkcConverter &c, const uint8_t *data, size_t length, bool last)
        : c_(c), p_(data), end_(data + length), last_(last) {}

    // The input goes away.
    ~Feed() { pass_places(p_); }
    Feed(const Feed &) = delete;
    Feed &operator=(const Feed &) = delete;

    // What is neither taken nor held.
    const uint8_t *rest() const { return p_; }

    // Passes what may stand at the front of the text and says nothing. False: more input is needed to tell.
    bool pass_front(Front front) {
        hold();
        const size_t seen = c_.held_length < front.length ? c_.held_length : front.length;
        if (memcmp(c_.held, front.bytes, seen) != 0 || (seen < front.length && last_)) {
            return true;
        }
        if (seen == front.length) {
            drop_held(seen);
            c_.ctx.read_offset = is_unicode(family_of(c_.src_type)) ? 0 : static_cast<int64_t>(seen);
        }
        return seen == front.length;
    }

    // Runs the conversion. kInput: all input is taken or held.
    Stop run() {
        for (;;) {
            const Stop stop = c_.held_length > 0 ? run_held() : run_rest();
            if (stop != Stop::kInput || p_ == end_) {
                return stop;
            }
        }
    }

private:
    size_t hold() {
        const size_t added = std::min(kHeldRoom - c_.held_length, static_cast<size_t>(end_ - p_));
        if (added > 0) {
            memcpy(c_.held + c_.held_length, p_, added);
        }
        p_ += added;
        c_.held_length += added;
        return added;
    }

    void drop_held(size_t count) {
        c_.held_length -= count;
        memmove(c_.held, c_.held + count, c_.held_length);
    }

    // Returns how much was taken.
    size_t run_window(Input in, Stop &stop) {
        uint8_t *const begin = const_cast<uint8_t *>(in.p); // for positions only: nothing is written there
        c_.ctx.block_origin = begin;
        stop = c_.conversion->run(in);
        const auto taken = static_cast<size_t>(in.p - begin);
        c_.ctx.block_origin = begin + taken;
        c_.ctx.read_offset += static_cast<int64_t>(taken);
        return taken;
    }

    Stop run_held() {
        const size_t before = c_.held_length;
        const size_t added = hold();
        Stop stop;
        const size_t taken = run_window({c_.held, c_.held + c_.held_length, last_ && p_ == end_}, stop);
        pass_places(c_.held + taken);
        if (taken >= before) { // what was added is taken from where it lies
            p_ -= added - (taken - before);
            c_.held_length = 0;
        } else {
            drop_held(taken);
        }
        return stop;
    }

    Stop run_rest() {
        Stop stop;
        p_ += run_window({p_, end_, last_}, stop);
        if (stop == Stop::kInput) {
            pass_places(p_);
            hold();
        }
        return stop;
    }

    // All in front of p is converted. A text that has ended has no further losses.
    void pass_places(const uint8_t *p) {
        if (c_.places != nullptr && !c_.ended) {
            c_.places->pass(p, static_cast<uint64_t>(c_.ctx.read_offset));
        }
    }

    JkcConverter &c_;
    const uint8_t *p_;
    const uint8_t *end_;
    bool last_;
};

int32_t end(JkcConverter &c, int32_t status) {
    c.ended = true;
    c.status = status;
    return status;
}

constexpr int32_t kLater = JKC_STOP_OUTPUT; // what a hand-over answers that is not complete

// Converts until all input is taken or the text has ended. `hand_over(data, length)` takes output; it answers as a
// writer, or kLater. Returns a JkcConverterStop or a status.
template <class HandOver>
int32_t convert_feed(JkcConverter &c, Feed &feed, HandOver hand_over) {
    if (c.ended) {
        return c.status;
    }
    if (c.conversion == nullptr) {
        if (!feed.pass_front(is_copy(c) ? front_of_copy(c.src_type) : bom_of(family_of(c.src_type)))) {
            return JKC_STOP_INPUT;
        }
        start_conversion(c);
    }
    for (;;) {
        if (c.stop == Stop::kInput) {
            c.stop = feed.run();
            if (c.stop == Stop::kInput) {
                return JKC_STOP_INPUT;
            }
        }
        const int32_t answer =
            c.conversion->pending() > 0 ? hand_over(c.conversion->out.begin(), c.conversion->pending()) : 0;
        if (answer == kLater) {
            return JKC_STOP_OUTPUT;
        }
        if (c.stop == Stop::kEnd) {
            return end(c, answer != 0 ? answer : c.conversion->status);
        }
        c.stop = Stop::kInput;
        if (answer == 0) {
            c.conversion->clear_pending();
        } else if (answer == JKC_EUEXPEOD && c.conversion->stop({c.ctx.block_origin, c.ctx.block_origin, false})) {
            c.stop = Stop::kEnd; // the last hand-over repeats what is pending
        } else {
            return end(c, answer);
        }
    }
}

int32_t feed_writer(JkcConverter &c, const uint8_t *data, size_t length, bool last, JkcWriter writer, void *user_data) {
    Feed feed(c, data, length, last);
    const int32_t result = convert_feed(c, feed, [writer, user_data](const uint8_t *bytes, size_t count) {
        const int32_t answer = writer != nullptr ? writer(bytes, count, user_data) : 0;
        return answer == kLater ? static_cast<int32_t>(JKC_EWRITE) : answer;
    });
    return result == JKC_STOP_INPUT ? static_cast<int32_t>(JKC_SUCCESS) : result;
}

} // namespace

} // namespace jkc

int32_t jkc_converter_create(JkcConverter **converter, int32_t src_type, int32_t dst_type,
                             const JkcConverterOptions *options) {
    using namespace jkc;
    *converter = nullptr;
    if (family_of(src_type) == Family::kNone || family_of(dst_type) == Family::kNone) {
        return JKC_ECTYPE;
    }
    const JkcConverterOptions wanted = read_options(options);
    if (!is_line_type(wanted.line_type)) {
        return JKC_ELTYPE;
    }
    if (wanted.on_loss > JKC_ON_LOSS_ESCAPE) {
        return JKC_EIOMODE;
    }
    auto *c = static_cast<JkcConverter *>(calloc(1, sizeof(JkcConverter)));
    if (c == nullptr) {
        return JKC_EALLOC;
    }
    c->src_type = without_ascii(src_type);
    c->dst_type = without_ascii(dst_type);
    if (wanted.places != 0) {
        c->places = static_cast<LinePlaces *>(calloc(1, sizeof(LinePlaces)));
        if (c->places == nullptr) {
            free(c);
            return JKC_EALLOC;
        }
        c->places->init(c->src_type);
    }
    set_defaults(c->ctx);
    c->ctx.mode = wanted.line_type;
    c->losses.init(wanted, c->places);
    c->ctx.suppress = c->losses.is_classic() ? wanted.suppress : 0;
    c->ctx.utfmac_to = c->ctx.utfmac_exists = wanted.compose != 0;
    c->ctx.srg_exists = wanted.jis_2004 != 0;
    reset(*c);
    *converter = c;
    return JKC_SUCCESS;
}

void jkc_converter_release(JkcConverter *converter) {
    if (converter != nullptr) {
        free(converter->places);
    }
    free(converter);
}

void jkc_converter_reset(JkcConverter *converter) { jkc::reset(*converter); }

int32_t jkc_converter_feed(JkcConverter *converter, const uint8_t *data, size_t length, JkcWriter writer,
                           void *user_data) {
    return jkc::feed_writer(*converter, data, length, false, writer, user_data);
}

int32_t jkc_converter_finish(JkcConverter *converter, JkcWriter writer, void *user_data) {
    return jkc::feed_writer(*converter, nullptr, 0, true, writer, user_data);
}

int32_t jkc_converter_run(JkcConverter *converter, const uint8_t **in, size_t *in_length, uint8_t **out,
                          size_t *out_length, bool last) {
    using namespace jkc;
    JkcConverter &c = *converter;
    Feed feed(c, *in, *in_length, last);
    const int32_t result = convert_feed(c, feed, [&](const uint8_t *bytes, size_t count) {
        const size_t taken = std::min(count - c.handed_over, *out_length);
        if (taken > 0) {
            memcpy(*out, bytes + c.handed_over, taken);
        }
        *out += taken;
        *out_length -= taken;
        c.handed_over += taken;
        if (c.handed_over < count) {
            return kLater;
        }
        c.handed_over = 0;
        return static_cast<int32_t>(JKC_SUCCESS);
    });
    *in_length -= static_cast<size_t>(feed.rest() - *in);
    *in = feed.rest();
    return result;
}

void jkc_converter_losses(const JkcConverter *converter, JkcConverterLosses *losses) {
    const JkcContext &ctx = converter->ctx;
    JkcConverterLosses told = {};
    told.size = losses->size;
    converter->losses.tell(told);
    told.nochar_count = ctx.nochar_count;
    told.first_nochar_offset = ctx.first_nochar_index;
    told.last_nochar_offset = ctx.last_nochar_index;
    told.first_nochar = ctx.first_nochar;
    told.last_nochar = ctx.last_nochar;
    memcpy(losses, &told, std::min(losses->size, sizeof told));
}
