// A conversion that goes on where it stopped: a decoder, an encoder, and the loop that joins them.
//
// A decoder knows one source family, an encoder one target family:
//
//   Decoder::kLookAhead      bytes that must be visible at once, where the input has them
//   Decoder::kLongestStep    bytes that one step of fast() consumes at most
//   Decoder::fast(p, o, e, steps)
//                            one step without any check: kLookAhead bytes are visible at p, and the output has room.
//                            Returns false, and does nothing, where step() must look closer: it takes nothing that is
//                            lost, so that losses concern step() alone. May take several steps at once and lowers `steps` by the additional ones, never to 0. What calls the encoder
//                            twice counts as two, if two are left.
//   Decoder::step(in, out, o, e)
//                            one step with every check, one byte at least being visible
//   Decoder::resting()       whether fast() may run now
//   Decoder::stop(in, o, e)  the writer wants no more in good order: writes what comes before the closing sequence, and
//                            returns the status with which the conversion ends
// What an encoder must have is told in encoder_base.h, what a decoder besides, to have its losses counted, in told_step.h.
#pragma once

#include <algorithm>
#include <new>

#include "convert/input.h"
#include "convert/kernel_run.h"
#include "convert/losses.h"
#include "convert/output.h"
#include "convert/sequences.h"
#include "convert/unmappable.h"

namespace jkc {

// What a step says: go on, the conversion ends with `status`, or output must be handed over before the step goes on.
enum class Flow : uint8_t { kNext, kEnd, kFull };

constexpr uint32_t kGetaMark = 0x3013;

// What most decoders have in common.
struct DecoderBase {
    static constexpr bool kHasKernel = false;     // else it has what kernel_run.h asks for
    static constexpr bool kCountsLosses = true;   // it has what told_step.h asks for
    static constexpr bool kClosesAfterEnd = true; // a writer's EUEXPEOD is the end of the data, not an error

    static bool resting() { return true; }
    // Where the classic way is not asked for: what the encoders here write is read as they mean it.
    static void read_as_written() {}
    // The character at p that look() found to be plain.
    static uint32_t plain_character(const uint8_t *p) { return *p; }
    template <class Encoder>
    static int32_t stop(const Input & /*in*/, uint8_t *& /*o*/, Encoder & /*e*/) {
        return JKC_EUEXPEOD;
    }

    Flow end(int32_t with) {
        status = with;
        return Flow::kEnd;
    }

    // What most need in told_step.h.
    static uint8_t *resume(uint8_t *o) { return o; }
    template <class Encoder>
    static void put_ascii(Input & /*in*/, uint8_t *& /*o*/, Encoder & /*e*/) {}
    template <class Encoder>
    static uint8_t *put_mark(uint8_t *o, Encoder &e, bool geta) {
        return geta ? e.put(o, kGetaMark) : e.ascii(o, '?');
    }
    template <class Encoder>
    static bool finish_pending(const Output & /*out*/, uint8_t *& /*o*/, Encoder & /*e*/) {
        return true;
    }

    int32_t status = 0;
};

// As Decoder::step() of the same state, for a conversion whose losses are counted: told_step.h.
template <class Decoder, class Encoder>
Flow told_step(Losses &losses, int64_t at, Decoder &d, Input &in, const Output &out, uint8_t *&o, Encoder &e);

// Why a conversion stopped.
enum class Stop : uint8_t {
    kInput,  // it needs more input than is visible, and what is left of it once more
    kOutput, // more is pending than may be
    kEnd     // it has ended with `status`; what is pending is the last output
};

// Any pair of a decoder and an encoder.
class Conversion {
public:
    Stop run(Input &in) { return run_(*this, in); }
    // The writer has answered EUEXPEOD. False: an error as any other; else it has ended with `status`.
    bool stop(const Input &in) { return stop_(*this, in); }

    size_t pending() const { return out.pending(o); }
    void clear_pending() { o = out.begin(); }

    Output out;
    uint8_t *o; // where output goes on
    int32_t status = JKC_SUCCESS;

protected:
    using Run = Stop(Conversion &, Input &);
    using StopRun = bool(Conversion &, const Input &);
    Conversion(Run *run, StopRun *stop, const Output &output)
        : out(output), o(output.begin()), run_(run), stop_(stop) {}

private:
    Run *run_;
    StopRun *stop_;
};

template <class Decoder, class Encoder>
class ConversionOf : public Conversion {
public:
    // Without `losses` none are counted.
    ConversionOf(JkcContext *ctx, uint8_t *area, const Encoder &encoder, Losses *losses)
        : Conversion(run_this, stop_this, Output(area, Encoder::kFlushAbove)), ctx_(ctx), losses_(losses), e_(encoder),
          d_(ctx) {
        if (losses != nullptr && !losses->is_classic()) {
            e_.stay_in_table();
            d_.read_as_written();
        }
    }

    void write_bom() { o = e_.bom(o); }

private:
    static Stop run_this(Conversion &conversion, Input &input) {
        auto &self = static_cast<ConversionOf &>(conversion);
        // Copies, which no store into the output can alias.
        const Output out = self.out;
        Encoder e = self.e_;
        Decoder d = self.d_;
        Input in = input;
        uint8_t *o = self.o;
        Losses *const losses = self.losses_;
        KernelRunOf<Decoder, Encoder> kernels(d, e);
        Stop stop;
        for (;;) {
            if (!in.last && in.left() < Decoder::kLookAhead) {
                stop = Stop::kInput;
                break;
            }
            if (in.at_end()) {
                d.status = JKC_SUCCESS;
                stop = in.stays_open ? Stop::kInput : Stop::kEnd;
                break;
            }
            if (out.full(o)) {
                stop = Stop::kOutput;
                break;
            }
            const bool is_known = losses != nullptr && position_of(*self.ctx_, in.p) < losses->known_until;
            size_t steps = 0;
            if (in.left() >= Decoder::kLookAhead && !is_known && d.resting()) {
                const size_t most = kernels.take(d, in, out, o, e);
                if (in.left() < Decoder::kLookAhead) {
                    continue;
                }
                steps = std::min({most, out.safe_steps(o, Encoder::kLongestStep),
                                  (in.left() - Decoder::kLookAhead) / Decoder::kLongestStep + 1});
            }
            const uint8_t *p = in.p;
            const bool some = steps > 0;
            while (steps > 0 && d.fast(p, o, e, steps)) {
                --steps;
            }
            in.p = p;
            if (some && steps == 0) {
                continue;
            }
            const Flow flow = losses != nullptr ? self.told(in, o, d, e) : d.step(in, out, o, e);
            if (flow != Flow::kNext) {
                stop = flow == Flow::kEnd ? Stop::kEnd : Stop::kOutput;
                break;
            }
        }
        input.p = in.p;
        self.o = stop == Stop::kEnd ? e.finish(o) : o;
        self.status = d.status;
        self.e_ = e;
        new (&self.d_) Decoder(d);
        return stop;
    }

    // On copies, so that the loop can keep its own in registers.
    [[gnu::always_inline]] Flow told(Input &in, uint8_t *&o, Decoder &d, Encoder &e) {
        Input in_then = in;
        uint8_t *o_then = o;
        Encoder e_then = e;
        Decoder d_then = d;
        Flow flow = Flow::kNext;
        if constexpr (Decoder::kCountsLosses) {
            flow = told_step(*losses_, position_of(*ctx_, in.p), d_then, in_then, out, o_then, e_then);
        }
        in = in_then;
        o = o_then;
        e = e_then;
        new (&d) Decoder(d_then);
        return flow;
    }

    static bool stop_this(Conversion &conversion, const Input &in) {
        auto &self = static_cast<ConversionOf &>(conversion);
        if (!Decoder::kClosesAfterEnd) {
            return false;
        }
        if (self.losses_ != nullptr && !self.losses_->is_classic()) { // nothing is lost here
            Encoder unused = self.e_;
            uint8_t *o = self.o;
            self.status = self.d_.stop(in, o, unused);
        } else {
            self.status = self.d_.stop(in, self.o, self.e_);
        }
        self.o = self.e_.finish(self.o);
        return true;
    }

    JkcContext *ctx_;
    Losses *losses_;
    Encoder e_;
    Decoder d_;
};

// Room for any conversion.
struct ConversionRoom {
    static constexpr size_t kSize = 256;
    alignas(std::max_align_t) uint8_t bytes[kSize];
};

// Makes a conversion in the room, whose output gathers in the area: behind a BOM where one is asked for.
using MakeConversion = Conversion *(ConversionRoom &room, JkcContext *ctx, uint8_t *area, bool add_bom, Losses *losses);

template <class Decoder, class Encoder>
Conversion *make_conversion(ConversionRoom &room, JkcContext *ctx, uint8_t *area, bool add_bom, Losses *losses) {
    using Made = ConversionOf<Decoder, Encoder>;
    static_assert(sizeof(Made) <= ConversionRoom::kSize);
    static_assert(Encoder::kFlushAbove + 2 * Encoder::kLongestStep + 1 <= sizeof(JkcBlock), "the work area overflows");
    auto *made = new (room.bytes) Made(ctx, area, Encoder(ctx), losses);
    if constexpr (Encoder::kIsUnicode) {
        if (add_bom) {
            made->write_bom();
        }
    }
    return made;
}

} // namespace jkc

#include "convert/told_step.h"
