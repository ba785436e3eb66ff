// The records of evidence that the judgement keeps and ranks.
#pragma once

#include <cstdint>

#include "core/internal.h"

namespace jkc {

// What one scanner finds, in bytes unless said otherwise.
struct Evidence {
    int64_t valid = 0;   // of well-formed characters that the encoding has
    int64_t errors = 0;  // that cannot belong to the encoding
    int64_t kana = 0;    // bonus for hiragana and katakana
    int64_t penalty = 0; // suspicious isolated characters (a count)
};

// One candidate of the ranking. Nine 32-bit counters: _tcompare() is exported and takes these records.
struct Candidate {
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

// The candidates in the order in which they start.
enum CandidateIndex : uint8_t { kSjis, kEuc, kEuc1, kEuc2, kEuc3, kUtf16Be, kUtf16Le, kUtf8, kCandidates };

constexpr int32_t kCandidateTypes[kCandidates] = {JKC_TYPE_SJIS,      JKC_TYPE_EUC,    JKC_TYPE_EUC_20932,
                                                  JKC_TYPE_EUC_51932, JKC_TYPE_EUC_MS, JKC_TYPE_UTF16BE,
                                                  JKC_TYPE_UTF16LE,   JKC_TYPE_UTF8};

constexpr int32_t judged_bit(int32_t type) { return JKC_JUDGED_BIT(type); }

constexpr int32_t kAsciiBit = judged_bit(JKC_TYPE_ASCII);
constexpr int32_t kUtf16BeBit = judged_bit(JKC_TYPE_UTF16BE);
constexpr int32_t kUtf16LeBit = judged_bit(JKC_TYPE_UTF16LE);

// The sets from which the judgement starts: every candidate, the bits between them that no code type has, and ASCII
// as long as the input is 7-bit.
constexpr int32_t kCodedSet = 0x15FF00;
constexpr int32_t kPlainSet = kCodedSet | kAsciiBit;

// A candidate with this many bytes in error is out, however long the input is.
constexpr int64_t kTooManyErrors = 11;
// So is one with this share of the input in error.
constexpr double kErrorShare = 0.01;

inline bool is_tolerable(int64_t errors, int64_t total) {
    return errors < kTooManyErrors && static_cast<double>(errors) / static_cast<double>(total) < kErrorShare;
}

} // namespace jkc
