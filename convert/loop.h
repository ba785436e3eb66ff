// The loop that joins a decoder and an encoder to a converter.
//
// A decoder knows one source family, an encoder one target family:
//
//   Decoder::kLookAhead      bytes that must be visible at once, where the input has them
//   Decoder::kLongestStep    bytes that one step of fast() consumes at most
//   Decoder::fast(p, o, e, steps)
//                            one step without any check: kLookAhead bytes are visible at p, and the output has room.
//                            Returns false, and does nothing, where step() must look closer. May take several steps
//                            at once and lowers `steps` by the additional ones.
//   Decoder::step(in, out, o, e)
//                            one step with every check, one byte at least being visible: Flow::kNext, or Flow::kEnd
//                            with `status` set, or Flow::kAnswered with the writer's answer in `status`.
//   Decoder::resting()       whether fast() may run now
//   Decoder::stopped(in, o, e)
//                            the writer has answered EUEXPEOD: writes what comes before the closing sequence, and
//                            returns the status with which the conversion ends.
//   Encoder::kIsUnicode      whether the target is a Unicode form: it may begin with a BOM
//   Encoder::kFlushAbove     pending bytes above which output is handed over
//   Encoder::kLongestStep    bytes that one step writes at most
//   Encoder::finish(o)       closes the output
#pragma once

#include <algorithm>

#include "convert/output.h"
#include "convert/unmappable.h"

namespace jkc {

enum class Flow : uint8_t { kNext, kEnd, kAnswered };

// What most decoders have in common.
struct DecoderBase {
    static constexpr bool kClosesAfterEnd = true; // a writer's EUEXPEOD is the end of the data, not an error

    static bool resting() { return true; }
    template <class Encoder>
    static int32_t stopped(const BlockCursor & /*in*/, uint8_t *& /*o*/, Encoder & /*e*/) {
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

template <class Encoder>
int32_t finish(JkcContext *ctx, const Output &out, uint8_t *o, Encoder &e, int32_t status) {
    o = e.finish(o);
    const int32_t answer = out.pending(o) > 0 ? out.hand_over(o) : 0;
    return end_with(ctx, answer != 0 ? answer : status);
}

// Converts what is left of the input; `o` is where output goes on.
template <class Decoder, class Encoder>
int32_t convert_blocks(JkcContext *ctx, BlockCursor &in, const Output &out, uint8_t *o, Decoder &d, Encoder &e) {
    for (;;) {
        in.ensure(Decoder::kLookAhead);
        if (in.at_end()) {
            return finish(ctx, out, o, e, JKC_SUCCESS);
        }
        Flow flow = Flow::kNext;
        if (out.full(o)) {
            d.status = out.hand_over(o);
            if (d.status == 0) {
                o = out.begin();
            } else {
                flow = Flow::kAnswered;
            }
        }
        if (flow == Flow::kNext) {
            size_t steps = in.left() < Decoder::kLookAhead || !d.resting()
                               ? 0
                               : std::min(out.safe_steps(o, Encoder::kLongestStep),
                                          (in.left() - Decoder::kLookAhead) / Decoder::kLongestStep + 1);
            const uint8_t *p = in.p;
            const bool some = steps > 0;
            while (steps > 0 && d.fast(p, o, e, steps)) {
                --steps;
            }
            in.p += p - in.p;
            if (some && steps == 0) {
                continue;
            }
            flow = d.step(in, out, o, e);
        }
        if (flow == Flow::kEnd) {
            return finish(ctx, out, o, e, d.status);
        }
        if (flow == Flow::kAnswered) {
            if (d.status != JKC_EUEXPEOD || !Decoder::kClosesAfterEnd) {
                return end_with(ctx, d.status);
            }
            const int32_t status = d.stopped(in, o, e);
            return finish(ctx, out, o, e, status);
        }
    }
}

// A converter: from the first block to the end, behind a byte-order mark where one is asked for.
template <class Decoder, class Encoder>
int32_t convert(JkcContext *ctx, bool add_bom = false) {
    reset_unmappable(*ctx);
    BlockCursor in(ctx);
    const Output out(ctx, Encoder::kFlushAbove);
    Encoder e(ctx);
    Decoder d(ctx);
    uint8_t *o = out.begin();
    if constexpr (Encoder::kIsUnicode) {
        if (add_bom) {
            o = e.bom(o);
        }
    }
    return convert_blocks(ctx, in, out, o, d, e);
}

} // namespace jkc
