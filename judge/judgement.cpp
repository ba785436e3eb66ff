#include "judge/judgement.h"

#include <algorithm>
#include <cstring>

namespace jkc {

namespace {

// The scanners' places in JkcBlock::scan_start.
enum ScanStart : uint8_t { kFromSjis, kFromEuc, kFromUtf16, kFromUtf8 };

// In the first block a scanner is asked after this many bytes whether its encoding is eliminated, and then after half as
// many again as it has seen, these at least. Mostly that is settled there; later it is asked once a block.
constexpr ptrdiff_t kSlice = 64;

} // namespace

// Feeds a block to a scanner: in slices to its scan() until the encoding is eliminated, the rest to its watch(). Both
// return where they stopped; watch() returns null as long as the encoding is not eliminated.
template <class Scan, class Watch>
void Judgement::feed(int32_t &start, JkcBlock &block, bool last, Scan scan, Watch watch) {
    const uint8_t *p = block.data + start;
    const uint8_t *const end = block.data + block.end;
    ptrdiff_t slice = total_ == 0 ? kSlice : sizeof block.data;
    const uint8_t *slice_end = p;
    while (slice_end != end) {
        const uint8_t *watched = watch(p, end);
        if (watched != nullptr) {
            p = watched;
            break;
        }
        slice_end = end - slice_end > slice ? slice_end + slice : end;
        p = scan(p, slice_end, last && slice_end == end);
        slice = std::max(slice, (slice_end - (block.data + JKC_BLOCK_HEADROOM)) / 2);
    }
    start = JKC_BLOCK_HEADROOM - static_cast<int32_t>(end - p);
}

// Escape sequences count only until Shift_JIS is eliminated. NULs only lower the byte order of UTF-16 that has more
// errors, which cannot win anyway.
void Judgement::feed_sjis(JkcBlock &block, bool last) {
    feed(
        block.scan_start[kFromSjis], block, last,
        [this](const uint8_t *p, const uint8_t *end, bool at_end) { return sjis_.scan(p, end, at_end); },
        [this](const uint8_t * /*p*/, const uint8_t *end) -> const uint8_t * {
            const bool is_out = counting_ != Counting::kToTheEnd && sjis_.found.errors >= kTooManyErrors;
            return is_out || sjis_.jis2004 ? end : nullptr;
        });
}

void Judgement::feed_euc(JkcBlock &block, bool last) {
    feed(
        block.scan_start[kFromEuc], block, last,
        [this](const uint8_t *p, const uint8_t *end, bool at_end) { return euc_.scan(p, end, at_end); },
        [this, last](const uint8_t *p, const uint8_t *end) -> const uint8_t * {
            if (counting_ == Counting::kToTheEnd || !euc_.is_eliminated()) {
                return nullptr;
            }
            if (counting_ == Counting::kEucToTheEnd) {
                return euc_.compare(p, end, last);
            }
            set_is_right_ = false;
            return euc_.watch(p, end);
        });
}

void Judgement::feed_utf16(JkcBlock &block, bool last) {
    feed(
        block.scan_start[kFromUtf16], block, last,
        [this](const uint8_t *p, const uint8_t *end, bool at_end) { return utf16_.scan(p, end, at_end); },
        [this, last](const uint8_t *p, const uint8_t *end) -> const uint8_t * {
            if (counting_ == Counting::kToTheEnd || !utf16_.is_eliminated()) {
                return nullptr;
            }
            // ASCII text has no surrogates in either byte order, and of the combining marks only U+0306 and U+0308.
            const bool marks = sjis_.non_ascii || memchr(p, 0x03, static_cast<size_t>(end - p)) != nullptr;
            return utf16_.watch(p, end, last,
                                {ctx_->srg_exists == 0 && sjis_.non_ascii, ctx_->utfmac_exists == 0 && marks});
        });
}

void Judgement::feed_utf8(JkcBlock &block, bool last) {
    feed(
        block.scan_start[kFromUtf8], block, last,
        [this](const uint8_t *p, const uint8_t *end, bool at_end) { return utf8_.scan(p, end, at_end); },
        [this](const uint8_t *p, const uint8_t *end) -> const uint8_t * {
            if (counting_ == Counting::kToTheEnd || !utf8_.is_eliminated(p, end)) {
                return nullptr;
            }
            return utf8_.watch(p, end, {ctx_->srg_exists == 0, ctx_->utfmac_exists == 0});
        });
    utf8_.settle();
}

bool Judgement::take_block(JkcBlock &block, bool last) {
    const uint8_t *data = block.data + block.start;
    const uint8_t *end = block.data + block.end;
    sjis_.origin = euc_.origin = utf16_.origin = utf8_.origin = {data, total_};

    feed_sjis(block, last);
    if (sjis_.jis2004) {
        verdict = {JKC_TYPE_JIS2004, Verdict::Kind::kSingle};
        return true;
    }
    const int64_t total = total_ + (end - data);
    if (last && is_tolerable(sjis_.found.errors, total) && (sjis_.jis_escape || plain_is_preferred_)) {
        verdict = {sjis_.jis_escape ? static_cast<int>(JKC_TYPE_JIS) : preferred_, Verdict::Kind::kSingle};
        return true;
    }
    if (sjis_.non_ascii) {
        feed_euc(block, last);
    }
    feed_utf16(block, last);
    if (sjis_.non_ascii) {
        feed_utf8(block, last);
    }
    raise_flags();
    total_ = total;
    return false;
}

void Judgement::take_line_ends(const uint8_t *p, const uint8_t *end, LineEnds &line_ends) const {
    line_ends.bytes.take(p, end);
    // Plain text may be taken for the UTF-16 that is preferred.
    if (plain_is_preferred_ || !Utf16Scanner::is_eliminated(utf16_.big)) {
        line_ends.big.take(p, end);
    }
    if (plain_is_preferred_ || !Utf16Scanner::is_eliminated(utf16_.little)) {
        line_ends.little.take(p, end);
    }
}

void Judgement::raise_flags() const {
    if (utf16_.big.surrogates > 0 || utf16_.little.surrogates > 0 || utf8_.four_byte > 0) {
        ctx_->srg_exists = 1;
    }
    if (utf16_.big.decomposed > 0 || utf16_.little.decomposed > 0 || utf8_.decomposed > 0) {
        ctx_->utfmac_exists = 1;
    }
}

// Drops the EUC variants that have nothing of their own or the same as another one. Returns the set that is left.
int32_t Judgement::narrow_euc() const {
    const auto &[euc1, euc2, euc3] = euc_.own;
    static_assert(EucScanner::kCp20932 == 0 && EucScanner::kCp51932 == 1 && EucScanner::kEucMs == 2);

    int32_t set = kNonAsciiSet;
    const auto drop = [&set](int type) { set &= ~judged_bit(type); };
    const auto has = [&set](int type) { return (set & judged_bit(type)) != 0; };
    const auto equal = [](const Evidence &a, const Evidence &b) { return a.valid == b.valid && a.errors == b.errors; };
    if (preferred_ != JKC_TYPE_EUC_20932 && euc1.valid == 0) {
        drop(JKC_TYPE_EUC_20932);
    }
    if (preferred_ != JKC_TYPE_EUC_51932 && euc2.valid == 0) {
        drop(JKC_TYPE_EUC_51932);
    }
    if (preferred_ != JKC_TYPE_EUC_MS && (euc3.valid == 0 || (has(JKC_TYPE_EUC_20932) && equal(euc1, euc3)) ||
                                          (has(JKC_TYPE_EUC_51932) && equal(euc2, euc3)))) {
        drop(JKC_TYPE_EUC_MS);
    }
    return set;
}

void Judgement::tell(Found &found) const {
    const Evidence *const all[] = {&sjis_.found,
                                   &euc_.found,
                                   &euc_.own[EucScanner::kCp20932],
                                   &euc_.own[EucScanner::kCp51932],
                                   &euc_.own[EucScanner::kEucMs],
                                   &utf16_.big.found,
                                   &utf16_.little.found,
                                   &utf8_.found};
    for (int i = 0; i < kCandidates; ++i) {
        found[i] = *all[i];
        if (kCandidateTypes[i] >= JKC_TYPE_EUC_20932 && kCandidateTypes[i] <= JKC_TYPE_EUC_MS) {
            found[i].valid += euc_.found.valid; // what every variant has
            found[i].kana += euc_.found.kana;
        }
    }
}

void Judgement::reduce_big_endian() { utf16_.big.found.valid -= sjis_.big_units + utf16_.little.surrogates; }

// What one byte order finds in code units and pairs of the other is no evidence.
void Judgement::balance_utf16() {
    Evidence &big = utf16_.big.found;
    Evidence &little = utf16_.little.found;
    if (little.errors < big.errors) {
        reduce_big_endian();
    } else if (little.errors > big.errors) {
        little.valid -= sjis_.little_units + utf16_.big.surrogates;
    } else if (utf16_.big.surrogates > utf16_.little.surrogates) {
        big.valid += utf16_.big.surrogates;
    } else if (utf16_.little.surrogates > utf16_.big.surrogates) {
        little.valid += utf16_.little.surrogates;
    }
}

// Input of ASCII without NUL is ASCII unless it is UTF-16 too. Returns true when it is ASCII alone.
bool Judgement::weigh_utf16() {
    const Evidence &big = utf16_.big.found;
    const Evidence &little = utf16_.little.found;
    if (big.valid == 0 && little.valid == 0) {
        return true;
    }
    if (big.errors == 0) {
        if (little.errors >= 1 && preferred_ != JKC_TYPE_UTF16LE) {
            possible &= ~kUtf16LeBit;
        }
        balance_utf16();
        return false;
    }
    if (little.errors > 0) {
        return true;
    }
    if (preferred_ != JKC_TYPE_UTF16BE) {
        possible &= ~kUtf16BeBit;
    }
    if (big.valid != 0 && (preferred_ == JKC_TYPE_UTF16BE || preferred_ == JKC_TYPE_UTF16LE)) {
        reduce_big_endian();
        if (preferred_ == JKC_TYPE_UTF16BE) {
            return false;
        }
    }
    balance_utf16();
    return false;
}

void Judgement::decide() {
    if (sjis_.non_ascii) {
        possible = narrow_euc();
        if (utf8_.found.valid == 0) {
            possible &= ~judged_bit(JKC_TYPE_UTF8);
        }
        balance_utf16();
    } else {
        possible = kAsciiSet;
        if (weigh_utf16()) {
            verdict = {JKC_TYPE_ASCII, Verdict::Kind::kSingle};
            return;
        }
    }

    Found found;
    tell(found);
    Candidate candidates[kCandidates] = {};
    for (int i = 0; i < kCandidates; ++i) {
        candidates[i].type = kCandidateTypes[i];
        candidates[i].mask = judged_bit(kCandidateTypes[i]);
        candidates[i].found = found[i];
    }
    verdict = rank(candidates, possible, total_, preferred_);
}

} // namespace jkc
