#include "judge/scan_utf8.h"

#include "core/bytes.h"
#include "core/unicode.h"
#include "core/wide.h"
#include "judge/follow.h"
#include "judge/pattern.h"

namespace jkc {

namespace {

size_t announced_length(uint8_t lead) {
    if (lead < 0xC0 || lead > 0xF7) {
        return 1;
    }
    return lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
}

// Whether the last telling character can take a combining mark.
class BaseFollower {
public:
    enum class State : uint8_t { kUnknown, kNo, kYes };
    static constexpr State kUnknown = State::kUnknown;

    explicit BaseFollower(const uint16_t *classes) : classes_(classes) {}

    const uint8_t *pass(const uint8_t *p, const uint8_t *end, State &state) const {
        const size_t length = announced_length(*p);
        if (length > static_cast<size_t>(end - p)) {
            return nullptr;
        }
        switch (length) {
        case 2:
            if (is_trail(p[1])) {
                const uint16_t bits = classes_[utf8_code_point(p[0], p[1])];
                tell((bits & kAnyText) != 0, (bits & kCyrillicBase) != 0, state);
            }
            return p + 2;
        case 3:
            if (is_trail(p[1]) && is_trail(p[2])) {
                const uint32_t c = utf8_code_point(p[0], p[1], p[2]);
                const uint16_t bits = classes_[c];
                tell((bits & kAnyText) != 0 && is_kana(c), (bits & kKanaBase) != 0, state);
            }
            return p + 3;
        case 4:
            return is_trail(p[1]) && is_trail(p[2]) && is_trail(p[3]) ? p + 4 : p + 1;
        default:
            return p + 1;
        }
    }

private:
    static void tell(bool tells, bool base, State &state) {
        if (tells) {
            state = base ? State::kYes : State::kNo;
        }
    }

    const uint16_t *classes_;
};

// Where a four-byte sequence may stand.
struct FourBytes {
    static constexpr int kLength = 4;
    static Bytes16 match(const uint8_t *p) {
        return equals_masked<0xF8>(load16(p), 0xF0) & equals_masked<0xC0>(load16(p + 1), 0x80) &
               equals_masked<0xC0>(load16(p + 2), 0x80) & equals_masked<0xC0>(load16(p + 3), 0x80);
    }
};

// Where one of the marks may stand: CC 86, CC 88, E3 82 99, E3 82 9A.
struct Marks {
    static Bytes16 match(const uint8_t *p) {
        const Bytes16 first = load16(p);
        const Bytes16 second = load16(p + 1);
        const Bytes16 third = load16(p + 2);
        return (equals(first, 0xCC) & (equals(second, 0x86) | equals(second, 0x88))) |
               (equals(first, 0xE3) & equals(second, 0x82) & (equals(third, 0x99) | equals(third, 0x9A)));
    }
};

} // namespace

Utf8Scanner::Place Utf8Scanner::advance(Place from, const uint8_t *to, const uint8_t *end) const {
    BaseFollower::State state = from.base ? BaseFollower::State::kYes : BaseFollower::State::kNo;
    const uint8_t *p = follow(BaseFollower(classes_), from.p, to, end, state);
    return {p, state == BaseFollower::State::kYes};
}

// A place that looks right counts only where scan() would come by with a character to begin.
const uint8_t *Utf8Scanner::watch(const uint8_t *p, const uint8_t *end, Wanted wanted) {
    if (!wanted.four_byte && !wanted.decomposed) {
        return end; // nothing is left to tell, so it does not matter where it stands
    }
    const Place begin{p, base_};
    if (wanted.four_byte) {
        Place place = begin;
        for (const uint8_t *at = p; (at = find_pattern<FourBytes>(at, end)) != end && four_byte == 0; ++at) {
            place = place.p < at ? advance(place, at, end) : place;
            four_byte += place.p == at && end - at >= FourBytes::kLength ? FourBytes::kLength : 0;
        }
    }
    Place place = begin;
    if (wanted.decomposed) {
        for (const uint8_t *at = p; (at = find_pattern<Marks>(at, end)) != end && decomposed == 0; ++at) {
            place = place.p < at ? advance(place, at, end) : place;
            const auto length = static_cast<ptrdiff_t>(announced_length(*at));
            decomposed += place.p == at && place.base && end - at >= length ? 2 * length : 0;
        }
    }
    place = place.p < end ? advance(place, end, end) : place;
    base_ = place.base;
    return place.p;
}

size_t Utf8Scanner::two_byte(const uint8_t *p) {
    const uint32_t c = utf8_code_point(p[0], p[1]);
    if (!is_trail(p[1]) || (classes_[c] & kAnyText) == 0) {
        found.errors += 2;
        return 2;
    }
    found.valid += 2;
    if ((classes_[c] & kCyrillicBase) != 0) {
        base_ = true;
    } else if (base_) {
        base_ = false;
        decomposed += c == kBreve || c == kDiaeresis ? 4 : 0;
    }
    return 2;
}

size_t Utf8Scanner::three_byte(const uint8_t *p) {
    const uint32_t c = utf8_code_point(p[0], p[1], p[2]);
    if (!is_trail(p[1]) || !is_trail(p[2]) || (classes_[c] & kAnyText) == 0) {
        found.errors += 3;
        return 3;
    }
    found.valid += 3;
    if (is_kana(c)) {
        found.kana += 3;
        // One flag serves kana and Cyrillic, so a Cyrillic base followed by a kana mark counts as well.
        if ((classes_[c] & kKanaBase) != 0) {
            base_ = true;
        } else if (base_) {
            base_ = false;
            decomposed += c == kVoicedMark || c == kSemiVoicedMark ? 6 : 0;
        }
    }
    return 3;
}

size_t Utf8Scanner::four_byte_or_error(const uint8_t *p) {
    if (announced_length(p[0]) == 4 && is_trail(p[1]) && is_trail(p[2]) && is_trail(p[3])) {
        found.valid += 4;
        four_byte += 4;
        return 4;
    }
    found.errors += 1;
    return 1;
}

const uint8_t *Utf8Scanner::scan(const uint8_t *p, const uint8_t *end, bool last) {
    while (p < end) {
        if (is_plain(*p)) {
            p = skip_plain(p + 1, end);
            continue;
        }
        const size_t length = announced_length(*p);
        const auto left = static_cast<size_t>(end - p);
        if (length > left) {
            // Goes on in the next block; at the end of the input the cut bytes and the missing one count.
            if (last) {
                found.errors += static_cast<int64_t>(left) + 1;
            }
            return p;
        }
        p += length == 3 ? three_byte(p) : length == 2 ? two_byte(p) : four_byte_or_error(p);
    }
    return p;
}

} // namespace jkc
