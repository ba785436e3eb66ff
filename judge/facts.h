// A text, and what the rules of the decision ask about it.
#pragma once

#include <span>

#include "judge/decision.h"
#include "judge/reading.h"

namespace jkc {

// Readings are made when a rule asks for one.
class Facts {
public:
    Facts(const JkcDetection &found, const DecisionSample &sample) : found(found), sample_(sample) {}

    const JkcDetection &found;

    const Reading &as(ReadAs encoding);
    // What the reading costs, and how rare texts in that encoding are.
    int32_t cost(ReadAs encoding);
    // The code type; JKC_DECISION_NONE for a reading that stands for other encodings.
    int32_t type_of(ReadAs encoding) const;
    // What of the sample is read.
    std::span<const uint8_t> part();

    // Whether the whole text may be in the encoding, but for a few bytes.
    bool fits(ReadAs encoding);
    // Whether Shift_JIS, EUC or UTF-8 fits without an error.
    bool fits_without_error();
    // Whether the encoding has errors, or an end of the text cuts a character.
    bool is_damaged(ReadAs encoding);
    // Whether UTF-16 is no worse than noise anywhere in the sample.
    bool may_be_utf16(ReadAs encoding);

    // The likeliest of the readings that fit, UTF-16 apart, and by how much.
    struct Likeliest {
        ReadAs encoding;
        int32_t margin;
    };
    Likeliest likeliest();

    bool is_utf8() const { return found.utf8_first_error < 0 && found.utf8_two_byte + found.utf8_longer > 0; }
    bool is_seven_bit() const;
    // Whether escape sequences select nothing but ASCII, as those for terminals do that leave line drawing.
    bool selects_ascii_only() const;
    bool has_many_nuls() const;
    bool has_many_controls() const;
    // Bytes in the sample that are not ASCII.
    int64_t high_bytes() const;

private:
    const JkcEvidence &evidence(int32_t type) const;
    int32_t euc_variant() const;
    bool fits_without_error(ReadAs encoding);
    bool is_read_whole() const { return sample_.whole && sample_.length <= kLongestReading; }
    bool is_nearly_ascii() const;

    const DecisionSample &sample_;
    std::span<const uint8_t> part_;
    uint8_t gathered_[kLongestReading];
    bool is_read_[kReadings] = {};
    Reading readings_[kReadings];
};

} // namespace jkc
