// The last bytes of a legacy text, where less is visible than a reader likes to see.
#pragma once

#include "convert/loop.h"
#include "convert/plain_text.h"

namespace jkc {

// One step of a reader whose character at in.p, when it is not 7-bit, needs `needed` bytes.
template <class Source, class Writer>
Flow take_last_bytes(Source &r, const PlainText<Bytes> &text, size_t needed, BlockCursor &in, uint8_t *&o, Writer &w) {
    const uint8_t *p = in.p;
    size_t one = 1;
    if (is_plain(*p)) {
        text.take(p, o, w, one, in.left() > 1);
    } else if (in.left() >= needed) {
        r.fast(p, o, w, one);
    } else {
        return r.end(JKC_EUEXPEOD);
    }
    in.p += p - in.p;
    return Flow::kNext;
}

} // namespace jkc
