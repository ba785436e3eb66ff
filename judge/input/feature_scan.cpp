// Reads the rest of the input into blocks and looks through Unicode text for surrogates and combining marks. judge()
// calls it for input that the scanners need not see, such as what is behind a BOM.
#include "judge/input/feature_scan.h"

#include <algorithm>
#include <cstring>

#include "core/unicode.h"
#include "core/wide_units.h"
#include "core/work_area.h"
#include "judge/input/block_cursor.h"
#include "judge/input/byte_source.h"
#include "judge/scan/utf8_run.h"

namespace jkc {

namespace {

constexpr ptrdiff_t kLookAhead = 4;

int read_all(JkcContext *ctx, JkcBlock &block) {
    ByteSource source(ctx);
    for (;;) {
        reset_block(block);
        size_t count = 0;
        int status = source.read(block.data + JKC_BLOCK_HEADROOM, JKC_BLOCK_READ, count);
        if (status != JKC_SUCCESS || count == 0) {
            return status;
        }
        block.end = JKC_BLOCK_HEADROOM + static_cast<int32_t>(count);
        status = keep_block(ctx, block);
        if (status != JKC_SUCCESS) {
            return status;
        }
    }
}

// Skips code units, eight at a time, that raise no flag: neither high surrogates nor such in front of a combining mark.
// Leaves the last ones, which may form a pair with the next block's.
template <class Order>
const uint8_t *skip_units(const uint8_t *p, const uint8_t *end) {
    for (; end - p > static_cast<ptrdiff_t>(kWide) + kLookAhead; p += kWide) {
        const Units8 next = load8<Order>(p + 2);
        const Units8 wanted = units_equal_masked<0xFC00>(load8<Order>(p), 0xD800) | units_equal(next, kBreve) |
                              units_equal(next, kDiaeresis) | units_equal(next, kVoicedMark) |
                              units_equal(next, kSemiVoicedMark);
        if (any_unit(wanted)) {
            break;
        }
    }
    return p;
}

// The first bytes of the kana of ordinary text.
constexpr uint8_t kKanaLead = 0xE3;
constexpr uint8_t kFirstKanaTrail = 0x81;

// Bytes to pass where a sequence is ill-formed.
constexpr ptrdiff_t kIllFormedStep = 4;

} // namespace

template <class Order>
const uint8_t *UnicodeFeatures::take_utf16(const uint8_t *p, const uint8_t *end, bool last) {
    while (!both_found()) {
        p = skip_units<Order>(p, end);
        const ptrdiff_t left = end - p;
        if (left < (last ? 2 : kLookAhead)) {
            return p;
        }
        const uint32_t unit = Order::unit(p);
        p += 2;
        if (is_high_surrogate(unit)) {
            surrogates_ = true;
        } else if ((ctx_->uni_def_table[unit] & kAnyBase) != 0 && left >= 4 && is_combining_mark(Order::unit(p))) {
            decomposed_ = true;
            p += 2;
        }
    }
    return end;
}

const uint8_t *UnicodeFeatures::take_utf8(const uint8_t *p, const uint8_t *end, bool last) {
    while (!both_found()) {
        p = skip_ordinary_text(p, end);
        const ptrdiff_t left = end - p;
        if (left < (last ? 1 : kLookAhead)) {
            return p;
        }
        if (static_cast<ptrdiff_t>(utf8_length(*p)) > left) {
            status_ = JKC_EUEXPEOD;
            return end;
        }
        p += std::min(take_sequence(p), left);
    }
    return end;
}

// Skips text that raises no flag, but for its end, which the next piece may go on with.
const uint8_t *UnicodeFeatures::skip_ordinary_text(const uint8_t *p, const uint8_t *end) {
    if (end - p < kLookAhead) {
        return p;
    }
    const OrdinaryRun run = ordinary_utf8_run(p, end - (kLookAhead - 1));
    if (run.kana > 0) {
        const uint8_t *last = run.end - 3;
        while (last[0] != kKanaLead || last[1] < kFirstKanaTrail) {
            --last;
        }
        base_ = has(utf8_code_point(last[0], last[1], last[2]), kKanaBase);
    }
    return run.end;
}

// Looks at a sequence; returns the bytes to pass.
ptrdiff_t UnicodeFeatures::take_sequence(const uint8_t *p) {
    // A5, the yen sign of ISO 8859-1, may stray into such texts.
    if (p[0] < 0x80 || p[0] == 0xA5) {
        return 1;
    }
    switch (utf8_length(p[0])) {
    case 2:
        if (is_trail(p[1]) && is_text(utf8_code_point(p[0], p[1]))) {
            two_byte(utf8_code_point(p[0], p[1]));
            return 2;
        }
        break;
    case 3:
        if (is_trail(p[1]) && is_trail(p[2]) && is_text(utf8_code_point(p[0], p[1], p[2]))) {
            three_byte(utf8_code_point(p[0], p[1], p[2]));
            return 3;
        }
        break;
    case 4:
        if (is_trail(p[1]) && is_trail(p[2]) && is_trail(p[3])) {
            surrogates_ = true;
            return 4;
        }
        break;
    default:
        break;
    }
    return kIllFormedStep;
}

bool UnicodeFeatures::is_text(uint32_t c) const {
    return c < ctx_->uni_def_count && (ctx_->uni_def_table[c] & kAnyText) != 0;
}
bool UnicodeFeatures::has(uint32_t c, uint16_t bits) const { return (ctx_->uni_def_table[c] & bits) != 0; }

void UnicodeFeatures::two_byte(uint32_t c) {
    if (has(c, kCyrillicBase)) {
        base_ = true;
        return;
    }
    if (base_ && c == kBreve) {
        decomposed_ = true;
    }
    base_ = false;
}

void UnicodeFeatures::three_byte(uint32_t c) {
    if (is_kana_letter(c)) {
        if (has(c, kKanaBase)) {
            base_ = true;
            return;
        }
        if (base_ && (c == kVoicedMark || c == kSemiVoicedMark)) {
            decomposed_ = true;
        }
        base_ = false;
    } else if (is_vertical_repeat_mark(c)) {
        base_ = has(c, kKanaBase);
    }
}

const uint8_t *UnicodeFeatures::take(const uint8_t *p, const uint8_t *end, bool last) {
    switch (family_) {
    case Family::kUtf16Be:
        return take_utf16<BigEndian>(p, end, last);
    case Family::kUtf16Le:
        return take_utf16<LittleEndian>(p, end, last);
    case Family::kUtf8:
        return take_utf8(p, end, last);
    default:
        return end;
    }
}

int UnicodeFeatures::tell(JkcContext &ctx) const {
    ctx.srg_exists = surrogates_ ? 1 : ctx.srg_exists;
    ctx.utfmac_exists = decomposed_ ? 1 : ctx.utfmac_exists;
    return status_;
}

int fill_buffer(JkcContext *ctx, JkcBlock &block, int code_type) {
    const int status = read_all(ctx, block);
    if (status != JKC_SUCCESS) {
        return status;
    }
    UnicodeFeatures features(*ctx, code_type);
    for (BlockCursor in(ctx);; in.carry_over()) {
        in.p += features.take(in.p, in.end, in.is_last()) - in.p;
        if (in.is_last()) {
            return features.tell(*ctx);
        }
    }
}

int look_through_rest(JkcContext *ctx, JkcBlock &block, int code_type, LineEnds &line_ends) {
    ByteSource source(ctx);
    UnicodeFeatures features(*ctx, code_type);
    uint8_t *const begin = block.data + JKC_BLOCK_HEADROOM;
    size_t rest = 0; // of the piece before, in front of this one
    for (;;) {
        size_t count = 0;
        const int status = source.read(begin, JKC_BLOCK_READ, count);
        if (status != JKC_SUCCESS) {
            return status;
        }
        const uint8_t *const end = begin + count;
        line_ends.bytes.take(begin, end);
        const uint8_t *const stopped = features.take(begin - rest, end, count == 0);
        if (count == 0) {
            return features.tell(*ctx);
        }
        rest = static_cast<size_t>(end - stopped);
        memmove(begin - rest, stopped, rest);
    }
}

} // namespace jkc

int _fill_buffer(JkcContext *ctx, int code_type) {
    const jkc::WorkArea area;
    return area.block() != nullptr ? jkc::fill_buffer(ctx, *area.block(), code_type) : JKC_EALLOC;
}
