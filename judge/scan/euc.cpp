#include "judge/scan/euc.h"

#include "core/bytes.h"
#include "core/code_types.h"
#include "core/wide.h"
#include "judge/scan/resynchronise.h"
#include "judge/scan/two_byte_run.h"

namespace jkc {

namespace {

constexpr uint8_t kIn20932 = kInGeneric | kIn20932ThreeBytes;

// Hiragana and katakana: the same cells of rows 4 and 5.
bool is_kana_code(uint32_t code) { return (code - 0xA4A1 <= 0x52) | (code - 0xA5A1 <= 0x52); }

// The EucClass bits of a code.
uint8_t class_of(uint8_t high, uint8_t low) {
    const auto none_if_ascii = static_cast<uint8_t>(0 - ((high & low) >> 7)); // no branch: either is as likely
    return kEucClasses[euc_class_index(high, low)] & none_if_ascii;
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

// Sixty-four bytes, one bit for each that has a top bit in of(bytes).
template <class Of>
uint64_t mask_of_64(const uint8_t *p, Of of) {
    const auto mask = [p, &of](size_t at) { return uint64_t{movemask(of(load16(p + at)))} << at; };
    return mask(0) | mask(kWide) | mask(2 * kWide) | mask(3 * kWide);
}

// Passes codes from p on, a boundary, to the first three-byte one or to the last 64 bytes.
const uint8_t *skip_two_byte_codes(const uint8_t *p, const uint8_t *end) {
    constexpr ptrdiff_t kStep = 64;
    uint64_t trail = 0; // the first byte belongs to the code before
    for (; end - p >= kStep; p += kStep) {
        const uint64_t non_ascii = mask_of_64(p, [](Bytes16 bytes) { return bytes; });
        const uint64_t ss3 = mask_of_64(p, [](Bytes16 bytes) { return equals(bytes, kSs3); });
        const uint64_t leads = every_second(non_ascii & ~trail);
        if ((leads & ss3) != 0) {
            return p + __builtin_ctzll(leads & ss3);
        }
        trail = leads >> (kStep - 1);
    }
    return trail != 0 && p == end ? p - 1 : p + trail;
}

// Counts a code of `length` bytes that no candidate can win with any more.
void count_more(Evidence &variant, bool mapped, int length) {
    variant.valid += mapped ? length : 0;
    variant.errors += mapped ? 0 : length;
}

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

void EucScanner::count(Variant variant, bool mapped, int length, const uint8_t *p) {
    if (mapped) {
        own[variant].valid += length;
    } else {
        own[variant].add_errors(length, origin.offset_of(p));
    }
}

// A code that the table in use lacks is looked up in every variant, and the last table tried stays in use: text of a
// variant then counts for it from its first special character on. Of the two-byte tables that is CP51932 (eucJP-ms is
// looked up without being selected), of the three-byte ones CP20932.
void EucScanner::unmapped_two_byte(const uint8_t *p, uint8_t classes) {
    found.add_errors(2, origin.offset_of(p));
    count(kCp20932, (classes & kInGeneric) != 0, 2, p);
    count(kCp51932, (classes & kIn51932) != 0, 2, p);
    count(kEucMs, (classes & kInMs) != 0, 2, p);
    use_51932();
}

void EucScanner::unmapped_three_byte(const uint8_t *p, uint8_t classes) {
    found.add_errors(3, origin.offset_of(p));
    count(kCp20932, (classes & kIn20932ThreeBytes) != 0, 3, p);
    count(kCp51932, false, 3, p);
    count(kEucMs, (classes & kInMsThreeBytes) != 0, 3, p);
    use_20932();
}

// The input ends inside the code at p. Of a three-byte one, the tables without such codes never knew.
void EucScanner::cut(const uint8_t *p) {
    if (*p == kSs3) {
        count(kCp20932, false, 3, p);
        count(kEucMs, false, 3, p);
        return;
    }
    found.add_errors(2, origin.offset_of(p));
    for (const Variant variant : {kCp20932, kCp51932, kEucMs}) {
        count(variant, false, 2, p);
    }
}

void EucScanner::use_51932() {
    if (in_use_ != kIn51932) {
        in_use_ = kIn51932;
        select_source_tables(*ctx_, JKC_TYPE_EUC_51932);
    }
}

void EucScanner::use_20932() {
    if (in_use_ != kIn20932) {
        in_use_ = kIn20932;
        select_source_tables(*ctx_, JKC_TYPE_EUC_20932);
    }
}

// Takes codes that every table has. Returns where the rest begins.
const uint8_t *EucScanner::take_ordinary_text(const uint8_t *p, const uint8_t *end) {
    const OrdinaryRun run = ordinary_two_byte_run<OrdinaryEuc>(p, end, katakana_);
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

// Once CP51932 is in use, two-byte codes make no difference: no other variant has one that it lacks.
const uint8_t *EucScanner::compare(const uint8_t *p, const uint8_t *end, bool last) {
    uint8_t in_use = in_use_;
    while (p < end) {
        p = in_use == kIn51932 ? skip_two_byte_codes(p, end) : p;
        if (p == end) {
            break;
        }
        if (is_ascii(*p)) {
            p = skip_ascii(p + 1, end);
        } else if (is_cut(p, end)) {
            if (last) {
                cut(p);
            }
            break;
        } else if (*p == kSs3) {
            const uint8_t classes = class_of(p[1], p[2]);
            if ((classes & in_use & kIn20932ThreeBytes) == 0) {
                count_more(own[kCp20932], (classes & kIn20932ThreeBytes) != 0, 3);
                count_more(own[kCp51932], false, 3);
                count_more(own[kEucMs], (classes & kInMsThreeBytes) != 0, 3);
                in_use = kIn20932;
            }
            p += 3;
        } else {
            const uint8_t classes = *p == kSs2 ? in_use : class_of(p[0], p[1]);
            if ((classes & in_use & (kInGeneric | kIn51932)) == 0) {
                count_more(own[kCp20932], (classes & kInGeneric) != 0, 2);
                count_more(own[kCp51932], (classes & kIn51932) != 0, 2);
                count_more(own[kEucMs], (classes & kInMs) != 0, 2);
                in_use = kIn51932;
            }
            p += 2;
        }
    }
    if (in_use == kIn51932) {
        use_51932();
    } else if (in_use == kIn20932) {
        use_20932();
    }
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
                    cut(p);
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
                found.add_errors(2, origin.offset_of(p));
                p += 2;
            } else if (b == kSs3) {
                const uint8_t classes = class_of(p[1], p[2]);
                if ((classes & in_use_ & kIn20932ThreeBytes) != 0) {
                    found.valid += 3;
                } else {
                    unmapped_three_byte(p, classes);
                }
                p += 3;
            } else {
                const uint8_t *behind = take_mapped_codes(p, close, end);
                if (behind == p) {
                    unmapped_two_byte(p, class_of(p[0], p[1]));
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
