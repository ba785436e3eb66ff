// What each line end of the input becomes.
#pragma once

#include "core/bytes.h"
#include "core/internal.h"

namespace jkc {

// A line end as ASCII bytes: none, CR, LF or CR LF.
struct LineEnd {
    uint8_t bytes[2];
    uint8_t length;
};

constexpr LineEnd kLineFeed{{kLf, 0}, 1};
constexpr LineEnd kCarriageReturn{{kCr, 0}, 1};
constexpr LineEnd kCrLf{{kCr, kLf}, 2};
constexpr LineEnd kNoLineEnd{{0, 0}, 0};

class LineType {
public:
    explicit LineType(const JkcContext &ctx) {
        switch (ctx.mode & JKC_MODE_LINE_TYPE) {
        case JKC_LINE_KEEP:
            lf = kLineFeed;
            cr = kCarriageReturn;
            cr_lf = kCrLf;
            break;
        case JKC_LINE_LF:
            lf = cr = cr_lf = kLineFeed;
            break;
        case JKC_LINE_CR:
            lf = cr = cr_lf = kCarriageReturn;
            break;
        case JKC_LINE_CRLF:
            lf = cr = cr_lf = kCrLf;
            break;
        default:
            break; // the other values drop line ends
        }
    }

    LineEnd lf = kNoLineEnd;
    LineEnd cr = kNoLineEnd;
    LineEnd cr_lf = kNoLineEnd;
};

} // namespace jkc
