#include "judge/scan/sjis.h"

#include "core/jis_escape.h"
#include "core/unicode.h"
#include "core/wide.h"
#include "judge/scan/pattern.h"
#include "judge/scan/two_byte_run.h"

namespace jkc {

namespace {

constexpr size_t kLongestEscape = 4;

bool is_kana_code(uint32_t code) { return (code - 0x829F <= 0x52) | (code - 0x8340 <= 0x53); }

// What counts once an escape sequence of CP50221 was seen: a NUL, a byte of 0x80 or more, ESC $ (.
struct CountsInJis {
    static bool may_match(const uint8_t *p) { return any(match(p)); }
    static Bytes16 match(const uint8_t *p) {
        const Bytes16 first = load16(p);
        return (first & splat16(0x80)) | equals(first, 0) |
               (equals(first, kEsc) & equals(load16(p + 1), '$') & equals(load16(p + 2), '('));
    }
};

} // namespace

bool SjisScanner::is_latin(uint8_t b) const { return (classes_[b] & kAnyText) == kEvidence; }

// Takes the escape sequence at p, which is at `offset` in the input. Returns its length; of an unknown one it takes the
// ESC alone.
size_t SjisScanner::take_escape(const uint8_t *p, size_t left, int64_t offset) {
    const SeenEscape escape = read_escape(p, left);
    if (escape.kind != SeenEscape::kKnown) {
        return 1;
    }
    if (escape.set == kJisX0213Plane1Of2004 || escape.set == kJisX0213Plane2) {
        jis2004 = is_tolerable(found.errors, offset + escape.length);
    } else {
        jis_escape = true;
    }
    return escape.length;
}

// Skips text in which nothing counts. In non-ASCII input a NUL decides nothing. After an escape sequence of CP50221
// only those of JIS X 0213 count; one that `end` may cut is left to a closer look.
const uint8_t *SjisScanner::skip_text(const uint8_t *p, const uint8_t *end) const {
    const uint8_t *const whole = end - (kLongestEscape - 1);
    if (non_ascii && !counts_nuls_) {
        return skip_ascii<kEsc>(p, end);
    }
    return jis_escape && p < whole ? find_pattern<CountsInJis>(p, whole) : skip_ascii<0, kEsc>(p, end);
}

// Takes two-byte codes from p on, up to `until`, as long as the table maps them; returns where they end.
const uint8_t *SjisScanner::take_mapped_codes(const uint8_t *p, const uint8_t *until, const uint8_t *end) {
    const uint16_t *table = table_;
    const uint64_t count = count_;
    const uint8_t *const begin = p;
    int64_t kana = 0;
    while (p < until && end - p >= 2 && !is_ascii(*p) && !is_sjis_katakana(*p)) {
        const uint32_t code = two_byte_code(p[0], p[1]);
        if (code >= count || table[code] == 0) {
            break;
        }
        kana += is_kana_code(code) ? 2 : 0;
        p += 2;
    }
    found.valid += p - begin;
    found.kana += kana;
    return p;
}

// Apart, so that nothing of it burdens the loop over text.
[[gnu::noinline]] void SjisScanner::add_unmapped(const uint8_t *p) { found.add_errors(2, origin.offset_of(p)); }

// Takes ordinary text. Returns where the rest begins.
const uint8_t *SjisScanner::take_ordinary_text(const uint8_t *p, const uint8_t *end) {
    const OrdinaryRun run = ordinary_two_byte_run<OrdinarySjis>(p, end, katakana_);
    found.valid += run.valid;
    found.kana += run.kana;
    return run.end;
}

const uint8_t *SjisScanner::scan(const uint8_t *p, const uint8_t *end, bool last) {
    p = scan_text(p, end, last);
    found.penalty = katakana_.isolated();
    return p;
}

const uint8_t *SjisScanner::scan_text(const uint8_t *p, const uint8_t *end, bool last) {
    while (p < end) {
        const uint8_t *close = end;
        if (non_ascii && !counts_nuls_) {
            const uint8_t *const from = p;
            p = take_ordinary_text(p, end);
            close = close_look_end(from, p, end);
        }
        while (p < close) {
            const uint8_t b = *p;
            if (is_sjis_katakana(b)) {
                non_ascii = true;
                katakana_.add();
                ++p;
                continue;
            }
            katakana_.close();
            if (b >= 0x80) {
                non_ascii = true;
                if (end - p < 2) {
                    return p; // cut: goes on in the next block; at the end of the input it counts nothing
                }
                const uint8_t *behind = take_mapped_codes(p, close, end);
                if (behind == p) {
                    add_unmapped(p);
                    behind += 2;
                }
                p = behind;
            } else if (b == 0) {
                const bool at_even_offset = ((p - origin.at) & 1) == 0;
                if (at_even_offset && !last && p + 1 == end) {
                    return p;
                }
                non_ascii = true;
                if (at_even_offset) {
                    big_units += p + 1 < end && is_latin(p[1]) ? 1 : 0;
                } else {
                    little_units += is_latin(p[-1]) ? 1 : 0;
                }
                p = skip_text(p + 1, end);
            } else if (b == kEsc) {
                const auto left = static_cast<size_t>(end - p);
                if (left < kLongestEscape && !last) {
                    return p;
                }
                p += take_escape(p, left, origin.offset_of(p));
                if (jis2004) {
                    return p;
                }
            } else {
                p = skip_text(p + 1, end);
            }
        }
    }
    if (last) {
        katakana_.close();
    }
    return p;
}

} // namespace jkc
