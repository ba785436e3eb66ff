// The candidates that the judgement ranks.
#pragma once

#include "core/code_types.h"
#include "judge/scan/evidence.h"

namespace jkc {

// One candidate of the ranking.
struct Candidate {
    int32_t type;
    int32_t mask;
    Evidence found;
    int64_t score;
};

// The candidates in the order in which they start.
enum CandidateIndex : uint8_t { kSjis, kEuc, kEuc1, kEuc2, kEuc3, kUtf16Be, kUtf16Le, kUtf8, kCandidates };

constexpr int32_t kCandidateTypes[kCandidates] = {JKC_TYPE_SJIS,      JKC_TYPE_EUC,    JKC_TYPE_EUC_20932,
                                                  JKC_TYPE_EUC_51932, JKC_TYPE_EUC_MS, JKC_TYPE_UTF16BE,
                                                  JKC_TYPE_UTF16LE,   JKC_TYPE_UTF8};

constexpr int32_t kAsciiBit = judged_bit(JKC_TYPE_ASCII);
constexpr int32_t kUtf16BeBit = judged_bit(JKC_TYPE_UTF16BE);
constexpr int32_t kUtf16LeBit = judged_bit(JKC_TYPE_UTF16LE);

// The sets from which the judgement starts: every candidate, the bits between them that no code type has, and ASCII
// as long as the input is 7-bit.
constexpr int32_t kCodedSet = 0x15FF00;
constexpr int32_t kPlainSet = kCodedSet | kAsciiBit;

} // namespace jkc
