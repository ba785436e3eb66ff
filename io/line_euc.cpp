#include "io/line_scanner.h"

namespace jkc {

namespace {

struct EucLineScanner : LineScanner {
    static bool is_euc_byte(uint8_t b) { return b >= 0xA1 && b <= 0xFE; }
    static constexpr uint8_t kNoLead = 0xFF;

    static Scan step(Line &line) {
        const uint8_t b = *line.p;
        if (b == kNoLead) {
            return Scan::kInvalid;
        }
        if (b == kSs3) { // its trail bytes are not looked at
            return line.left() < 3 ? Scan::kStop : line.take(3);
        }
        if (b != kSs2 && !is_euc_byte(b)) {
            return take_unit(line);
        }
        if (line.left() < 2) {
            return Scan::kStop;
        }
        const uint8_t trail = line.p[1];
        // The katakana have the range that they have in Shift_JIS.
        const bool valid = b == kSs2 ? is_sjis_katakana(trail) : is_euc_byte(trail);
        return valid ? line.take(2) : line.pass(1, Scan::kInvalid);
    }
};

} // namespace

} // namespace jkc

int32_t jkc_euc_strln(JkcContext *ctx, void *buf, uint64_t size, uint64_t *length, const uint8_t **position,
                      uint64_t remaining) {
    return jkc::scan_line(jkc::EucLineScanner(), ctx, buf, size, length, position, remaining);
}
