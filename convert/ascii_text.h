// ASCII text from any encoding to any other, and any text copied within its own: line ends, and long runs sixteen
// characters at a time.
#pragma once

#include <type_traits>

#include "convert/line_type.h"
#include "core/unicode.h"
#include "core/wide.h"
#include "kernels/kernels.h"

namespace jkc {

// How ASCII text lies in the source: in a byte or in a UTF-16 code unit each.
struct Bytes {
    static constexpr size_t kWidth = 1;
    static bool ends_run(const uint8_t *p) { return !is_ascii(*p); }
    static uint32_t at(const uint8_t *p) { return *p; }
    static Bytes16 load(const uint8_t *p) { return load16(p); }
    static Bytes16 run_ends(Bytes16 text) { return text; }
};
// Bytes that all stay as they are.
struct RawBytes : Bytes {
    static bool ends_run(const uint8_t * /*p*/) { return false; }
    static Bytes16 run_ends(Bytes16 /*text*/) { return Bytes16{}; }
};
template <class Order>
struct Units {
    static constexpr size_t kWidth = 2;
    static bool ends_run(const uint8_t *p) { return at(p) >= 0x80; }
    static uint32_t at(const uint8_t *p) { return Order::unit(p); }
    static Bytes16 run_ends(Bytes16 text) { return text; }
    // Sixteen units as bytes; what is above 0xFF gets 0xFF.
    static Bytes16 load(const uint8_t *p) {
        const Bytes16 left = load16(p);
        const Bytes16 right = load16(p + kWide);
        const Bytes16 even =
            __builtin_shufflevector(left, right, 0, 2, 4, 6, 8, 10, 12, 14, 16, 18, 20, 22, 24, 26, 28, 30);
        const Bytes16 odd =
            __builtin_shufflevector(left, right, 1, 3, 5, 7, 9, 11, 13, 15, 17, 19, 21, 23, 25, 27, 29, 31);
        return std::is_same_v<Order, LittleEndian> ? even | above(odd, 0) : odd | above(even, 0);
    }
};

// kStops are the ASCII bytes that mean something else to the decoder.
template <class Layout, uint8_t... kStops>
class AsciiText {
public:
    explicit AsciiText(const JkcContext &ctx)
        : line_type_(ctx), keeps_line_ends_((ctx.mode & JKC_MODE_LINE_TYPE) == JKC_LINE_KEEP) {}

    bool keeps_line_ends() const { return keeps_line_ends_; }
    // An LF that stays one is nothing special.
    LineEndStops line_end_stops() const {
        constexpr uint8_t kNoStop = LineEndStops::kNoStop;
        const bool keeps_lf = line_type_.lf.length == 1 && line_type_.lf.bytes[0] == kLf;
        return {keeps_line_ends_ ? kNoStop : kCr, keeps_lf ? kNoStop : kLf};
    }

    // Takes the ASCII character at p and those behind it, one step each; the LF of a CR LF counts as one if `steps`
    // allows it. `has_next` tells whether the character behind the first one belongs to the input.
    template <class Encoder>
    void take(const uint8_t *&p, uint8_t *&o, Encoder &e, size_t &steps, bool has_next = true) const {
        const uint32_t c = Layout::at(p);
        p += Layout::kWidth;
        if (c == kLf) {
            o = e.line_end(o, line_type_.lf);
        } else if (c == kCr) {
            const bool pair = has_next && Layout::at(p) == kLf;
            o = e.line_end(o, pair ? line_type_.cr_lf : line_type_.cr);
            p += pair ? Layout::kWidth : 0;
            steps -= pair && steps > 1 ? 1 : 0;
        } else {
            o = e.ascii(o, static_cast<uint8_t>(c));
            // The wide path pays from the second ASCII character on.
            if (steps > kLeastSteps && !Layout::ends_run(p)) {
                copy_run(p, o, e, steps);
            }
        }
    }

private:
    // One step is the first character's. One is left for an LF behind the run, which must not move to another block.
    static constexpr size_t kLeastSteps = kWide + 1;

    uint32_t stops_in(Bytes16 text) const {
        const Bytes16 ends = Layout::run_ends(text);
        return keeps_line_ends_ ? stop_mask<kStops...>(text, ends) : stop_mask<kLf, kCr, kStops...>(text, ends);
    }

    template <class Encoder>
    void copy_run(const uint8_t *&p, uint8_t *&o, Encoder &e, size_t &steps) const {
        for (; steps > kLeastSteps + kWide; steps -= 2 * kWide) {
            const Bytes16 text = Layout::load(p);
            const Bytes16 next = Layout::load(p + kWide * Layout::kWidth);
            if ((stops_in(text) | stops_in(next)) != 0) {
                break;
            }
            o = e.ascii_wide(e.ascii_wide(o, text), next);
            p += 2 * kWide * Layout::kWidth;
        }
        while (steps > kLeastSteps) {
            const Bytes16 text = Layout::load(p);
            const uint32_t stops = stops_in(text);
            o = e.ascii_wide(o, text);
            if (stops != 0) {
                const auto run = static_cast<size_t>(__builtin_ctz(stops));
                o -= (kWide - run) * Encoder::kAsciiWidth;
                p += run * Layout::kWidth;
                steps -= run;
                return;
            }
            p += kWide * Layout::kWidth;
            steps -= kWide;
        }
    }

    LineType line_type_;
    bool keeps_line_ends_;
};

} // namespace jkc
