#include "judge/ranking.h"

namespace {

// A record that _tcompare() orders.
struct CandidateRecord {
    int32_t type;
    int32_t mask;
    int32_t valid;
    int32_t unused4;
    int32_t errors;
    int32_t kana;
    int32_t penalty;
    int32_t score;
    int32_t unused9;
};

// Wraps instead of overflowing.
int difference(int32_t a, int32_t b) { return static_cast<int>(static_cast<uint32_t>(a) - static_cast<uint32_t>(b)); }

} // namespace

// For callers outside. The ranking itself has counters of 64 bits and orders by ranks_before().
int _tcompare(const void *a, const void *b) {
    const auto *left = *static_cast<const CandidateRecord *const *>(a);
    const auto *right = *static_cast<const CandidateRecord *const *>(b);
    return left->errors != right->errors ? difference(left->errors, right->errors)
                                         : difference(right->score, left->score);
}

namespace jkc {

namespace {

// The counters of a candidate outside the set: it ranks last.
constexpr Evidence kImpossible{INT64_MIN, INT64_MAX, 0, 0};

using Ranked = Candidate *[kCandidates];

bool ranks_before(const Candidate &a, const Candidate &b) {
    return a.found.errors != b.found.errors ? a.found.errors < b.found.errors : a.score > b.score;
}

// Stable: equal candidates keep their order.
void sort(Ranked &ranked) {
    for (int i = 1; i < kCandidates; ++i) {
        Candidate *moving = ranked[i];
        int j = i;
        for (; j > 0 && ranks_before(*moving, *ranked[j - 1]); --j) {
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
        if (candidate->found.errors > 0) {
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
        if (utf16 && candidate->found.errors > 0) {
            possible &= ~candidate->mask;
        }
    }
    return possible;
}

// The first candidates, as far as nothing tells them apart.
Verdict tie(const Ranked &ranked, int32_t set, int preferred) {
    set &= kAsciiBit;
    for (int i = 0; i < kCandidates; ++i) {
        const Candidate &candidate = *ranked[i];
        if (candidate.type == preferred) {
            return single(preferred);
        }
        set |= candidate.mask;
        if (i + 1 == kCandidates || candidate.found.valid > ranked[i + 1]->found.valid ||
            candidate.found.errors < ranked[i + 1]->found.errors) {
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
            candidate.score = candidate.found.kana + candidate.found.valid - candidate.found.penalty;
        } else {
            candidate.found = kImpossible;
        }
        ranked[i] = &candidate;
    }
    sort(ranked);
    const Candidate &best = *ranked[0];
    const Candidate &second = *ranked[1];

    if (best.found.errors >= kTooManyErrors) {
        return several(-1);
    }
    if (preferred_is_clean(ranked, preferred)) {
        return single(preferred);
    }
    if (!is_tolerable(best.found.errors, total)) {
        return several(-1);
    }
    if (best.found.errors < second.found.errors) {
        return single(best.type);
    }
    const int32_t set = without_faulty_utf16(ranked, possible);
    if (best.score > second.score) {
        const int32_t ascii_or_utf16 = set & (kAsciiBit | kUtf16BeBit | kUtf16LeBit);
        const bool utf16 = best.type == JKC_TYPE_UTF16BE || best.type == JKC_TYPE_UTF16LE;
        if (utf16 && (ascii_or_utf16 & kAsciiBit) != 0 && ascii_or_utf16 != kAsciiBit) {
            // ASCII text that is UTF-16 too.
            return {ascii_or_utf16, Verdict::Kind::kCheckedSet};
        }
        return single(best.type);
    }
    if (best.found.kana > second.found.kana) {
        return single(best.type);
    }
    if (best.found.penalty == 0 && second.found.penalty >= 1) {
        return several(best.mask);
    }
    return tie(ranked, set, preferred);
}

} // namespace jkc
