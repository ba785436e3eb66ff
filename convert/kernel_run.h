// Takes clean text by the kernels, where the processor has some: everything that a step would only pass on.
#pragma once

#include <algorithm>

#include "convert/input.h"
#include "convert/output.h"
#include "core/bytes.h"
#include "kernels/kernels.h"

namespace jkc {

// A decoder with kernels has Decoder::kHasKernel and
//
//   kernel()                 the one that decodes, or null
//   look_up(units, count)    makes the decoded units characters; how many could be
//   kUnitWidth               the fewest bytes of a character, those of a line end too
//   width_at(p)              the bytes of a character that was decoded
//   text()                   its AsciiText
//   plain_character(p)       the ASCII character there
//
// and an encoder Encoder::kHasKernel, has_kernel() and encode(units, count, o). Both are there for pairs only whose
// characters pass as units of UTF-16.
template <class Decoder, class Encoder>
class KernelRun {
public:
    KernelRun(const Decoder &d, const Encoder &e) : decode_(e.has_kernel() ? d.kernel() : nullptr) {}

    // Takes text as long as kernels can; at least Decoder::kLookAhead bytes are visible, and the output is not full.
    // Every character taken is one that a step could begin with, so that output is handed over, and input carried over,
    // at the same places as without kernels. Returns the steps after which to try again.
    size_t take(const Decoder &d, Input &in, const Output &out, uint8_t *&o, Encoder &e) {
        if (decode_ == nullptr) {
            return SIZE_MAX;
        }
        const uint8_t *const limit = in.end - (Decoder::kLookAhead - 1);
        size_t taken = 0;
        size_t batch = kFirstBatch;
        bool stopped = false;
        while (!stopped && in.p < limit) {
            const size_t room = out.steps_with_room(o, Encoder::kLongestStep, kBytesBehind);
            if (room < kLeastRoom) {
                break;
            }
            const size_t most = std::min(room, batch) * Decoder::kUnitWidth;
            const uint8_t *until = static_cast<size_t>(limit - in.p) > most ? in.p + most : limit;
            uint16_t units[kMostTogether + kUnitsBehind];
            const Decoded decoded = decode_(in.p, until, d.text().line_end_stops(), units);
            size_t count = d.look_up(units, decoded.count);
            // A CR LF must not be torn, as a step takes both.
            count -= d.text().keeps_line_ends() && count > 0 && units[count - 1] == kCr ? 1 : 0;
            const Encoded encoded = e.encode(units, count, o);
            o = encoded.o;
            taken += encoded.count;
            stopped = decoded.stopped || encoded.count < decoded.count;
            in.p = encoded.count == decoded.count ? decoded.p : behind(in.p, encoded.count);
            batch = std::min(2 * batch, kMostTogether);
            if (decoded.ascii && !stopped) {
                if (Encoder::is_lossy(Decoder::plain_character(in.p))) [[unlikely]] {
                    stopped = true;
                    break;
                }
                size_t steps = std::min(out.safe_steps(o, kLongestLineEnd * Encoder::kAsciiWidth),
                                        static_cast<size_t>(limit - in.p - 1) / Decoder::kUnitWidth + 1);
                if (steps == 0) {
                    break;
                }
                d.text().take(in.p, o, e, steps);
                ++taken;
            }
        }
        if (!stopped) {
            return SIZE_MAX;
        }
        close_look_ = taken > kManyTaken ? kCloseLook : std::min(2 * close_look_, kLongestCloseLook);
        return close_look_;
    }

private:
    static constexpr size_t kFirstBatch = 64;
    static constexpr size_t kLongestLineEnd = 2; // characters
    static constexpr size_t kLeastRoom = 8;
    // What stopped the kernels stands alone mostly, else there is much of it, and kernels are of no use.
    static constexpr size_t kCloseLook = 4;
    static constexpr size_t kLongestCloseLook = 256;
    static constexpr size_t kManyTaken = 32;

    static const uint8_t *behind(const uint8_t *p, size_t characters) {
        for (; characters > 0; --characters) {
            p += Decoder::width_at(p);
        }
        return p;
    }

    Decode *decode_;
    size_t close_look_ = kCloseLook;
};

// For pairs that have no kernels.
struct NoKernelRun {
    NoKernelRun(const auto & /*d*/, const auto & /*e*/) {}
    static size_t take(const auto & /*d*/, Input & /*in*/, const Output & /*out*/, uint8_t *& /*o*/, auto & /*e*/) {
        return SIZE_MAX;
    }
};
template <class Decoder, class Encoder>
using KernelRunOf =
    std::conditional_t<Decoder::kHasKernel && Encoder::kHasKernel, KernelRun<Decoder, Encoder>, NoKernelRun>;

} // namespace jkc
