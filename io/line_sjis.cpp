#include "io/line_scanner.h"

namespace jkc {

namespace {

struct SjisLineScanner : LineScanner {
    const uint16_t *table;
    uint64_t count;

    explicit SjisLineScanner(const JkcContext &ctx) : table(ctx.sjis_src_table), count(ctx.sjis_src_count) {}

    Scan step(Line &line) const {
        if (is_ascii(*line.p)) {
            return take_unit(line);
        }
        if (is_sjis_katakana(*line.p)) {
            return line.take(1);
        }
        if (line.left() < 2) {
            return Scan::kStop;
        }
        const uint32_t code = two_byte_code(line.p[0], line.p[1]);
        return code < count && table[code] != 0 ? line.take(2) : line.pass(1, Scan::kInvalid);
    }
};

} // namespace

} // namespace jkc

int32_t jkc_sjis_strln(JkcContext *ctx, void *buf, uint64_t size, uint64_t *length, const uint8_t **position,
                       uint64_t remaining) {
    return jkc::scan_line(jkc::SjisLineScanner(*ctx), ctx, buf, size, length, position, remaining);
}
