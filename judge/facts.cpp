#include "judge/facts.h"

#include <algorithm>
#include <cstring>

#include "core/jis_escape.h"
#include "judge/candidates.h"
#include "judge/language.h"

namespace jkc {

namespace {

// How much rarer texts in one encoding are than in another, as far as nothing else is known. It is mostly for pieces of
// one and two characters; that they may cost UTF-16 and other languages a few characters more is less harm than to take
// Japanese for these.
constexpr int32_t kPrior[kReadings] = {
    3 * kBit,  // Shift_JIS
    5 * kBit,  // EUC
    0,         // UTF-8
    40 * kBit, // UTF-16BE and
    40 * kBit, // UTF-16LE: of pieces of ten characters of prose none is lost
    12 * kBit, // Western Europe
    30 * kBit, // other scripts of a byte a letter
    30 * kBit, // other languages of two bytes a character
};

// UTF-16 with NULs, which no byte encoding has.
constexpr int32_t kPriorWithNuls = 10 * kBit;

// What UTF-8 gains where all but one byte in a hundred are ASCII: Japanese texts have more characters of their own.
// Without it 12 of 3195 files in UTF-8 of a Linux system stay open, with it none.
constexpr int32_t kGainInAscii = 8 * kBit;
constexpr uint64_t kBytesPerCharacterInAscii = 100;

// A NUL byte in so many is more than a damaged text has. Compressed data has one in 256.
constexpr uint64_t kBytesPerNul = 512;
// The same of other control bytes; compressed data has one in 11.
constexpr uint64_t kBytesPerControl = 20;
constexpr int32_t kUnitsPerControl = 50;

constexpr int32_t kNothing = INT32_MAX / 2;

bool is_high(uint8_t b) { return b >= 0x80; }
bool is_control(uint8_t b) { return b < ' ' && b != 0 && (b < '\t' || b > 0x0F) && b != kEsc; }

// Gathers kLongestReading bytes at most, those around the bytes that are not ASCII. Without such it is the first ones.
size_t gather(const DecisionSample &sample, uint8_t *part) {
    constexpr size_t kUnit = 32;
    const auto has_high_byte = [&sample](size_t unit) {
        const size_t begin = std::min(sample.length, unit * kUnit);
        const size_t end = std::min(sample.length, begin + kUnit);
        return std::any_of(sample.bytes + begin, sample.bytes + end, is_high);
    };
    size_t length = 0;
    bool before = false;
    bool here = has_high_byte(0);
    for (size_t unit = 0; unit * kUnit < sample.length && length < kLongestReading; ++unit) {
        const bool next = has_high_byte(unit + 1);
        if (before || here || next) {
            const size_t count = std::min(kUnit, sample.length - unit * kUnit);
            memcpy(part + length, sample.bytes + unit * kUnit, count);
            length += count;
        }
        before = here;
        here = next;
    }
    if (length == 0) {
        length = kLongestReading;
        memcpy(part, sample.bytes, length);
    }
    return length;
}

} // namespace

std::span<const uint8_t> Facts::part() {
    if (part_.empty()) {
        part_ = {sample_.bytes, sample_.length};
        if (sample_.length > kLongestReading) {
            part_ = {gathered_, gather(sample_, gathered_)};
        }
    }
    return part_;
}

const Reading &Facts::as(ReadAs encoding) {
    const auto i = static_cast<size_t>(encoding);
    if (!is_read_[i]) {
        is_read_[i] = true;
        read_as(encoding, part().data(), part().size(), readings_[i]);
    }
    return readings_[i];
}

int32_t Facts::cost(ReadAs encoding) {
    const bool utf16 = encoding == ReadAs::kUtf16Be || encoding == ReadAs::kUtf16Le;
    if (utf16 && found.nul_count > 0) {
        return as(encoding).cost + kPriorWithNuls;
    }
    if (encoding == ReadAs::kUtf8 && is_utf8() && is_nearly_ascii()) {
        return as(encoding).cost - kGainInAscii;
    }
    return as(encoding).cost + kPrior[static_cast<size_t>(encoding)];
}

const JkcEvidence &Facts::evidence(int32_t type) const {
    const JkcEvidence *one = found.evidence;
    while (one->type != type && one != found.evidence + JKC_CANDIDATES - 1) {
        ++one;
    }
    return *one;
}

// That of the judgement, or the one that lacks the least.
int32_t Facts::euc_variant() const {
    if (found.judged >= JKC_TYPE_EUC && found.judged <= JKC_TYPE_EUC_MS) {
        return found.judged;
    }
    int32_t best = JKC_TYPE_EUC;
    for (const int32_t type : {JKC_TYPE_EUC_MS, JKC_TYPE_EUC_51932, JKC_TYPE_EUC_20932}) {
        if (evidence(type).ill_formed < evidence(best).ill_formed) {
            best = type;
        }
    }
    return best;
}

int32_t Facts::type_of(ReadAs encoding) const {
    switch (encoding) {
    case ReadAs::kSjis:
        return JKC_TYPE_SJIS;
    case ReadAs::kEuc:
        return euc_variant();
    case ReadAs::kUtf8:
        return JKC_TYPE_UTF8;
    case ReadAs::kUtf16Be:
        return JKC_TYPE_UTF16BE;
    case ReadAs::kUtf16Le:
        return JKC_TYPE_UTF16LE;
    default:
        return JKC_DECISION_NONE;
    }
}

// What the record tells of a long text is not asked of a reading, which is of a part.
bool Facts::fits(ReadAs encoding) {
    const int32_t type = type_of(encoding);
    if (type == JKC_TYPE_UTF8 && found.utf8_first_error < 0) {
        return true;
    }
    if (is_read_whole() || type < 0) {
        return is_tolerable(as(encoding).errors, static_cast<int64_t>(part().size()));
    }
    return is_tolerable(evidence(type).ill_formed, static_cast<int64_t>(found.length));
}

bool Facts::fits_without_error(ReadAs encoding) {
    if (encoding == ReadAs::kUtf8 && found.utf8_first_error >= 0) {
        return false;
    }
    if (is_read_whole()) {
        const Reading &reading = as(encoding);
        return reading.errors + reading.controls == 0;
    }
    return found.control_count == 0 && (encoding == ReadAs::kUtf8 || evidence(type_of(encoding)).ill_formed == 0);
}

bool Facts::fits_without_error() {
    return fits_without_error(ReadAs::kUtf8) || fits_without_error(ReadAs::kSjis) || fits_without_error(ReadAs::kEuc);
}

bool Facts::is_damaged(ReadAs encoding) {
    const int32_t type = type_of(encoding);
    return as(encoding).errors > 0 || as(encoding).cut || found.control_count + found.nul_count > 0 ||
           (type == JKC_TYPE_UTF8 ? found.utf8_first_error >= 0 : type >= 0 && evidence(type).ill_formed > 0);
}

bool Facts::may_be_utf16(ReadAs encoding) {
    constexpr int32_t kNoise = 16 * kBit; // a unit
    for (size_t start = 0; start < sample_.length; start += kLongestReading) {
        const size_t length = std::min(sample_.length - start, kLongestReading);
        const auto units = static_cast<int32_t>(length / 2);
        Reading reading;
        read_as(encoding, sample_.bytes + start, length, reading);
        if (reading.errors > 0 || reading.controls * kUnitsPerControl > units || reading.cost > (units + 1) * kNoise) {
            return false;
        }
    }
    return true;
}

Facts::Likeliest Facts::likeliest() {
    // No other language is told by less for each byte that is not ASCII.
    constexpr int32_t kLeastOfOthers = 6 * kBit;
    constexpr int32_t kManyBytes = 64;
    const auto read = static_cast<int32_t>(std::count_if(part().begin(), part().end(), is_high));
    auto best = ReadAs::kDoubleByte;
    int32_t least = kNothing;
    int32_t second = kNothing;
    for (int i = 0; i < kReadings; ++i) {
        const auto encoding = static_cast<ReadAs>(i);
        // Other languages in a byte encoding are not well-formed UTF-8.
        if (encoding == ReadAs::kLatin && is_utf8()) {
            break;
        }
        if (encoding == ReadAs::kLatin && read > kManyBytes && least < read * kLeastOfOthers) {
            second = std::min(second, read * kLeastOfOthers + kPrior[i]);
            break;
        }
        if (encoding == ReadAs::kUtf16Be || encoding == ReadAs::kUtf16Le || !fits(encoding)) {
            continue;
        }
        const int32_t c = cost(encoding);
        second = std::min(second, std::max(c, least));
        if (c < least) {
            least = c;
            best = encoding;
        }
    }
    return {best, second - least};
}

bool Facts::is_seven_bit() const {
    const bool in_set = found.judged_set >= JKC_LOWEST_SET && (found.judged_set & kAsciiBit) != 0;
    return found.judged == JKC_TYPE_ASCII || in_set;
}

bool Facts::selects_ascii_only() const {
    bool ascii = false;
    for (size_t i = 0; i < sample_.length; ++i) {
        if (sample_.bytes[i] == kEsc) {
            const SeenEscape escape = read_escape(sample_.bytes + i, sample_.length - i);
            if (escape.kind == SeenEscape::kKnown && escape.set != kAscii) {
                return false;
            }
            ascii = ascii || escape.kind == SeenEscape::kKnown;
        }
    }
    return ascii;
}

bool Facts::has_many_nuls() const { return found.nul_count * kBytesPerNul > found.length; }

bool Facts::has_many_controls() const {
    if (found.control_count * kBytesPerControl <= found.length) {
        return false;
    }
    // Overstruck text has backspaces.
    const uint8_t *const end = sample_.bytes + sample_.length;
    const auto others = std::count_if(sample_.bytes, end, [](uint8_t b) { return is_control(b) && b != '\b'; });
    return static_cast<uint64_t>(others) * kBytesPerControl > sample_.length;
}

bool Facts::is_nearly_ascii() const { return found.utf8_two_byte * kBytesPerCharacterInAscii < found.length; }

int64_t Facts::high_bytes() const { return std::count_if(sample_.bytes, sample_.bytes + sample_.length, is_high); }

} // namespace jkc
