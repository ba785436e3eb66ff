// The candidates that the judgement ranks.
#pragma once

#include <iterator>

#include "core/code_types.h"
#include "judge/scan/evidence.h"

namespace jkc {

struct Candidate {
    int32_t type;
    int32_t mask;
    Evidence found;
    int64_t score;
};

// In the order in which equal candidates rank.
constexpr int32_t kCandidateTypes[] = {JKC_TYPE_SJIS,   JKC_TYPE_EUC,     JKC_TYPE_EUC_20932, JKC_TYPE_EUC_51932,
                                       JKC_TYPE_EUC_MS, JKC_TYPE_UTF16BE, JKC_TYPE_UTF16LE,   JKC_TYPE_UTF8};
constexpr int kCandidates = std::size(kCandidateTypes);

constexpr int32_t kAsciiBit = judged_bit(JKC_TYPE_ASCII);
constexpr int32_t kUtf16BeBit = judged_bit(JKC_TYPE_UTF16BE);
constexpr int32_t kUtf16LeBit = judged_bit(JKC_TYPE_UTF16LE);

// The sets from which the judgement starts: every candidate, the bits between them that no code type has, and ASCII if
// the input is ASCII.
constexpr int32_t kNonAsciiSet = 0x15FF00;
constexpr int32_t kAsciiSet = kNonAsciiSet | kAsciiBit;

} // namespace jkc
