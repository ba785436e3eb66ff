// The step of a conversion whose losses are counted.
//
// Such a decoder has besides what conversion.h tells:
//
//   Decoder::look(p, left, losses)  a strict look at what comes next. With the classic policy, what is kPlain, kCharacter
//                                   or kAscii loses nothing in step() where the target has the character
//   Decoder::classic_length(p, left)
//                                   bytes that step() consumes of what is lost
//   Decoder::put_character(o, e, c) a character that look() found, as fast() writes it; null, with nothing written, when
//                                   the target lacks it
//   Decoder::put_ascii(in, o, e)    what look() found to be kAscii
//   Decoder::resume(o)              what must be written in front of something that is plain
//   Decoder::put_mark(o, e, geta)   the mark that stands for a loss: '?', or the geta mark
//   Decoder::finish_pending(out, o, e)
//                                   writes what earlier steps have kept back; false when output must be handed over
#pragma once

#include "convert/conversion.h"
#include "core/unicode.h"

namespace jkc {

// The most that is written for a loss: an escape behind a designation, or the geta mark between two.
constexpr size_t kLongestForLoss = 16;

// Whether the target has the character.
template <class Decoder, class Encoder>
bool has_character(Decoder &d, const Encoder &e, uint32_t c) {
    Encoder trial = e;
    uint8_t scratch[2 * Encoder::kLongestStep];
    return d.put_character(scratch, trial, c) != nullptr;
}

template <class Decoder, class Encoder>
uint8_t *write_for_loss(const Losses &losses, Decoder &d, uint8_t *o, Encoder &e, uint32_t c) {
    switch (losses.policy()) {
    case JKC_ON_LOSS_ESCAPE:
        if (c != kNoCharacter) {
            const CharacterEscape escape = escape_character(c);
            for (uint8_t i = 0; i < escape.length; ++i) {
                o = e.ascii(o, escape.bytes[i]);
            }
            return o;
        }
        [[fallthrough]];
    case JKC_ON_LOSS_REPLACE:
        if constexpr (Encoder::kIsUnicode) {
            return e.put(o, kReplacement);
        } else {
            return d.put_mark(o, e, losses.writes_geta());
        }
    default:
        return o;
    }
}

template <class Decoder, class Encoder>
[[gnu::noinline]] Flow told_step(Losses &losses, int64_t at, Decoder &d, Input &in, const Output &out, uint8_t *&o,
                                 Encoder &e) {
    const auto end_pending = [&] { return d.finish_pending(out, o, e) ? d.end(losses.ends_with) : Flow::kFull; };
    if (losses.ends_with != 0) {
        return end_pending();
    }
    if (at < losses.known_until) {
        // Where the text ends, some steps pass more than what is lost.
        const int64_t more =
            losses.is_classic() ? at + static_cast<int64_t>(d.classic_length(in.p, in.left())) - losses.known_until : 0;
        if (more > 0) {
            losses.ends_with = losses.add(JKC_LOSS_ILL_FORMED, losses.known_until, in.p + (losses.known_until - at),
                                          static_cast<uint32_t>(more), -1);
            losses.known_until += more;
            if (losses.ends_with != 0) {
                return end_pending();
            }
        }
        return d.step(in, out, o, e);
    }
    Sequence seen = d.look(in.p, in.left(), losses);
    switch (seen.kind) {
    case Sequence::kPlain:
        o = d.resume(o);
        losses.known_until = at + seen.length;
        return d.step(in, out, o, e);
    case Sequence::kAscii:
        d.put_ascii(in, o, e);
        return Flow::kNext;
    case Sequence::kCharacter:
        if (losses.is_classic() && has_character(d, e, seen.c)) {
            losses.known_until = at + seen.length;
            return d.step(in, out, o, e);
        }
        [[fallthrough]];
    case Sequence::kToldOnly:
        if (!losses.is_classic() || seen.kind == Sequence::kToldOnly) {
            if (uint8_t *written = d.put_character(o, e, seen.c)) {
                o = written;
                in.p += seen.length;
                return Flow::kNext;
            }
        }
        seen.kind = Sequence::kUnmappable;
        break;
    default:
        break;
    }
    if (!losses.is_classic() && out.pending(o) > 0 && !out.has_room(o, kLongestForLoss)) {
        return Flow::kFull;
    }
    const JkcLossKind kind = seen.kind == Sequence::kUnmappable  ? JKC_LOSS_UNMAPPABLE
                             : seen.kind == Sequence::kTruncated ? JKC_LOSS_TRUNCATED
                                                                 : JKC_LOSS_ILL_FORMED;
    const size_t classic = losses.is_classic() ? d.classic_length(in.p, in.left()) : 0;
    const auto length = static_cast<uint32_t>(std::max<size_t>(seen.length, classic));
    losses.ends_with = losses.add(kind, at, in.p, length, static_cast<int32_t>(seen.c));
    losses.known_until = at + length;
    if (losses.ends_with != 0) {
        return end_pending();
    }
    if (losses.is_classic()) {
        return d.step(in, out, o, e);
    }
    o = write_for_loss(losses, d, o, e, seen.c);
    in.p += seen.length;
    return Flow::kNext;
}

} // namespace jkc
