// The loop that joins a reader and a writer to a converter.
//
// A reader knows one source family, a writer one target family:
//
//   Reader::kLookAhead      bytes that must be visible at once, where the input has them
//   Reader::kLongestStep    bytes that one step of fast() consumes at most
//   Reader::fast(p, o, w, steps)
//                           one step on the common road, with kLookAhead bytes visible at p and no need to look at
//                           the room for output. Returns false, and does nothing, where step() must look closer.
//                           May take several steps at once and lowers `steps` by the additional ones.
//   Reader::step(in, out, o, w)
//                           one step on any road, with one byte visible at least: Flow::kNext, or Flow::kEnd with
//                           `status` set, or Flow::kAnswered with the writer's answer in `status`.
//   Reader::resting()       whether fast() may run just now
//   Reader::stopped(in, o, w)
//                           the writer has answered EUEXPEOD: what is written in front of the closing sequence, and
//                           the status with which the conversion ends.
//   Writer::kFlushAbove     pending bytes above which output is handed over
//   Writer::kLongestStep    bytes that one step writes at most
//   Writer::finish(o)       closes the output
#pragma once

#include <algorithm>

#include "convert/nochar.h"
#include "convert/output.h"

namespace jkc {

enum class Flow : uint8_t { kNext, kEnd, kAnswered };

// What most readers have in common.
struct Reader {
    static constexpr bool kClosesAfterEnd = true; // a writer's EUEXPEOD is the end of the data, not an error

    static bool resting() { return true; }
    template <class Writer>
    static int32_t stopped(const BlockCursor & /*in*/, uint8_t *& /*o*/, Writer & /*w*/) {
        return JKC_EUEXPEOD;
    }

    Flow end(int32_t with) {
        status = with;
        return Flow::kEnd;
    }

    int32_t status = 0;
};

inline int32_t end_with(JkcContext *ctx, int32_t status) {
    ctx->sts = status;
    return status;
}

template <class Writer>
int32_t finish(JkcContext *ctx, const Output &out, uint8_t *o, Writer &w, int32_t status) {
    o = w.finish(o);
    const int32_t answer = out.pending(o) > 0 ? out.hand_over(o) : 0;
    return end_with(ctx, answer != 0 ? answer : status);
}

// Converts what `in` has left; `o` is where output goes on.
template <class Source, class Writer>
int32_t convert_blocks(JkcContext *ctx, BlockCursor &in, const Output &out, uint8_t *o, Source &r, Writer &w) {
    for (;;) {
        in.ensure(Source::kLookAhead);
        if (in.at_end()) {
            return finish(ctx, out, o, w, JKC_SUCCESS);
        }
        Flow flow = Flow::kNext;
        if (out.full(o)) {
            r.status = out.hand_over(o);
            if (r.status == 0) {
                o = out.begin();
            } else {
                flow = Flow::kAnswered;
            }
        }
        if (flow == Flow::kNext) {
            size_t steps = in.left() < Source::kLookAhead || !r.resting()
                               ? 0
                               : std::min(out.safe_steps(o, Writer::kLongestStep),
                                          (in.left() - Source::kLookAhead) / Source::kLongestStep + 1);
            const uint8_t *p = in.p;
            const bool some = steps > 0;
            while (steps > 0 && r.fast(p, o, w, steps)) {
                --steps;
            }
            in.p += p - in.p;
            if (some && steps == 0) {
                continue;
            }
            flow = r.step(in, out, o, w);
        }
        if (flow == Flow::kEnd) {
            return finish(ctx, out, o, w, r.status);
        }
        if (flow == Flow::kAnswered) {
            if (r.status != JKC_EUEXPEOD || !Source::kClosesAfterEnd) {
                return end_with(ctx, r.status);
            }
            const int32_t status = r.stopped(in, o, w);
            return finish(ctx, out, o, w, status);
        }
    }
}

// A converter: from the first block to the end, behind a byte-order mark where one is asked for.
template <class Source, class Writer>
int32_t convert(JkcContext *ctx, bool add_bom = false) {
    reset_nochar(*ctx);
    BlockCursor in(ctx);
    const Output out(ctx, Writer::kFlushAbove);
    Writer w(ctx);
    Source r(ctx);
    uint8_t *o = out.begin();
    if constexpr (Writer::kHasMark) {
        if (add_bom) {
            o = w.mark(o);
        }
    }
    return convert_blocks(ctx, in, out, o, r, w);
}

} // namespace jkc
