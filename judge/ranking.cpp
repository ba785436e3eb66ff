#include "judge/ranking.h"

int _tcompare(const void *a, const void *b) {
    const auto *left = *static_cast<const jkc::Candidate *const *>(a);
    const auto *right = *static_cast<const jkc::Candidate *const *>(b);
    return left->errors != right->errors ? left->errors - right->errors : right->score - left->score;
}

namespace jkc {

namespace {

// Counters of a candidate that is out of the set: it sorts last.
constexpr int32_t kImpossibleValid = -0x40000000;
constexpr int32_t kImpossibleErrors = 0x3FFFFFFF;

using Ranked = Candidate *[kCandidates];

// A stable sort, so that equal candidates keep their order everywhere.
void sort(Ranked &ranked) {
    for (int i = 1; i < kCandidates; ++i) {
        Candidate *moving = ranked[i];
        int j = i;
        for (; j > 0 && _tcompare(static_cast<const void *>(&ranked[j - 1]), static_cast<const void *>(&moving)) > 0;
             --j) {
            ranked[j] = ranked[j - 1];
        }
        ranked[j] = moving;
    }
}

Verdict single(int code_type) { return {code_type, Verdict::Kind::kSingle}; }
Verdict several(int32_t set) { return {set, Verdict::Kind::kSet}; }

// Among candidates without errors the preferred one wins.
bool preferred_is_clean(const Ranked &ranked, int preferred) {
    for (const Candidate *candidate : ranked) {
        if (candidate->errors > 0) {
            return false;
        }
        if (candidate->type == preferred) {
            return true;
        }
    }
    return false;
}

// UTF-16 with errors is no partner in a tie.
int32_t without_faulty_utf16(const Ranked &ranked, int32_t possible) {
    for (const Candidate *candidate : ranked) {
        const bool utf16 = candidate->type == JKC_TYPE_UTF16BE || candidate->type == JKC_TYPE_UTF16LE;
        if (utf16 && candidate->errors > 0) {
            possible &= ~candidate->mask;
        }
    }
    return possible;
}

// The candidates from the first one on that nothing tells apart.
Verdict tie(const Ranked &ranked, int32_t set, int preferred) {
    set &= kAsciiBit;
    for (int i = 0; i < kCandidates; ++i) {
        const Candidate &candidate = *ranked[i];
        if (candidate.type == preferred) {
            return single(preferred);
        }
        set |= candidate.mask;
        if (i + 1 == kCandidates || candidate.valid > ranked[i + 1]->valid ||
            candidate.errors < ranked[i + 1]->errors) {
            break;
        }
    }
    return several(set);
}

} // namespace

Verdict rank(Candidate (&candidates)[kCandidates], int32_t possible, int64_t total, int preferred) {
    Ranked ranked;
    for (int i = 0; i < kCandidates; ++i) {
        Candidate &candidate = candidates[i];
        if ((possible & candidate.mask) != 0) {
            candidate.score = candidate.kana + candidate.valid - candidate.penalty;
        } else {
            candidate.valid = kImpossibleValid;
            candidate.errors = kImpossibleErrors;
        }
        ranked[i] = &candidate;
    }
    sort(ranked);
    const Candidate &best = *ranked[0];
    const Candidate &second = *ranked[1];

    if (best.errors >= kTooManyErrors) {
        return several(-1);
    }
    if (preferred_is_clean(ranked, preferred)) {
        return single(preferred);
    }
    if (!is_tolerable(best.errors, total)) {
        return several(-1);
    }
    if (best.errors < second.errors) {
        return single(best.type);
    }
    const int32_t set = without_faulty_utf16(ranked, possible);
    if (best.score > second.score) {
        const int32_t plain_or_utf16 = set & (kAsciiBit | kUtf16BeBit | kUtf16LeBit);
        const bool utf16 = best.type == JKC_TYPE_UTF16BE || best.type == JKC_TYPE_UTF16LE;
        if (utf16 && (plain_or_utf16 & kAsciiBit) != 0 && plain_or_utf16 != kAsciiBit) {
            // 7-bit text that reads as UTF-16 too.
            return {plain_or_utf16, Verdict::Kind::kCheckedSet};
        }
        return single(best.type);
    }
    if (best.kana > second.kana) {
        return single(best.type);
    }
    if (best.penalty == 0 && second.penalty >= 1) {
        return several(best.mask);
    }
    return tie(ranked, set, preferred);
}

} // namespace jkc
