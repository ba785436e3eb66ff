#include "judge/decision.h"

#include <algorithm>
#include <cstring>
#include <iterator>

#include "core/jis_escape.h"
#include "judge/candidates.h"
#include "judge/language.h"
#include "judge/reading.h"

namespace jkc {

namespace {

// How much likelier a reading must be than the next one. Of the pieces of prose that are decided by less than this, ...
constexpr int32_t kClearMargin = 6 * kBit;
// Of texts that are much likelier in another encoding for a stretch.
// So many bytes of UTF-16 without NULs are not well-formed in a byte encoding by chance.
constexpr uint64_t kLongText = 64;
// What damage takes from the confidence.
constexpr int32_t kDamage = 15;
constexpr int32_t kMixedMargin = 60 * kBit;

// How much rarer texts are in one encoding than in another, as far as nothing else is known.
constexpr int32_t kPrior[kReadings] = {
    3 * kBit,  // Shift_JIS
    5 * kBit,  // EUC
    0,         // UTF-8
    40 * kBit, // UTF-16 without a mark
    40 * kBit, //
    12 * kBit, // other languages, of which we know too little to be sure
    30 * kBit, //
    30 * kBit, //
};

// UTF-16 with NULs: no byte encoding has these.
constexpr int32_t kPriorWithNuls = 10 * kBit;

// For UTF-8 where all but one character in a hundred are ASCII. Japanese text has more of its own.
constexpr int32_t kBonusInAscii = 8 * kBit;

// One NUL or control byte in so many is more than a damaged text has.
constexpr uint64_t kBytesPerNul = 512;
constexpr uint64_t kBytesPerControl = 20;
constexpr int32_t kUnitsPerControl = 50;
// Where nothing fits, fewer are enough.
constexpr uint64_t kBytesPerControlInDamage = 200;

constexpr bool is_control(uint8_t b) { return b < ' ' && b != 0 && (b < '\t' || b > 0x0F) && b != kEsc; }
constexpr bool is_in(int32_t set, int32_t type) { return set >= JKC_LOWEST_SET && (set & judged_bit(type)) != 0; }

struct Answer {
    int32_t decision;
    int32_t confidence;
    int32_t open;
};

// Gathers kLongestReading bytes at most, those around the bytes that are not ASCII. Without such it is the first ones.
size_t gather(const DecisionSample &sample, uint8_t *part) {
    constexpr size_t kUnit = 32;
    const auto has_high_byte = [&sample](size_t unit) {
        const uint8_t *const end = sample.bytes + std::min(sample.length, (unit + 1) * kUnit);
        const uint8_t *const p = std::min(sample.bytes + unit * kUnit, end);
        return std::any_of(p, end, [](uint8_t b) { return b >= 0x80; });
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

// A text, and what the rules ask about it. Readings are made when a rule asks for one.
class Facts {
public:
    Facts(const JkcDetection &found, const DecisionSample &sample)
        : found(found), sample_(sample), read_(sample.bytes), read_length_(sample.length) {
        if (sample.length > kLongestReading) {
            read_ = part_;
            read_length_ = gather(sample, part_);
        }
    }

    const JkcDetection &found;

    const Reading &as(ReadAs encoding) {
        const auto i = static_cast<size_t>(encoding);
        if (!is_read_[i]) {
            is_read_[i] = true;
            read_as(encoding, read_, read_length_, readings_[i]);
        }
        return readings_[i];
    }

    int32_t cost(ReadAs encoding) {
        const bool utf16 = encoding == ReadAs::kUtf16Be || encoding == ReadAs::kUtf16Le;
        if (encoding == ReadAs::kUtf8 && is_utf8() && is_nearly_ascii()) {
            return as(encoding).cost - kBonusInAscii;
        }
        const int32_t prior = utf16 && found.nul_count > 0 ? kPriorWithNuls : kPrior[static_cast<size_t>(encoding)];
        return as(encoding).cost + prior;
    }

    const JkcEvidence &evidence(int32_t type) const {
        const JkcEvidence *one = found.evidence;
        while (one->type != type && one != found.evidence + JKC_CANDIDATES - 1) {
            ++one;
        }
        return *one;
    }

    // The EUC variant that lacks the least.
    int32_t euc_variant() const {
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

    int32_t type_of(ReadAs encoding) const {
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

    // Whether the whole text may be in the encoding. Of a short text the ends may cut a character; what the record tells of
    // a long one is not asked of the reading.
    bool fits(ReadAs encoding) {
        const int32_t type = type_of(encoding);
        if (type == JKC_TYPE_UTF8 && found.utf8_first_error < 0) {
            return true;
        }
        if (is_read_whole() || type < 0) {
            return is_tolerable(as(encoding).errors, static_cast<int64_t>(read_length_));
        }
        return is_tolerable(evidence(type).ill_formed, static_cast<int64_t>(found.length));
    }

    // Whether it fits without an error.
    bool is_clean(ReadAs encoding) {
        const int32_t type = type_of(encoding);
        if (type == JKC_TYPE_UTF8 || is_read_whole()) {
            return fits(encoding) && (type != JKC_TYPE_UTF8 || found.utf8_first_error < 0) &&
                   as(encoding).errors + as(encoding).controls == 0;
        }
        return evidence(type).ill_formed == 0 && found.control_count == 0;
    }

    bool is_read_whole() const { return sample_.whole && sample_.length <= kLongestReading; }

    // Whether UTF-16 is no worse than noise, which takes 16 bits a unit, anywhere in the sample.
    bool may_be_utf16(ReadAs encoding) {
        constexpr int32_t kNoise = 16 * kBit;
        for (size_t start = 0; start < sample_.length; start += kLongestReading) {
            const size_t length = std::min(sample_.length - start, kLongestReading);
            const auto units = static_cast<int32_t>(length / 2);
            Reading reading;
            read_as(encoding, sample_.bytes + start, length, reading);
            if (reading.errors > 0 || reading.controls * kUnitsPerControl > units ||
                reading.cost > (units + 1) * kNoise) {
                return false;
            }
        }
        return true;
    }

    // Bytes in the sample that are not ASCII.
    int64_t high_bytes() const {
        return std::count_if(sample_.bytes, sample_.bytes + sample_.length, [](uint8_t b) { return b >= 0x80; });
    }

    // Terminals are told ESC ( B to leave line drawing. A text in JIS selects other sets too.
    bool selects_ascii_only() const {
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

    // Overstruck text has backspaces.
    bool has_controls_but_backspaces() const {
        const auto backspaces = std::count(sample_.bytes, sample_.bytes + sample_.length, '\b');
        const auto controls =
            static_cast<uint64_t>(std::count_if(sample_.bytes, sample_.bytes + sample_.length, is_control));
        return (controls - static_cast<uint64_t>(backspaces)) * kBytesPerControl > sample_.length;
    }

    bool is_seven_bit() const { return found.judged == JKC_TYPE_ASCII || is_in(found.judged_set, JKC_TYPE_ASCII); }
    bool has_many_nuls() const { return found.nul_count * kBytesPerNul > found.length; }
    bool has_many_controls() const {
        return found.control_count * kBytesPerControl > found.length && has_controls_but_backspaces();
    }
    // A name or a sign in a text that is ASCII otherwise.
    bool is_nearly_ascii() const {
        constexpr uint64_t kBytesPerCharacter = 100;
        return found.utf8_two_byte * kBytesPerCharacter < found.length;
    }
    bool is_utf8() const { return found.utf8_first_error < 0 && found.utf8_two_byte + found.utf8_longer > 0; }

    bool is_clean_in_bytes() { return is_clean(ReadAs::kUtf8) || is_clean(ReadAs::kSjis) || is_clean(ReadAs::kEuc); }

    // The likeliest of the readings that fit, and how much likelier than the next one.
    ReadAs likeliest(int32_t &margin) {
        constexpr int32_t kNothing = INT32_MAX / 2;
        // No other language is told by less for each byte that is not ASCII.
        constexpr int32_t kLeastOfOthers = 6 * kBit;
        constexpr int32_t kManyBytes = 64;
        const auto read =
            static_cast<int32_t>(std::count_if(read_, read_ + read_length_, [](uint8_t b) { return b >= 0x80; }));
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
        margin = second - least;
        return best;
    }

    // Whether the encoding fits but for a few bytes, or an end.
    bool is_damaged(ReadAs encoding) {
        const int32_t type = type_of(encoding);
        return as(encoding).errors > 0 || as(encoding).cut || found.control_count + found.nul_count > 0 ||
               (type == JKC_TYPE_UTF8 ? found.utf8_first_error >= 0 : type >= 0 && evidence(type).ill_formed > 0);
    }

    size_t read_length() const { return read_length_; }

private:
    const DecisionSample &sample_;
    const uint8_t *read_; // what of the sample is read
    size_t read_length_;
    uint8_t part_[kLongestReading];
    bool is_read_[kReadings] = {};
    Reading readings_[kReadings];
};

int32_t confidence_by(int32_t margin) { return std::min(99, 50 + margin / kBit); }

bool is_empty(Facts &facts, Answer &answer) {
    answer = {JKC_TYPE_EMPTY, 100, 0};
    return facts.found.length == 0;
}

bool begins_with_bom(Facts &facts, Answer &answer) {
    // A cut character behind the mark is an error of the judgement.
    const int32_t type = facts.found.judged == JKC_EUEXPEOD ? JKC_TYPE_UTF8_BOM : facts.found.judged;
    answer = {type, 100, 0};
    return type >= 0 && has_bom(type);
}

bool has_escapes(Facts &facts, Answer &answer) {
    const int32_t type = facts.found.judged;
    answer = {type, facts.high_bytes() == 0 ? 99 : 70, 0};
    return (type == JKC_TYPE_JIS || type == JKC_TYPE_JIS2004) && !facts.selects_ascii_only() &&
           is_tolerable(facts.high_bytes(), static_cast<int64_t>(facts.found.length));
}

// Text with escape sequences and with text of another encoding behind them.
bool has_escapes_and_more(Facts &facts, Answer &answer) {
    answer = {JKC_DECISION_NONE, 90, 0};
    return (facts.found.judged == JKC_TYPE_JIS || facts.found.judged == JKC_TYPE_JIS2004) &&
           !facts.selects_ascii_only();
}

bool is_utf16(Facts &facts, Answer &answer) {
    if (facts.found.nul_count == 0 && facts.found.length >= kLongText && facts.is_clean_in_bytes()) {
        return false;
    }
    const ReadAs encoding =
        facts.cost(ReadAs::kUtf16Be) <= facts.cost(ReadAs::kUtf16Le) ? ReadAs::kUtf16Be : ReadAs::kUtf16Le;
    if (!facts.may_be_utf16(encoding)) {
        return false;
    }
    int32_t other = INT32_MAX / 2;
    for (int i = 0; i < kReadings; ++i) {
        const auto one = static_cast<ReadAs>(i);
        if (one != encoding) {
            other = std::min(other, facts.cost(one));
        }
    }
    const int32_t margin = other - facts.cost(encoding);
    answer = {facts.type_of(encoding), confidence_by(margin), 0};
    return margin >= kClearMargin;
}

bool is_seven_bit(Facts &facts, Answer &answer) {
    const bool escapes = facts.found.judged == JKC_TYPE_JIS && facts.high_bytes() == 0;
    if (escapes) {
        answer = {JKC_TYPE_ASCII, 80, 0};
        return true;
    }
    if (!facts.is_seven_bit() || facts.has_many_controls()) {
        return false;
    }
    Answer other{};
    answer = {JKC_TYPE_ASCII, 100, 0};
    return facts.found.judged == JKC_TYPE_ASCII || !is_utf16(facts, other);
}

bool is_utf8_with_longer(Facts &facts, Answer &answer) {
    answer = {JKC_TYPE_UTF8, 99, 0};
    return facts.found.utf8_first_error < 0 && facts.found.utf8_longer > 0 && facts.found.nul_count == 0 &&
           !facts.has_many_controls();
}

bool has_nuls(Facts &facts, Answer &answer) {
    answer = {JKC_DECISION_BINARY, 95, 0};
    return facts.has_many_nuls();
}

bool has_controls(Facts &facts, Answer &answer) {
    answer = {JKC_DECISION_BINARY, 90, 0};
    return facts.has_many_controls();
}

// In some stretches the text is much likelier in an encoding than in the one that is likeliest for the whole.
bool is_mixed(Facts &facts, Answer &answer) {
    if (facts.found.length >= kLongText * 8 && facts.is_clean_in_bytes()) {
        return false;
    }
    auto chosen = ReadAs::kSjis;
    for (const ReadAs encoding : {ReadAs::kEuc, ReadAs::kUtf8}) {
        chosen = facts.cost(encoding) < facts.cost(chosen) ? encoding : chosen;
    }
    int32_t gained = 0;
    for (size_t piece = 0; piece * kPiece < facts.read_length(); ++piece) {
        const int32_t cost = facts.as(chosen).pieces[piece];
        int32_t least = cost;
        for (const ReadAs encoding : {ReadAs::kSjis, ReadAs::kEuc, ReadAs::kUtf8}) {
            least = std::min(least, facts.as(encoding).pieces[piece]);
        }
        gained += least * 2 < cost ? cost - least : 0;
    }
    answer = {JKC_DECISION_NONE, confidence_by(gained), 0};
    return gained >= kMixedMargin;
}

// Every code type is ill-formed somewhere.
bool fits_nothing(Facts &facts, Answer &answer) {
    answer = {JKC_DECISION_NONE, 90, 0};
    return !facts.fits(ReadAs::kSjis) && !facts.fits(ReadAs::kEuc) && !facts.fits(ReadAs::kUtf8);
}

// Data in which nothing fits has NUL and control bytes, text of another encoding has none.
bool is_noise(Facts &facts, Answer &answer) {
    Answer other{};
    answer = {JKC_DECISION_BINARY, 85, 0};
    return facts.found.nul_count + facts.found.control_count > facts.found.length / kBytesPerControlInDamage &&
           fits_nothing(facts, other);
}

bool is_of_other_language(Facts &facts, Answer &answer) {
    int32_t margin = 0;
    const ReadAs best = facts.likeliest(margin);
    answer = {JKC_DECISION_NONE, confidence_by(margin), 0};
    return best >= ReadAs::kLatin;
}

bool is_likeliest(Facts &facts, Answer &answer) {
    int32_t margin = 0;
    const ReadAs best = facts.likeliest(margin);
    answer = {facts.type_of(best), confidence_by(margin) - (facts.is_damaged(best) ? kDamage : 0), 0};
    return margin >= kClearMargin;
}

bool is_open(Facts &facts, Answer &answer) {
    int32_t margin = 0;
    const ReadAs best = facts.likeliest(margin);
    const int32_t least = facts.cost(best);
    answer = {JKC_DECISION_UNDECIDED, 50, 0};
    for (int i = 0; i < kReadings; ++i) {
        const auto encoding = static_cast<ReadAs>(i);
        const int32_t type = facts.type_of(encoding);
        if (type >= 0 && facts.fits(encoding) && facts.cost(encoding) - least < kClearMargin) {
            answer.open |= judged_bit(type);
        }
    }
    return true;
}

struct Rule {
    const char *name;
    bool (*holds)(Facts &facts, Answer &answer);
};

// The first rule that holds decides.
constexpr Rule kRules[] = {
    {"empty", is_empty},
    {"byte-order mark", begins_with_bom},
    {"escape sequences", has_escapes},
    {"escape sequences and more", has_escapes_and_more},
    {"7-bit text", is_seven_bit},
    {"well-formed UTF-8", is_utf8_with_longer},
    {"UTF-16 characters", is_utf16},
    {"NUL bytes", has_nuls},
    {"control bytes", has_controls},
    {"noise", is_noise},
    {"mixed encodings", is_mixed},
    {"no encoding fits", fits_nothing},
    {"another language", is_of_other_language},
    {"likeliest characters", is_likeliest},
    {"as likely", is_open},
};

} // namespace

void decide(JkcDetection &found, const DecisionSample &sample) {
    Facts facts(found, sample);
    Answer answer{JKC_DECISION_UNDECIDED, 0, 0};
    int32_t rule = 0;
    while (!kRules[rule].holds(facts, answer)) {
        ++rule;
    }
    found.decision = answer.decision;
    found.open = answer.open;
    found.rule = rule + 1;
    found.confidence = answer.confidence;
}

} // namespace jkc

const char *jkc_rule_name(int32_t rule) {
    return rule >= 1 && rule <= static_cast<int32_t>(std::size(jkc::kRules)) ? jkc::kRules[rule - 1].name : "";
}

const char *jkc_decision_name(int32_t decision) {
    switch (decision) {
    case JKC_DECISION_UNDECIDED:
        return "undecided";
    case JKC_DECISION_NONE:
        return "unknown";
    case JKC_DECISION_BINARY:
        return "binary";
    default:
        return decision == JKC_TYPE_EMPTY || jkc::family_of(decision) != jkc::Family::kNone ? _typeNames[decision].name
                                                                                            : "";
    }
}
