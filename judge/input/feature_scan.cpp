// Reads the rest of the input into blocks and looks through Unicode text for surrogates and combining marks. judge()
// calls it for input that the scanners need not see, such as what is behind a BOM.
#include "judge/input/feature_scan.h"
#include "core/code_types.h"
#include "core/unicode.h"
#include "core/wide_units.h"
#include "core/work_area.h"
#include "judge/input/block_cursor.h"
#include "judge/input/byte_source.h"
#include "judge/scan/utf8_run.h"

namespace jkc {

namespace {

constexpr size_t kLookAhead = 4;

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

bool both_found(const JkcContext &ctx) { return ctx.srg_exists != 0 && ctx.utfmac_exists != 0; }

// Skips code units, eight at a time, that raise no flag: neither high surrogates nor such in front of a combining mark.
// Leaves the last ones, which may form a pair with the next block's.
template <class Order>
const uint8_t *skip_units(const uint8_t *p, const uint8_t *end) {
    for (; end - p > static_cast<ptrdiff_t>(kWide + kLookAhead); p += kWide) {
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

template <class Order>
int look_through_utf16(JkcContext *ctx) {
    BlockCursor in(ctx);
    while (!both_found(*ctx)) {
        in.p += skip_units<Order>(in.p, in.end) - in.p;
        in.ensure(kLookAhead);
        if (in.left() < 2) {
            break;
        }
        const uint32_t unit = Order::unit(in.p);
        in.p += 2;
        if (is_high_surrogate(unit)) {
            ctx->srg_exists = 1;
        } else if ((ctx->uni_def_table[unit] & kAnyBase) != 0 && in.left() >= 2 &&
                   is_combining_mark(Order::unit(in.p))) {
            ctx->utfmac_exists = 1;
            in.p += 2;
        }
    }
    return JKC_SUCCESS;
}

// The first bytes of the kana of ordinary text.
constexpr uint8_t kKanaLead = 0xE3;
constexpr uint8_t kFirstKanaTrail = 0x81;

// Bytes to pass where a sequence is ill-formed.
constexpr size_t kIllFormedStep = 4;

class Utf8Features {
public:
    explicit Utf8Features(JkcContext *ctx) : ctx_(ctx) {}

    int look_through() {
        BlockCursor in(ctx_);
        while (!both_found(*ctx_)) {
            skip_ordinary_text(in);
            in.ensure(kLookAhead);
            if (in.at_end()) {
                break;
            }
            if (utf8_length(*in.p) > in.left()) {
                return JKC_EUEXPEOD;
            }
            const size_t length = take(in.p);
            in.p += length < in.left() ? length : in.left();
        }
        return JKC_SUCCESS;
    }

private:
    // Skips text that raises no flag, but for its end, which the next block may go on with.
    void skip_ordinary_text(BlockCursor &in) {
        if (in.left() < kLookAhead) {
            return;
        }
        const OrdinaryRun run = ordinary_utf8_run(in.p, in.end - (kLookAhead - 1));
        in.p += run.end - in.p;
        if (run.kana > 0) {
            const uint8_t *last = run.end - 3;
            while (last[0] != kKanaLead || last[1] < kFirstKanaTrail) {
                --last;
            }
            base_ = has(utf8_code_point(last[0], last[1], last[2]), kKanaBase);
        }
    }

    // Looks at a sequence; returns the bytes to pass.
    size_t take(const uint8_t *p) {
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
                ctx_->srg_exists = 1;
                return 4;
            }
            break;
        default:
            break;
        }
        return kIllFormedStep;
    }

    bool is_text(uint32_t c) const { return c < ctx_->uni_def_count && (ctx_->uni_def_table[c] & kAnyText) != 0; }
    bool has(uint32_t c, uint16_t bits) const { return (ctx_->uni_def_table[c] & bits) != 0; }

    void two_byte(uint32_t c) {
        if (has(c, kCyrillicBase)) {
            base_ = true;
            return;
        }
        if (base_ && c == kBreve) {
            ctx_->utfmac_exists = 1;
        }
        base_ = false;
    }

    void three_byte(uint32_t c) {
        if (is_kana_letter(c)) {
            if (has(c, kKanaBase)) {
                base_ = true;
                return;
            }
            if (base_ && (c == kVoicedMark || c == kSemiVoicedMark)) {
                ctx_->utfmac_exists = 1;
            }
            base_ = false;
        } else if (is_vertical_repeat_mark(c)) {
            base_ = has(c, kKanaBase);
        }
    }

    JkcContext *ctx_;
    bool base_ = false; // the last character takes a combining mark
};

} // namespace

int fill_buffer(JkcContext *ctx, JkcBlock &block, int code_type) {
    const int status = read_all(ctx, block);
    if (status != JKC_SUCCESS) {
        return status;
    }
    switch (family_of(code_type)) {
    case Family::kUtf16Be:
        return look_through_utf16<BigEndian>(ctx);
    case Family::kUtf16Le:
        return look_through_utf16<LittleEndian>(ctx);
    case Family::kUtf8:
        return Utf8Features(ctx).look_through();
    default:
        return JKC_SUCCESS;
    }
}

} // namespace jkc

int _fill_buffer(JkcContext *ctx, int code_type) {
    const jkc::WorkArea area;
    return area.block() != nullptr ? jkc::fill_buffer(ctx, *area.block(), code_type) : JKC_EALLOC;
}
