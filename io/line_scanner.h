// What the line scanners have in common: the limit, line ends, copying, the final status.
//
// A scanner knows one code type:
//
//   begin(line)  looks at the front of the line
//   step(line)   takes what stands at line.p, one character or escape sequence, with one byte visible at least
#pragma once

#include <algorithm>
#include <cstring>

#include "core/bytes.h"
#include "core/code_types.h"

namespace jkc {

// What a step says: go on, or why the scan stops behind the bytes taken so far.
enum class Scan : int32_t { kNext = 1, kStop = JKC_SUCCESS, kInvalid = JKC_ECHAR, kCut = JKC_EUEXPEOD };

struct Line {
    const uint8_t *p;   // what is taken next
    const uint8_t *end; // the limit
    int32_t characters = 0;
    int line_end = 0; // bytes of the line end behind p, once it is found

    size_t left() const { return static_cast<size_t>(end - p); }

    Scan take(int bytes) {
        p += bytes;
        ++characters;
        return Scan::kNext;
    }
    // Copied, but not counted.
    Scan pass(int bytes, Scan then = Scan::kNext) {
        p += bytes;
        return then;
    }
    Scan finish(int line_end_bytes) {
        line_end = line_end_bytes;
        return Scan::kStop;
    }
};

struct LineScanner {
    void begin(Line & /*line*/) {}
};

struct SingleByte {
    static constexpr int kWidth = 1;
    static constexpr uint32_t unit(const uint8_t *p) { return *p; }
};

// Takes a character of one unit. The LF of a CR LF that the limit cuts is left: an empty line of its own.
template <class Units = SingleByte>
Scan take_unit(Line &line) {
    constexpr int kWidth = Units::kWidth;
    const uint32_t unit = Units::unit(line.p);
    if (unit == kLf) {
        return line.finish(kWidth);
    }
    if (unit == kCr) {
        const bool pair = line.left() >= 2 * kWidth && Units::unit(line.p + kWidth) == kLf;
        return line.finish(pair ? 2 * kWidth : kWidth);
    }
    return line.take(kWidth);
}

// A BOM is passed in front of any line, also where it is the character U+FEFF.
inline void pass_bom(Line &line, Family family) {
    const Bom bom = bom_of(family);
    if (line.left() >= bom.length && memcmp(line.p, bom.bytes, bom.length) == 0) {
        line.pass(bom.length);
    }
}

template <class Scanner>
int32_t scan_line(Scanner scanner, JkcContext *ctx, void *buf, uint64_t size, uint64_t *length,
                  const uint8_t **position, uint64_t remaining) {
    const uint8_t *start = *position;
    Line line{start, start + std::min(size, remaining)};
    scanner.begin(line);
    Scan scan = Scan::kNext;
    while (scan == Scan::kNext && line.left() > 0) {
        scan = scanner.step(line);
    }
    *length = static_cast<uint64_t>(line.p - start);
    if (*length > 0) {
        memcpy(buf, start, as_size(*length));
    }
    *position = line.p + line.line_end;
    ctx->sts = scan == Scan::kNext ? JKC_SUCCESS : static_cast<int32_t>(scan);
    return ctx->sts == JKC_SUCCESS ? line.characters : ctx->sts;
}

} // namespace jkc
