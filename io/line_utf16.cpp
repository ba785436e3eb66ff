#include "core/unicode.h"
#include "io/line_scanner.h"

namespace jkc {

namespace {

constexpr int kUnit = 2;
constexpr int kPair = 4;

template <class ByteOrder>
struct Units : ByteOrder {
    static constexpr int kWidth = kUnit;
};

template <class ByteOrder>
struct Utf16LineScanner {
    const uint8_t *first = nullptr; // unit of the line, behind a BOM

    void begin(Line &line) {
        pass_bom(line, ByteOrder::kFamily);
        first = line.p;
    }

    Scan step(Line &line) const {
        if (line.left() < kUnit) {
            return Scan::kStop;
        }
        if (!is_high_surrogate(ByteOrder::unit(line.p))) {
            return take_unit<Units<ByteOrder>>(line);
        }
        if (line.left() < kPair) {
            return cut_pair(line);
        }
        return line.take(is_low_surrogate(ByteOrder::unit(line.p + kUnit)) ? kPair : kUnit);
    }

    // The limit cuts a surrogate pair. At the front of the line the high surrogate is taken as a character, since the scan
    // would never go on otherwise. Elsewhere the line ends one code unit early, as callers know it.
    Scan cut_pair(Line &line) const {
        if (line.p - first < 2 * kUnit) {
            return line.take(kUnit);
        }
        line.p -= kUnit;
        --line.characters;
        return Scan::kStop;
    }
};

} // namespace

} // namespace jkc

int32_t jkc_unibe_strln(JkcContext *ctx, void *buf, uint64_t size, uint64_t *length, const uint8_t **position,
                        uint64_t remaining) {
    return jkc::scan_line(jkc::Utf16LineScanner<jkc::BigEndian>(), ctx, buf, size, length, position, remaining);
}

int32_t jkc_unile_strln(JkcContext *ctx, void *buf, uint64_t size, uint64_t *length, const uint8_t **position,
                        uint64_t remaining) {
    return jkc::scan_line(jkc::Utf16LineScanner<jkc::LittleEndian>(), ctx, buf, size, length, position, remaining);
}
