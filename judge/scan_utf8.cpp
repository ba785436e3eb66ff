#include "judge/scan_utf8.h"

#include "core/bytes.h"
#include "core/unicode.h"
#include "core/wide.h"

namespace jkc {

namespace {

size_t announced_length(uint8_t lead) {
    if (lead < 0xC0 || lead > 0xF7) {
        return 1;
    }
    return lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
}

} // namespace

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
