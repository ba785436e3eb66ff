#include "core/jis_escape.h"
#include "io/line_scanner.h"

namespace jkc {

namespace {

constexpr bool is_jis_byte(uint8_t b) { return b >= 0x21 && b <= 0x7E; }

struct JisLineScanner : LineScanner {
    JkcContext &ctx;
    uint32_t &set; // a JisDesignation
    bool shifted_out = false;

    JisLineScanner(JkcContext &context, uint32_t &shift_state) : ctx(context), set(shift_state) {}

    Scan step(Line &line) {
        if (shifted_out) {
            return shifted(line);
        }
        if (*line.p == kEsc) {
            return escape(line);
        }
        switch (set) {
        case kKatakana:
            return is_katakana_code(*line.p) ? line.take(1) : Scan::kInvalid;
        case kJisX0208:
        case kJisX0212:
        case kJisX0213Plane1Of2004:
        case kJisX0213Plane2:
            return two_byte(line);
        default:
            return one_byte(line);
        }
    }

    // Of a truncated sequence the ESC is copied, or three bytes of four; the next call takes the rest for text.
    Scan escape(Line &line) {
        const SeenEscape seen = read_escape(line.p, line.left());
        switch (seen.kind) {
        case SeenEscape::kTruncated:
            return line.pass(line.left() < 3 ? 1 : 3, Scan::kStop);
        case SeenEscape::kKnown:
            set = seen.set;
            select_plane(ctx, seen.set);
            break;
        case SeenEscape::kUnknown:
            break;
        }
        return line.pass(seen.length);
    }

    // A line end is no code of these sets: a line goes back to ASCII before it ends.
    static Scan two_byte(Line &line) {
        if (!is_jis_byte(line.p[0])) {
            return Scan::kInvalid;
        }
        if (line.left() < 2) {
            return line.pass(1, Scan::kCut);
        }
        return is_jis_byte(line.p[1]) ? line.take(2) : line.pass(1, Scan::kInvalid);
    }

    Scan one_byte(Line &line) {
        if (*line.p == kSo) {
            shifted_out = true;
            return line.pass(1);
        }
        return is_ascii(*line.p) ? take_unit(line) : Scan::kInvalid;
    }

    // Only katakana and SI, not even an escape sequence. The next call does not know of a run that the limit cuts.
    Scan shifted(Line &line) {
        if (*line.p == kSi) {
            shifted_out = false;
            return line.pass(1);
        }
        return is_katakana_code(*line.p) ? line.take(1) : Scan::kInvalid;
    }
};

} // namespace

} // namespace jkc

int32_t jkc_jis_strln(JkcContext *ctx, void *buf, uint64_t size, uint64_t *length, const uint8_t **position,
                      uint64_t remaining, uint32_t *shift_state) {
    return jkc::scan_line(jkc::JisLineScanner(*ctx, *shift_state), ctx, buf, size, length, position, remaining);
}
