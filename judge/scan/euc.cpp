#include "judge/scan/euc.h"

#include "core/bytes.h"
#include "core/code_types.h"
#include "core/wide.h"
#include "judge/scan/resynchronise.h"
#include "judge/scan/two_byte_run.h"

namespace jkc {

namespace {

// Hiragana and katakana: the same cells of rows 4 and 5.
bool is_kana_code(uint32_t code) { return (code - 0xA4A1 <= 0x52) | (code - 0xA5A1 <= 0x52); }

void count(Evidence &variant, bool mapped, int length) { (mapped ? variant.valid : variant.errors) += length; }

// The EucClass bits of a code.
uint8_t class_of(uint8_t high, uint8_t low) {
    return is_ascii(high) || is_ascii(low) ? uint8_t{0} : kEucClasses[euc_class_index(high, low)];
}

bool is_cut(const uint8_t *p, const uint8_t *end) { return end - p < (*p == kSs3 ? 3 : 2); }

// Tracks the table selection. It depends on the last code that the generic table lacks: a two-byte code selects CP51932
// (which has all codes of the generic table), a three-byte code CP20932, whatever was selected before.
struct TableTracker {
    enum class State : uint8_t { kUnknown, kCp51932, kCp20932 };
    static constexpr State kUnknown = State::kUnknown;
    static constexpr size_t kLongest = 3;

    // In text that is not EUC nearly every character is decisive.
    static const uint8_t *last_decisive(const uint8_t *begin, const uint8_t *to) {
        return to > begin ? to - 1 : nullptr;
    }

    static const uint8_t *pass(const uint8_t *p, const uint8_t *end, State &state) {
        if (is_ascii(*p)) {
            return p + 1;
        }
        if (is_cut(p, end)) {
            return nullptr;
        }
        if (*p == kSs3) {
            state = State::kCp20932;
            return p + 3;
        }
        if (*p != kSs2 && (class_of(p[0], p[1]) & kInGeneric) == 0) {
            state = State::kCp51932;
        }
        return p + 2;
    }
};

} // namespace

bool EucScanner::is_eliminated() const {
    return found.errors >= kTooManyErrors && own[kCp20932].errors >= kTooManyErrors &&
           own[kCp51932].errors >= kTooManyErrors && own[kEucMs].errors >= kTooManyErrors;
}

const uint8_t *EucScanner::watch(const uint8_t *p, const uint8_t *end) {
    TableTracker::State state = TableTracker::kUnknown;
    const uint8_t *stands = resynchronise(TableTracker(), p, end, end, state);
    if (state == TableTracker::State::kCp51932) {
        use_51932();
    } else if (state == TableTracker::State::kCp20932) {
        use_20932();
    }
    return stands;
}

// A code that the table in use lacks is looked up in every variant, and the last table tried stays in use: text of a
// variant then counts for it from its first special character on. Of the two-byte tables that is CP51932 (eucJP-ms is
// looked up without being selected), of the three-byte ones CP20932.
void EucScanner::unmapped_two_byte(uint8_t classes) {
    found.errors += 2;
    count(own[kCp20932], (classes & kInGeneric) != 0, 2);
    count(own[kCp51932], (classes & kIn51932) != 0, 2);
    count(own[kEucMs], (classes & kInMs) != 0, 2);
    use_51932();
}

void EucScanner::unmapped_three_byte(uint8_t classes) {
    found.errors += 3;
    count(own[kCp20932], (classes & kIn20932ThreeBytes) != 0, 3);
    count(own[kCp51932], false, 3);
    count(own[kEucMs], (classes & kInMsThreeBytes) != 0, 3);
    use_20932();
}

void EucScanner::use_51932() {
    if (in_use_ != kIn51932) {
        in_use_ = kIn51932;
        select_source_tables(*ctx_, JKC_TYPE_EUC_51932);
    }
}

void EucScanner::use_20932() {
    constexpr uint8_t kIn20932 = kInGeneric | kIn20932ThreeBytes;
    if (in_use_ != kIn20932) {
        in_use_ = kIn20932;
        select_source_tables(*ctx_, JKC_TYPE_EUC_20932);
    }
}

// Takes codes that every table has. Returns where the rest begins.
const uint8_t *EucScanner::take_ordinary_text(const uint8_t *p, const uint8_t *end) {
    const OrdinaryRun run = count_ordinary_two_byte<OrdinaryEuc>(kernels().count_euc, p, end, katakana_);
    found.valid += run.valid;
    found.kana += run.kana;
    return run.end;
}

// Takes two-byte codes from p on, up to `until`, as long as the table in use maps them; returns where they end.
const uint8_t *EucScanner::take_mapped_codes(const uint8_t *p, const uint8_t *until, const uint8_t *end) {
    const uint8_t in_use = in_use_ & (kInGeneric | kIn51932);
    const uint8_t *const begin = p;
    int64_t kana = 0;
    while (p < until && end - p >= 2 && !is_ascii(*p) && *p != kSs2 && *p != kSs3) {
        if ((class_of(p[0], p[1]) & in_use) == 0) {
            break;
        }
        kana += is_kana_code(two_byte_code(p[0], p[1])) ? 2 : 0;
        p += 2;
    }
    found.valid += p - begin;
    found.kana += kana;
    return p;
}

const uint8_t *EucScanner::scan(const uint8_t *p, const uint8_t *end, bool last) {
    p = scan_text(p, end, last);
    found.penalty = 2 * katakana_.isolated();
    return p;
}

const uint8_t *EucScanner::scan_text(const uint8_t *p, const uint8_t *end, bool last) {
    while (p < end) {
        const uint8_t *const from = p;
        p = take_ordinary_text(p, end);
        const uint8_t *const close = close_look_end(from, p, end);
        while (p < close) {
            const uint8_t b = *p;
            if (is_ascii(b)) {
                katakana_.close();
                p = skip_ascii(p + 1, end);
                continue;
            }
            if (is_cut(p, end)) {
                if (last) {
                    katakana_.close();
                    (b == kSs3 ? cut_three_byte : cut_two_byte) = true;
                }
                return p;
            }
            if (b == kSs2 && is_sjis_katakana(p[1])) {
                katakana_.add();
                p += 2;
                continue;
            }
            katakana_.close();
            if (b == kSs2) {
                found.errors += 2;
                p += 2;
            } else if (b == kSs3) {
                const uint8_t classes = class_of(p[1], p[2]);
                if ((classes & in_use_ & kIn20932ThreeBytes) != 0) {
                    found.valid += 3;
                } else {
                    unmapped_three_byte(classes);
                }
                p += 3;
            } else {
                const uint8_t *behind = take_mapped_codes(p, close, end);
                if (behind == p) {
                    unmapped_two_byte(class_of(p[0], p[1]));
                    behind += 2;
                }
                p = behind;
            }
        }
    }
    if (last) {
        katakana_.close();
    }
    return p;
}

} // namespace jkc
