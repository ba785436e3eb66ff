#include "core/unicode.h"
#include "io/line_scanner.h"

namespace jkc {

namespace {

struct Utf8LineScanner {
    static bool leads_two(uint8_t b) { return (b & 0xE0) == 0xC0; }
    static bool leads_three(uint8_t b) { return (b & 0xF0) == 0xE0; }
    static bool leads_four(uint8_t b) { return (b & 0xF8) == 0xF0; }

    static void begin(Line &line) { pass_bom(line, Family::kUtf8); }

    static Scan step(Line &line) {
        const uint8_t *p = line.p;
        if (is_ascii(*p)) {
            return take_unit(line);
        }
        if (line.left() == 1) {
            return Scan::kStop;
        }
        if (leads_two(*p)) {
            return is_trail(p[1]) ? line.take(2) : line.pass(2, Scan::kInvalid);
        }
        return line.left() == 2 ? line.pass(2, Scan::kStop) : long_character(line);
    }

    // Three bytes are there at least. An ill-formed sequence counts as four bytes: if the fourth lies behind the limit, it
    // is taken for cut.
    static Scan long_character(Line &line) {
        const uint8_t *p = line.p;
        const bool trails = is_trail(p[1]) && is_trail(p[2]);
        if (leads_three(*p) && trails) {
            return line.take(3);
        }
        if (line.left() == 3) {
            return line.pass(3, Scan::kStop);
        }
        return leads_four(*p) && trails && is_trail(p[3]) ? line.take(4) : line.pass(4, Scan::kInvalid);
    }
};

} // namespace

} // namespace jkc

int32_t jkc_utf8_strln(JkcContext *ctx, void *buf, uint64_t size, uint64_t *length, const uint8_t **position,
                       uint64_t remaining) {
    return jkc::scan_line(jkc::Utf8LineScanner(), ctx, buf, size, length, position, remaining);
}
