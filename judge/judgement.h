// One judgement. judge() gives it the input block by block. It feeds each block to the scanners (judge/scan/), one for
// each family of encodings, and ranks the candidates by their evidence at the end.
#pragma once

#include "judge/input/line_ends.h"
#include "judge/ranking.h"
#include "judge/scan/euc.h"
#include "judge/scan/sjis.h"
#include "judge/scan/utf16.h"
#include "judge/scan/utf8.h"

namespace jkc {

// The scanner of an eliminated candidate stops counting and only watches for what it must still tell. The verdict is
// the same, but for the set of possible candidates.
enum class Counting : uint8_t {
    kToTheEnd,    // everything is counted
    kEucToTheEnd, // what tells the EUC variants apart is, which makes the set right
    kWhileItCounts,
};

class Judgement {
public:
    Judgement(JkcContext *ctx, int preferred, bool plain_is_preferred, Counting counting)
        : ctx_(ctx), preferred_(preferred), plain_is_preferred_(plain_is_preferred), counting_(counting),
          sjis_(*ctx, counting == Counting::kToTheEnd), euc_(ctx), utf16_(counting != Counting::kToTheEnd) {}

    // Feeds a block to the scanners: from block.start to block.end, and in front of that, in the headroom, the bytes
    // that they left over. Returns true when that decides `verdict`.
    bool take_block(JkcBlock &block, bool last);

    // Decides `possible` and `verdict`, once the last block is taken.
    void decide();

    Verdict verdict{-1, Verdict::Kind::kSet};
    // Whether `possible` is what counting to the end would give.
    bool set_is_right() const { return set_is_right_; }

    int32_t possible = -1; // the set of candidates that could win; -1 before decide()

    // What is found so far, in the order of kCandidateTypes.
    using Found = Evidence[kCandidates];
    void tell(Found &found) const;
    // Gathers the line ends of a piece, in the units of every code type that the verdict may still be.
    void take_line_ends(const uint8_t *p, const uint8_t *end, LineEnds &line_ends) const;

private:
    template <class Scan, class Watch>
    void feed(int32_t &start, JkcBlock &block, bool last, Scan scan, Watch watch);
    void feed_euc(JkcBlock &block, bool last);
    void feed_utf16(JkcBlock &block, bool last);
    void feed_utf8(JkcBlock &block, bool last);
    void raise_flags() const;
    int32_t narrow_euc() const;
    bool weigh_utf16();
    void balance_utf16();
    void reduce_big_endian();

    JkcContext *ctx_;
    int preferred_;
    bool plain_is_preferred_;
    Counting counting_;
    bool set_is_right_ = true;
    int64_t total_ = 0; // bytes in the blocks taken before
    SjisScanner sjis_;
    EucScanner euc_;
    Utf16Scanner utf16_;
    Utf8Scanner utf8_;
};

} // namespace jkc
