#include "judge/scan/utf8.h"

#include "core/bytes.h"
#include "core/unicode.h"
#include "core/wide.h"
#include "judge/scan/pattern.h"
#include "judge/scan/resynchronise.h"
#include "judge/scan/utf8_run.h"
#include "kernels/patterns.h"
#include "tables/scan_classes.h"

namespace jkc {

namespace {

// Tracks whether the last decisive character takes a combining mark.
struct BaseTracker {
    enum class State : uint8_t { kUnknown, kNo, kYes };
    static constexpr State kUnknown = State::kUnknown;
    static constexpr size_t kLongest = 4;

    static const uint8_t *last_decisive(const uint8_t *begin, const uint8_t *to) {
        return find_last_pattern<DecisivePattern>(begin, to);
    }

    static const uint8_t *pass(const uint8_t *p, const uint8_t *end, State &state) {
        const size_t length = utf8_length(*p);
        if (length > static_cast<size_t>(end - p)) {
            return nullptr;
        }
        switch (length) {
        case 2:
            if (is_trail(p[1])) {
                decide(kScanClasses[utf8_code_point(p[0], p[1])], kScanText, state);
            }
            return p + 2;
        case 3:
            if (is_trail(p[1]) && is_trail(p[2])) {
                decide(kScanClasses[utf8_code_point(p[0], p[1], p[2])], kScanKana, state);
            }
            return p + 3;
        case 4:
            return is_trail(p[1]) && is_trail(p[2]) && is_trail(p[3]) ? p + 4 : p + 1;
        default:
            return p + 1;
        }
    }

    static void decide(uint8_t scan_class, ScanClass decisive, State &state) {
        if ((scan_class & decisive) != 0) {
            state = (scan_class & kScanBase) != 0 ? State::kYes : State::kNo;
        }
    }
};

// Where a well-formed sequence may stand.
struct Valid {
    template <class At>
    static Bytes16 may_match(const At &at) {
        return match(at);
    }
    template <class At>
    static Bytes16 match(const At &at) {
        return between(at(0), 0xC0, 0xF7) & equals_masked<0xC0>(at(1), 0x80);
    }
};

} // namespace

Utf8Scanner::Place Utf8Scanner::advance(Place from, const uint8_t *to, const uint8_t *end) {
    BaseTracker::State state = from.base ? BaseTracker::State::kYes : BaseTracker::State::kNo;
    const uint8_t *p = resynchronise(BaseTracker(), from.p, to, end, state);
    return {p, state == BaseTracker::State::kYes};
}

bool Utf8Scanner::is_eliminated(const uint8_t *p, const uint8_t *end) const {
    return found.errors >= kTooManyErrors && (found.valid > 0 || find_plain_pattern<Valid>(p, end) == end);
}

void Utf8Scanner::settle() {
    if (known_at_ != nullptr) {
        base_ = decomposed == 0 && advance({known_at_, base_}, at_, at_).base;
        known_at_ = nullptr;
    }
}

// A match counts only where scan() would begin a character.
const uint8_t *Utf8Scanner::watch(const uint8_t *p, const uint8_t *end, Wanted wanted) {
    if (!wanted.four_byte && !wanted.decomposed && found.valid > 0) {
        return end; // nothing is left to find, not even a valid character, so boundaries no longer matter
    }
    settle();
    const Place begin{p, base_};
    if (wanted.four_byte) {
        Place place = begin;
        for (const uint8_t *at = p; (at = find_pattern<FourBytePattern>(at, end)) != end && four_byte == 0; ++at) {
            place = place.p < at ? advance(place, at, end) : place;
            four_byte += place.p == at && end - at >= FourBytePattern::kLength ? FourBytePattern::kLength : 0;
        }
    }
    Place place = begin;
    if (wanted.decomposed) {
        for (const uint8_t *at = p; (at = find_pattern<Utf8MarkPattern>(at, end)) != end && decomposed == 0; ++at) {
            place = place.p < at ? advance(place, at, end) : place;
            const auto length = static_cast<ptrdiff_t>(utf8_length(*at));
            decomposed += place.p == at && place.base && end - at >= length ? 2 * length : 0;
        }
    }
    place = place.p < end ? advance(place, end, end) : place;
    base_ = place.base;
    return place.p;
}

// The counters of a scan, on the stack so that they stay in registers.
struct Utf8Scanner::Tally {
    Evidence found;
    Origin origin;
    int64_t four_byte;
    int64_t decomposed;
    // Whether the last decisive character before `known_at` takes a combining mark. Runs are counted without looking at
    // that, so it may lag behind.
    bool base;
    const uint8_t *known_at;

    // One combining mark is enough to know that there are any.
    bool seeks_marks() const { return decomposed == 0; }
    bool base_at(const uint8_t *p, const uint8_t *end) {
        if (known_at < p) {
            base = advance({known_at, base}, p, end).base;
            known_at = p;
        }
        return base;
    }
    void set_base(bool is_base, const uint8_t *behind) {
        base = is_base;
        known_at = behind;
    }

    // Each counts the sequence at p and returns its length.
    size_t two_byte(const uint8_t *p, const uint8_t *end) {
        const uint8_t scan_class = kScanClasses[utf8_code_point(p[0], p[1])];
        if (!is_trail(p[1]) || (scan_class & kScanText) == 0) {
            found.add_errors(2, origin.offset_of(p));
            return 2;
        }
        found.valid += 2;
        decomposed += (scan_class & kScanMark) != 0 && seeks_marks() && base_at(p, end) ? 4 : 0;
        set_base((scan_class & kScanBase) != 0, p + 2);
        return 2;
    }

    // One flag serves kana and Cyrillic, so a Cyrillic base followed by a kana mark counts as well.
    size_t three_byte(const uint8_t *p, const uint8_t *end) {
        const uint8_t scan_class = kScanClasses[utf8_code_point(p[0], p[1], p[2])];
        if (!is_trail(p[1]) || !is_trail(p[2]) || (scan_class & kScanText) == 0) {
            found.add_errors(3, origin.offset_of(p));
            return 3;
        }
        found.valid += 3;
        if ((scan_class & kScanKana) != 0) {
            found.kana += 3;
            decomposed += (scan_class & kScanMark) != 0 && seeks_marks() && base_at(p, end) ? 6 : 0;
            set_base((scan_class & kScanBase) != 0, p + 3);
        }
        return 3;
    }

    size_t four_byte_or_error(const uint8_t *p) {
        if (utf8_length(p[0]) == 4 && is_trail(p[1]) && is_trail(p[2]) && is_trail(p[3])) {
            found.valid += 4;
            four_byte += 4;
            return 4;
        }
        found.add_errors(1, origin.offset_of(p));
        return 1;
    }
};

const uint8_t *Utf8Scanner::scan(const uint8_t *p, const uint8_t *end, bool last) {
    Tally tally{found, origin, four_byte, decomposed, base_, known_at_ != nullptr ? known_at_ : p};
    while (p < end) {
        const OrdinaryRun run = count_ordinary_utf8(p, end);
        const uint8_t *const close = close_look_end(p, run.end, end);
        tally.found.valid += run.valid;
        tally.found.kana += run.kana;
        p = run.end;
        while (p < close) {
            const size_t length = utf8_length(*p);
            const auto left = static_cast<size_t>(end - p);
            if (length > left) {
                // Goes on in the next block; at the end of the input the cut bytes count, and one more.
                if (last) {
                    tally.found.add_errors(static_cast<int64_t>(left) + 1, origin.offset_of(p));
                }
                end = p;
                break;
            }
            p += is_ascii(*p)  ? 1
                 : length == 3 ? tally.three_byte(p, end)
                 : length == 2 ? tally.two_byte(p, end)
                               : tally.four_byte_or_error(p);
        }
    }
    base_ = tally.base;
    known_at_ = tally.known_at;
    at_ = p;
    found = tally.found;
    four_byte = tally.four_byte;
    decomposed = tally.decomposed;
    return p;
}

} // namespace jkc
