// 7-bit text on its way from a byte encoding: line ends, and long runs copied sixteen bytes at a time.
#pragma once

#include "convert/line_type.h"
#include "core/wide.h"

namespace jkc {

// kStops are the bytes below 0x80 that mean something else to the reader.
template <uint8_t... kStops>
class PlainText {
public:
    explicit PlainText(const JkcContext &ctx)
        : line_type_(ctx), keeps_line_ends_((ctx.mode & JKC_MODE_LINE_TYPE) == JKC_LINE_KEEP) {}

    // Takes the 7-bit byte at p, and those behind it as far as `steps` allows one step for each. `has_next` tells
    // whether the byte behind it belongs to the input.
    template <class Writer>
    void take(const uint8_t *&p, uint8_t *&o, Writer &w, size_t &steps, bool has_next = true) const {
        const uint8_t b = *p++;
        if (b == kLf) {
            o = w.line_end(o, line_type_.lf);
        } else if (b == kCr) {
            const bool pair = has_next && *p == kLf;
            o = w.line_end(o, pair ? line_type_.cr_lf : line_type_.cr);
            p += pair ? 1 : 0;
        } else {
            o = w.plain(o, b);
            // Worth a look from the second plain byte on.
            if (steps > kWide && is_plain(*p)) {
                copy_run(p, o, w, steps);
            }
        }
    }

private:
    template <class Writer>
    void copy_run(const uint8_t *&p, uint8_t *&o, Writer &w, size_t &steps) const {
        while (steps > kWide) {
            const uint32_t stops = keeps_line_ends_ ? stop_mask<kStops...>(p) : stop_mask<kLf, kCr, kStops...>(p);
            o = w.plain_wide(o, p);
            if (stops != 0) {
                const auto run = static_cast<size_t>(__builtin_ctz(stops));
                o -= (kWide - run) * Writer::kPlainWidth;
                p += run;
                steps -= run;
                return;
            }
            p += kWide;
            steps -= kWide;
        }
    }

    LineType line_type_;
    bool keeps_line_ends_;
};

} // namespace jkc
