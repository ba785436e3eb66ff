#include "jni/codec.h"

#include <bit>
#include <cstring>

#include "convert/copy.h"
#include "convert/routes.h"
#include "core/context.h"

namespace jkc {

namespace {

constexpr size_t kUnit = 2;
constexpr size_t kLongestCharacter = 4; // bytes in any encoding, and of an escape sequence

// The most that a UTF-16 code unit becomes.
size_t bytes_per_unit(Family family) {
    switch (family) {
    case Family::kJis:
        return 6; // with an escape sequence
    case Family::kEuc:
    case Family::kUtf8:
        return 3;
    default:
        return 2;
    }
}

constexpr size_t kClosingSequence = 3; // of JIS, also in front of a loss

} // namespace

int32_t native_utf16() { return std::endian::native == std::endian::little ? JKC_TYPE_UTF16LE : JKC_TYPE_UTF16BE; }

void Codec::init(int32_t from, int32_t to) {
    from_ = from;
    to_ = to;
    encodes_ = from == native_utf16();
    per_unit_ = bytes_per_unit(family_of(to));
    besides_ = family_of(to) == Family::kJis ? kClosingSequence : 0;
    reset();
}

void Codec::reset() {
    JkcConverterOptions options = {};
    options.on_loss = JKC_ON_LOSS_STOP;
    state_.losses.init(options);
    JkcContext &ctx = state_.ctx;
    ctx = {};
    set_defaults(ctx);
    select_source_tables(ctx, from_);
    select_target_tables(ctx, to_);
    const bool is_copy = family_of(from_) == family_of(to_);
    conversion_ = is_copy ? make_fed_copy(state_.room, &ctx, area_, to_, to_, &state_.losses)
                          : find_route(from_, to_)(state_.room, &ctx, area_, has_bom(to_), &state_.losses);
    at_begin_ = true;
}

bool Codec::ends_with_half_a_pair(const uint8_t *p, const uint8_t *end) const {
    if (!encodes_ || p == end) {
        return false;
    }
    uint16_t last;
    memcpy(&last, end - kUnit, kUnit);
    return is_high_surrogate(last);
}

// So much of the input as cannot become more than `room` bytes.
size_t Codec::window(const uint8_t *p, const uint8_t *end, size_t room) const {
    const size_t left = static_cast<size_t>(end - p);
    const size_t units = room > besides_ ? (room - besides_) / per_unit_ : 0;
    const size_t most = encodes_ ? std::min(left - left % kUnit, units * kUnit) : std::min(left, units);
    return ends_with_half_a_pair(p, p + most) ? most - kUnit : most;
}

bool Codec::hand_over(uint8_t *&o, const uint8_t *o_end) {
    const size_t pending = conversion_->pending();
    if (pending > static_cast<size_t>(o_end - o)) {
        return false;
    }
    if (pending > 0) {
        memcpy(o, area_, pending);
        o += pending;
        conversion_->clear_pending();
    }
    return true;
}

// False: more input is needed to tell.
bool Codec::pass_bom(const uint8_t *&p, const uint8_t *end) const {
    const Bom bom = has_bom(from_) ? bom_of(family_of(from_)) : Bom{};
    const size_t seen = std::min<size_t>(bom.length, static_cast<size_t>(end - p));
    if (memcmp(p, bom.bytes, seen) != 0) {
        return true;
    }
    p += seen == bom.length ? seen : 0;
    return seen == bom.length;
}

// Takes all of the window but a cut character at its end; kUnderflow then.
Codec::Result Codec::run_window(const uint8_t *&p, const uint8_t *end, uint8_t *&o, const uint8_t *o_end) {
    Losses &losses = state_.losses;
    losses.known_until = 0;
    losses.ends_with = 0;
    state_.ctx.block_origin = const_cast<uint8_t *>(p); // for positions only: nothing is written there
    Input in{p, end, true, true};
    Stop stop;
    do {
        stop = conversion_->run(in);
        if (!hand_over(o, o_end)) {
            return kOverflow;
        }
    } while (stop == Stop::kOutput);
    p = in.p;
    if (stop == Stop::kInput) {
        return kUnderflow;
    }
    JkcConverterLosses told = {};
    losses.tell(told);
    loss_length_ = told.last.length;
    return told.last.kind == JKC_LOSS_TRUNCATED    ? kUnderflow
           : told.last.kind == JKC_LOSS_UNMAPPABLE ? kUnmappable
                                                   : kIllFormed;
}

// Takes one character, where there may be no room for it. kUnderflow: it is taken, or cut.
Codec::Result Codec::run_one(const uint8_t *&p, const uint8_t *end, uint8_t *&o, const uint8_t *o_end) {
    const State before = state_;
    const size_t least = encodes_ ? kUnit : 1;
    const uint8_t *const begin = p;
    const size_t most = std::min(kLongestCharacter, static_cast<size_t>(end - p));
    for (size_t length = least; length <= most; length += least) {
        if (ends_with_half_a_pair(begin, begin + length)) {
            continue;
        }
        const Result result = run_window(p, begin + length, o, o_end);
        if (result == kOverflow) {
            p = begin;
            state_ = before;
            return kOverflow;
        }
        if (p != begin || result != kUnderflow) {
            return result;
        }
    }
    return kUnderflow;
}

Codec::Result Codec::run(const uint8_t *&p, const uint8_t *end, uint8_t *&o, const uint8_t *o_end) {
    if (at_begin_) {
        if (p == end || !pass_bom(p, end)) {
            return kUnderflow;
        }
        if (!hand_over(o, o_end)) {
            return kOverflow;
        }
        at_begin_ = false;
    }
    for (;;) {
        const uint8_t *const begin = p;
        const size_t length = window(p, end, static_cast<size_t>(o_end - o));
        if (length > 0) {
            const Result result = run_window(p, p + length, o, o_end);
            if (result != kUnderflow) {
                return result;
            }
        }
        if (p == end) {
            return kUnderflow;
        }
        if (o == o_end) { // as Java's own have it, also where no character is whole
            return kOverflow;
        }
        if (p == begin) { // a window of no character, or less than one
            const Result result = run_one(p, end, o, o_end);
            if (result != kUnderflow || p == begin) {
                return result;
            }
        }
    }
}

Codec::Result Codec::flush(uint8_t *&o, const uint8_t *o_end) {
    if (at_begin_) {
        return kUnderflow; // no text, no byte-order mark
    }
    const State before = state_;
    Input in{area_, area_, true};
    conversion_->run(in);
    if (!hand_over(o, o_end)) {
        state_ = before;
        return kOverflow;
    }
    return kUnderflow;
}

} // namespace jkc
