#include "judge/scan/utf16.h"

#include "core/wide_units.h"
#include "judge/scan/pattern.h"
#include "tables/scan_classes.h"

namespace jkc {

namespace {

// The most bytes that one step needs: a big-endian pair and the little-endian code unit behind it.
constexpr int kLookAhead = 6;

// What the two byte orders count differently. Judgements depend on these differences, so they stay.
struct BigRules : BigEndian {
    static constexpr uint32_t kExempt = kReplacement;  // a code unit that is no evidence but counts as valid
    static constexpr int64_t kLoneSurrogateErrors = 0; // of a high surrogate without its partner
};
struct LittleRules : LittleEndian {
    static constexpr uint32_t kExempt = kSwappedReplacement;
    static constexpr int64_t kLoneSurrogateErrors = 2;
};

// A code unit that may form a pair with the next one: a surrogate pair, or a base with its combining mark.
bool wants_partner(uint32_t unit) { return is_high_surrogate(unit) || (kScanClasses[unit] & kScanBase) != 0; }

template <class Rules>
bool has_partner(uint32_t unit, const uint8_t *next) {
    const uint32_t partner = Rules::unit(next);
    return wants_partner(unit) && (is_high_surrogate(unit) ? is_low_surrogate(partner) : is_combining_mark(partner));
}

// Whether the code unit at p, in either byte order, needs bytes behind `end`.
bool is_cut(const uint8_t *p, const uint8_t *end) {
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

// Counts the code unit that is at `offset` in the text; `next` is the one behind it. Returns whether the two are a pair.
template <class Rules>
bool take(Utf16Scanner::Side &side, int64_t offset, uint32_t unit, const uint8_t *next, const uint8_t *end) {
    const bool pair = wants_partner(unit) && end - next >= 2 && has_partner<Rules>(unit, next);
    if ((kScanClasses[unit] & kScanEvidence) != 0) {
        side.found.valid += pair ? 4 : 2;
        side.found.kana += is_kana(unit) ? 2 : 0;
        side.decomposed += pair ? 4 : 0;
    } else if (pair) {
        side.found.valid += 4;
        side.surrogates += 4;
    } else if (is_high_surrogate(unit)) {
        if (Rules::kLoneSurrogateErrors > 0) {
            side.found.add_errors(Rules::kLoneSurrogateErrors, offset);
        }
    } else if (unit == Rules::kExempt) {
        side.found.valid += 2;
    } else {
        side.found.add_errors(2, offset);
    }
    return pair;
}

// Counts code units that are no part of a pair.
struct Run {
    int64_t units = 0;
    int64_t evidence = 0;
    int64_t kana = 0;

    void add(uint8_t scan_class) {
        evidence += scan_class & kScanEvidence;
        kana += scan_class / kScanKana & 1;
    }
};
static_assert(kScanEvidence == 1);

// Adds the run from p on.
template <class Order>
void add_run(const Run &run, const uint8_t *p, const Origin &origin, Evidence &found) {
    const int64_t errors = 2 * (run.units - run.evidence);
    if (errors > 0) {
        while (found.errors == 0 && (kScanClasses[Order::unit(p)] & kScanEvidence) != 0) {
            p += 2;
        }
        found.add_errors(errors, origin.offset_of(p));
    }
    found.valid += 2 * run.evidence;
    found.kana += 2 * run.kana;
}

// The positions at which code units begin.
constexpr Bytes16 kUnitBegins = {0xFF, 0, 0xFF, 0, 0xFF, 0, 0xFF, 0, 0xFF, 0, 0xFF, 0, 0xFF, 0, 0xFF, 0};

// Surrogate pairs of either byte order, told by the high bytes of their code units: a big-endian pair matches at its
// first byte, a little-endian one at its second.
struct Pairs {
    static bool may_match(const uint8_t *p) { return any(match(p)); }
    static Bytes16 match(const uint8_t *p) {
        return equals_masked<0xFC>(load16(p), 0xD8) & equals_masked<0xFC>(load16(p + 2), 0xDC);
    }
};

// The combining marks in either byte order (U+0306, U+0308, U+3099, U+309A), and some rare code units more.
Units8 may_be_marks(Units8 units) {
    return units_equal_masked<0xFFF1>(units, 0x0300) | units_equal_masked<0xF1FF>(units, 0x0003) |
           units_equal_masked<0xFFFC>(units, 0x3098) | units_equal_masked<0xFCFF>(units, 0x9830);
}

// The combining marks in either byte order.
struct Marks {
    static bool may_match(const uint8_t *p) { return any_unit(may_be_marks(reinterpret_cast<Units8>(load16(p)))); }
    static Bytes16 match(const uint8_t *p) {
        const Bytes16 first = load16(p);
        const Bytes16 second = load16(p + 1);
        return (is_mark(first, second) | is_mark(second, first)) & kUnitBegins;
    }
    static Bytes16 is_mark(Bytes16 high, Bytes16 low) {
        return (equals(high, 0x03) & (equals(low, 0x06) | equals(low, 0x08))) |
               (equals(high, 0x30) & (equals(low, 0x99) | equals(low, 0x9A)));
    }
};

} // namespace

// A block without anything wanted can be passed. Otherwise it is scanned, also for what moves the cursor: once a base
// and its mark are passed as a pair, other code units may form surrogate pairs. Where the next block begins depends on
// the last code units alone, if these are no pair.
const uint8_t *Utf16Scanner::watch(const uint8_t *p, const uint8_t *end, bool last, Wanted wanted) {
    constexpr ptrdiff_t kTail = 8;
    const auto has_pairs = [end](const uint8_t *from) { return find_pattern<Pairs>(from, end) != end; };
    const bool wanted_here =
        (wanted.surrogates && has_pairs(p)) ||
        ((wanted.surrogates || wanted.decomposed) && find_pattern<Marks>(p, end) != end) ||
        (wanted.decomposed && !wanted.surrogates && has_pairs(end - p > kTail ? end - (end - p) % 2 - kTail : p));
    if (wanted_here) {
        return scan(p, end, last);
    }
    const uint8_t *stands = end - (end - p) % 2;
    return stands - p >= 2 && is_cut(stands - 2, stands) ? stands - 2 : stands;
}

// Takes code units from p on as long as neither byte order has a pair or a special one; returns where they end. Four
// bytes must be visible at p.
const uint8_t *Utf16Scanner::take_singles(const uint8_t *p, const uint8_t *end) {
    Run big_run;
    Run little_run;
    const uint8_t *const begin = p;
    uint8_t big_class = kScanClasses[BigEndian::unit(p)];
    uint8_t little_class = kScanClasses[LittleEndian::unit(p)];
    while (end - p >= 4) {
        const uint8_t big_next = kScanClasses[BigEndian::unit(p + 2)];
        const uint8_t little_next = kScanClasses[LittleEndian::unit(p + 2)];
        const int pairs = (big_class << 1 & big_next) | (little_class << 1 & little_next);
        if ((pairs & kScanMark) != 0 || ((big_class | little_class) & kScanSpecial) != 0) [[unlikely]] {
            break;
        }
        big_run.add(big_class);
        little_run.add(little_class);
        big_class = big_next;
        little_class = little_next;
        p += 2;
    }
    big_run.units = little_run.units = (p - begin) / 2;
    add_run<BigEndian>(big_run, begin, origin, big.found);
    add_run<LittleEndian>(little_run, begin, origin, little.found);
    return p;
}

// Whether all are ASCII and no NUL: evidence, and no part of a pair in the other byte order either.
bool are_ascii(Units8 units) { return !any_unit(~units_between(units, 0x01, 0x7F)); }

// The code units with kScanSpecial, and some rare ones more.
Units8 may_be_special(Units8 units) {
    return units_equal_masked<0xFC00>(units, 0xD800) |
           units_equal_masked<kReplacement & kSwappedReplacement>(units, kReplacement & kSwappedReplacement);
}

// Takes code units from p on, eight at a time, and counts them for one byte order alone. Stops at eight that may hold a
// pair or a special one, in either byte order, and before the last nine.
template <class Rules>
const uint8_t *take_singles_of(Utf16Scanner::Side &side, const Origin &origin, const uint8_t *p, const uint8_t *end) {
    constexpr ptrdiff_t kReach = kWide + 2; // the code unit behind the last one may be its combining mark
    static_assert(kUnits * kScanEvidence < kScanKana);
    Run run;
    const uint8_t *const begin = p;
    for (; end - p >= kReach; p += kWide) {
        const Units8 units = load8<Rules>(p);
        if (are_ascii(units)) {
            run.evidence += kUnits;
            continue;
        }
        const auto next_units = reinterpret_cast<Units8>(load16(p + 2));
        const Units8 stops =
            may_be_marks(next_units) | may_be_special(units) | reinterpret_cast<Units8>(Pairs::match(p));
        if (any_unit(stops)) [[unlikely]] {
            break;
        }
        uint32_t sum = 0;
        for (size_t i = 0; i < kUnits; ++i) {
            sum += kScanClasses[Rules::unit(p + 2 * i)] & (kScanEvidence | kScanKana);
        }
        run.evidence += sum % kScanKana;
        run.kana += sum / kScanKana;
    }
    run.units = (p - begin) / 2;
    add_run<Rules>(run, begin, origin, side.found);
    return p;
}

// One cursor serves both byte orders: behind a big-endian pair, the little-endian side looks for a partner behind that
// pair. The counts of both sides depend on it.
const uint8_t *Utf16Scanner::scan(const uint8_t *p, const uint8_t *end, bool last) {
    constexpr ptrdiff_t kCloseLook = kWide; // passes what stopped take_singles_of()
    const bool one_side = drops_sides_ && is_eliminated(big) != is_eliminated(little);
    while (end - p >= 2) {
        if (one_side) {
            p = is_eliminated(big) ? take_singles_of<LittleRules>(little, origin, p, end)
                                   : take_singles_of<BigRules>(big, origin, p, end);
        }
        const uint8_t *const close = one_side && end - p > kCloseLook ? p + kCloseLook : end;
        while (close - p >= 2) {
            if (!one_side && end - p >= 4) {
                p = take_singles(p, end);
            }
            if (end - p < kLookAhead && !last && is_cut(p, end)) {
                return p;
            }
            const uint32_t big_unit = BigEndian::unit(p);
            const uint32_t little_unit = LittleEndian::unit(p);
            const int64_t offset = origin.offset_of(p);
            p += 2;
            if (take<BigRules>(big, offset, big_unit, p, end)) {
                p += 2;
            }
            if (take<LittleRules>(little, offset, little_unit, p, end)) {
                p += 2;
            }
        }
    }
    if (last && p < end) {
        big.found.add_errors(2, origin.offset_of(p));
        little.found.add_errors(2, origin.offset_of(p));
    }
    return p;
}

} // namespace jkc
