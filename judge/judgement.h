// One judgement: the scanners, fed block by block, and what follows from their evidence.
#pragma once

#include "judge/ranking.h"
#include "judge/scan/euc.h"
#include "judge/scan/sjis.h"
#include "judge/scan/utf16.h"
#include "judge/scan/utf8.h"

namespace jkc {

// A candidate that can no longer win is not counted any further: its scanner only watches what else it tells. The
// result is the same, but for the set of possible candidates.
enum class Counting : uint8_t {
    kToTheEnd,    // everything is counted
    kEucToTheEnd, // the EUC flavours are, which makes the set right
    kWhileItCounts,
};

class Judgement {
public:
    Judgement(JkcContext *ctx, int preferred, bool plain_is_preferred, Counting counting)
        : ctx_(ctx), preferred_(preferred), plain_is_preferred_(plain_is_preferred), counting_(counting),
          sjis_(*ctx, counting == Counting::kToTheEnd), euc_(ctx), utf16_(counting != Counting::kToTheEnd) {}

    // Feeds a block: data from block.start to block.end, in front of it in the headroom the bytes that the scanners
    // left over. Returns true when the answer stands, in `verdict`.
    bool take_block(JkcBlock &block, bool last);

    // What the end of the input decides, once the last block is taken. Fills `possible` and `verdict`.
    void decide();

    Verdict verdict{-1, Verdict::Kind::kSet};
    // Whether `possible` is what counting to the end would give.
    bool set_is_right() const { return set_is_right_; }

    int32_t possible = -1; // the set of candidates that could win; -1 as long as none is known

private:
    template <class Scan, class Watch>
    void feed(int32_t &start, JkcBlock &block, bool last, Scan scan, Watch watch);
    void feed_euc(JkcBlock &block, bool last);
    void feed_utf16(JkcBlock &block, bool last);
    void feed_utf8(JkcBlock &block, bool last);
    void raise_flags() const;
    int32_t narrow_euc();
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
