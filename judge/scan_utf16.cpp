#include "judge/scan_utf16.h"

#include "core/unicode.h"

namespace jkc {

namespace {

// A big-endian pair and the little-endian unit behind it.
constexpr int kLookAhead = 6;

// What the two sides count differently. Stored judgements rely on these counts, so the differences stay.
struct BigRules : BigEndian {
    static constexpr uint32_t kExempt = 0xFFFD;        // a unit without evidence of its own that is no error
    static constexpr int64_t kLoneSurrogateErrors = 0; // a high surrogate without its partner
};
struct LittleRules : LittleEndian {
    static constexpr uint32_t kExempt = 0xFDFF; // what U+FFFD gives when read in the other order
    static constexpr int64_t kLoneSurrogateErrors = 2;
};

} // namespace

// Counts one unit; `next` is the unit behind it. Returns whether that one belongs to it.
template <class Rules>
bool Utf16Scanner::take(Side &side, uint32_t unit, const uint8_t *next, const uint8_t *end) {
    const uint16_t bits = classes_[unit];
    const bool has_next = end - next >= 2;
    if ((bits & kAnyText) == kEvidence) {
        side.found.kana += is_kana(unit) ? 2 : 0;
        if ((bits & kAnyBase) != 0 && has_next && is_combining_mark(Rules::unit(next))) {
            side.found.valid += 4;
            side.decomposed += 4;
            return true;
        }
        side.found.valid += 2;
        return false;
    }
    if (is_high_surrogate(unit)) {
        if (has_next && is_low_surrogate(Rules::unit(next))) {
            side.found.valid += 4;
            side.surrogates += 4;
            return true;
        }
        side.found.errors += Rules::kLoneSurrogateErrors;
        return false;
    }
    (unit == Rules::kExempt ? side.found.valid : side.found.errors) += 2;
    return false;
}

// One cursor serves both byte orders: behind a big-endian pair the little-endian side looks for its partner after
// that pair. The counts of both sides depend on it.
const uint8_t *Utf16Scanner::scan(const uint8_t *p, const uint8_t *end, bool last) {
    const int needed = last ? 2 : kLookAhead;
    while (end - p >= needed) {
        const uint32_t big_unit = BigEndian::unit(p);
        const uint32_t little_unit = LittleEndian::unit(p);
        p += 2;
        if (take<BigRules>(big, big_unit, p, end)) {
            p += 2;
        }
        if (take<LittleRules>(little, little_unit, p, end)) {
            p += 2;
        }
    }
    if (last && p < end) {
        big.found.errors += 2;
        little.found.errors += 2;
    }
    return p;
}

} // namespace jkc
