#include "judge/scan_utf16.h"

#include "core/unicode.h"
#include "judge/pattern.h"

namespace jkc {

namespace {

// What one decision looks at, at most: a big-endian pair and the little-endian unit behind it.
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

// Of the positions of sixteen bytes, those at which a unit begins.
constexpr Bytes16 kUnits = {0xFF, 0, 0xFF, 0, 0xFF, 0, 0xFF, 0, 0xFF, 0, 0xFF, 0, 0xFF, 0, 0xFF, 0};

// Surrogate pairs of either byte order.
struct Pairs {
    static Bytes16 match(const uint8_t *p) {
        const Bytes16 big = equals_masked<0xFC>(load16(p), 0xD8) & equals_masked<0xFC>(load16(p + 2), 0xDC);
        const Bytes16 little = equals_masked<0xFC>(load16(p + 1), 0xD8) & equals_masked<0xFC>(load16(p + 3), 0xDC);
        return (big | little) & kUnits;
    }
};

// Combining marks of either byte order: U+0306, U+0308, U+3099, U+309A.
struct Marks {
    static Bytes16 match(const uint8_t *p) {
        const Bytes16 first = load16(p);
        const Bytes16 second = load16(p + 1);
        return (is_mark(first, second) | is_mark(second, first)) & kUnits;
    }
    static Bytes16 is_mark(Bytes16 high, Bytes16 low) {
        return (equals(high, 0x03) & (equals(low, 0x06) | equals(low, 0x08))) |
               (equals(high, 0x30) & (equals(low, 0x99) | equals(low, 0x9A)));
    }
};

} // namespace

// As long as nothing that is looked for stands in a block, every unit of it is looked at and none is a partner, so the
// block can be passed. Otherwise it is scanned.
const uint8_t *Utf16Scanner::watch(const uint8_t *p, const uint8_t *end, bool last, Wanted wanted) {
    if ((wanted.surrogates || wanted.decomposed) &&
        (find_pattern<Pairs>(p, end) != end || find_pattern<Marks>(p, end) != end)) {
        return scan(p, end, last);
    }
    const uint8_t *stands = end - (end - p) % 2;
    return stands - p >= 2 && is_cut(stands - 2, stands) ? stands - 2 : stands;
}

bool Utf16Scanner::wants_partner(uint32_t unit) const {
    const uint16_t bits = classes_[unit];
    return is_high_surrogate(unit) || ((bits & kAnyText) == kEvidence && (bits & kAnyBase) != 0);
}

template <class Rules>
bool Utf16Scanner::has_partner(uint32_t unit, const uint8_t *next) const {
    const uint32_t partner = Rules::unit(next);
    return wants_partner(unit) && (is_high_surrogate(unit) ? is_low_surrogate(partner) : is_combining_mark(partner));
}

// Counts one unit; `next` is the unit behind it. Returns whether that one belongs to it.
template <class Rules>
bool Utf16Scanner::take(Side &side, uint32_t unit, const uint8_t *next, const uint8_t *end) {
    const bool pair = wants_partner(unit) && end - next >= 2 && has_partner<Rules>(unit, next);
    if ((classes_[unit] & kAnyText) == kEvidence) {
        side.found.valid += pair ? 4 : 2;
        side.found.kana += is_kana(unit) ? 2 : 0;
        side.decomposed += pair ? 4 : 0;
    } else if (pair) {
        side.found.valid += 4;
        side.surrogates += 4;
    } else if (is_high_surrogate(unit)) {
        side.found.errors += Rules::kLoneSurrogateErrors;
    } else {
        (unit == Rules::kExempt ? side.found.valid : side.found.errors) += 2;
    }
    return pair;
}

// Whether the decisions on the unit at p need bytes behind `end`.
bool Utf16Scanner::is_cut(const uint8_t *p, const uint8_t *end) const {
    const uint32_t big_unit = BigEndian::unit(p);
    const uint32_t little_unit = LittleEndian::unit(p);
    p += 2;
    if (wants_partner(big_unit)) {
        if (end - p < 2) {
            return true;
        }
        p += has_partner<BigRules>(big_unit, p) ? 2 : 0;
    }
    return wants_partner(little_unit) && end - p < 2;
}

// One cursor serves both byte orders: behind a big-endian pair the little-endian side looks for its partner after
// that pair. The counts of both sides depend on it.
const uint8_t *Utf16Scanner::scan(const uint8_t *p, const uint8_t *end, bool last) {
    while (end - p >= 2) {
        if (end - p < kLookAhead && !last && is_cut(p, end)) {
            return p;
        }
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
