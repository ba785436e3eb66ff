// The losses of a converter that is fed: how many there were, which, and what is to be done with one.
#pragma once

#include "core/internal.h"

namespace jkc {

class LinePlaces;

class Losses {
public:
    // Reads the options, which are valid. `places` tell line and column; null: nobody asks for these.
    void init(const JkcConverterOptions &options, LinePlaces *places);
    void reset();

    bool is_classic() const { return policy_ == JKC_ON_LOSS_CLASSIC; }
    JkcLossPolicy policy() const { return policy_; }
    bool writes_geta() const { return geta_; }
    // Whether all codes of a character are known, not only the one that is written back.
    bool knows_all_codes() const { return !one_code_each_; }

    // Counts a loss of `length` bytes, which begin at p, and tells the observer. Returns the status with which the
    // conversion ends in front of it, or 0.
    int32_t add(JkcLossKind kind, int64_t offset, const uint8_t *p, uint32_t length, int64_t code_point);

    // Writes the counts, the first loss and the last one.
    void tell(JkcConverterLosses &told) const;

    // The offset up to which the text was looked at closely: losses before it are counted.
    int64_t known_until = 0;
    // The status of a conversion that ends as soon as what is pending is written; 0: it goes on.
    int32_t ends_with = 0;

private:
    JkcLossPolicy policy_;
    bool geta_;
    bool one_code_each_;
    JkcLossObserver observer_;
    void *observer_data_;
    LinePlaces *places_;
    uint64_t counts_[JKC_LOSS_TRUNCATED + 1];
    JkcLoss first_;
    JkcLoss last_;
};

// "&#x", six digits at most and a semicolon.
constexpr size_t kLongestEscape = 10;
struct CharacterEscape {
    uint8_t bytes[kLongestEscape];
    uint8_t length;
};
CharacterEscape escape_character(uint32_t c);

} // namespace jkc
