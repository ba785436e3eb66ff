#include "judge/decision.h"

#include <algorithm>
#include <iterator>

#include "judge/candidates.h"
#include "judge/language.h"
#include "judge/reading.h"

namespace jkc {

namespace {

// How much likelier a reading must be than the next one. Of the pieces of prose that are decided by less than this, ...
constexpr int32_t kClearMargin = 6 * kBit;
// Of texts that are much likelier in another encoding for a stretch.
constexpr int32_t kMixedMargin = 60 * kBit;

// How much rarer texts are in one encoding than in another, as far as nothing else is known.
constexpr int32_t kPrior[kReadings] = {
    3 * kBit,  // Shift_JIS
    5 * kBit,  // EUC
    0,         // UTF-8
    30 * kBit, // UTF-16 without a mark
    30 * kBit, //
    12 * kBit, // other languages, of which we know too little to be sure
    30 * kBit, //
    30 * kBit, //
};

// One NUL or control byte in so many is more than a damaged text has.
constexpr uint64_t kBytesPerNul = 512;
constexpr uint64_t kBytesPerControl = 20;

constexpr bool is_in(int32_t set, int32_t type) { return set >= JKC_LOWEST_SET && (set & judged_bit(type)) != 0; }

struct Answer {
    int32_t decision;
    int32_t confidence;
    int32_t open;
};

// A text, and what the rules ask about it. Readings are made when a rule asks for one.
class Facts {
public:
    Facts(const JkcDetection &found, const DecisionSample &sample) : found(found), sample_(sample) {}

    const JkcDetection &found;

    const Reading &as(ReadAs encoding) {
        const auto i = static_cast<size_t>(encoding);
        if (!is_read_[i]) {
            is_read_[i] = true;
            read_as(encoding, sample_.bytes, sample_.length, readings_[i]);
        }
        return readings_[i];
    }

    int32_t cost(ReadAs encoding) { return as(encoding).cost + kPrior[static_cast<size_t>(encoding)]; }

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

    // Whether the whole text may be in the encoding. The readings know the sample only.
    bool fits(ReadAs encoding) {
        const Reading &reading = as(encoding);
        if (!is_tolerable(reading.errors, static_cast<int64_t>(sample_.length)) && reading.errors > kErrorsInShort) {
            return false;
        }
        const int32_t type = type_of(encoding);
        if (type < 0 || sample_.whole || (type == JKC_TYPE_UTF8 && found.utf8_first_error < 0)) {
            return true;
        }
        return is_tolerable(evidence(type).ill_formed, static_cast<int64_t>(found.length));
    }

    bool is_seven_bit() const { return found.judged == JKC_TYPE_ASCII || is_in(found.judged_set, JKC_TYPE_ASCII); }
    bool has_many_nuls() const { return found.nul_count * kBytesPerNul > found.length; }
    bool has_many_controls() const { return found.control_count * kBytesPerControl > found.length; }
    bool is_utf8() const { return found.utf8_first_error < 0 && found.utf8_two_byte + found.utf8_longer > 0; }

    ReadAs likelier_utf16() {
        return cost(ReadAs::kUtf16Be) <= cost(ReadAs::kUtf16Le) ? ReadAs::kUtf16Be : ReadAs::kUtf16Le;
    }

    // The likeliest of the readings that fit; `count` of them are asked.
    ReadAs likeliest(int count, int32_t &margin) {
        constexpr int32_t kNothing = INT32_MAX / 2;
        int32_t best = kNothing;
        margin = 0;
        auto chosen = ReadAs::kDoubleByte;
        int32_t second = kNothing;
        for (int i = 0; i < count; ++i) {
            const auto encoding = static_cast<ReadAs>(i);
            if (!fits(encoding)) {
                continue;
            }
            const int32_t c = cost(encoding);
            if (c < best) {
                second = best;
                best = c;
                chosen = encoding;
            } else {
                second = std::min(second, c);
            }
        }
        margin = second - best;
        return chosen;
    }

    size_t sample_length() const { return sample_.length; }
    bool has_whole() const { return sample_.whole; }

private:
    // One damaged place in a text that is too short for one in a hundred.
    static constexpr int32_t kErrorsInShort = 0;

    const DecisionSample &sample_;
    bool is_read_[kReadings] = {};
    Reading readings_[kReadings];
};

int32_t confidence_by(int32_t margin) { return std::min(99, 50 + margin / kBit); }

bool is_empty(Facts &facts, Answer &answer) {
    answer = {JKC_TYPE_EMPTY, 100, 0};
    return facts.found.length == 0;
}

bool has_bom(Facts &facts, Answer &answer) {
    const int32_t type = facts.found.judged;
    answer = {type, 100, 0};
    return type == JKC_TYPE_UTF8_BOM || type == JKC_TYPE_UTF16BE_BOM || type == JKC_TYPE_UTF16LE_BOM;
}

bool has_escapes(Facts &facts, Answer &answer) {
    const int32_t type = facts.found.judged;
    answer = {type, 99, 0};
    return type == JKC_TYPE_JIS || type == JKC_TYPE_JIS2004;
}

bool is_utf16(Facts &facts, Answer &answer) {
    const ReadAs encoding = facts.likelier_utf16();
    const Reading &reading = facts.as(encoding);
    const auto units = static_cast<int32_t>(facts.sample_length() / 2);
    // Noise takes 16 bits a unit.
    if (reading.errors > 0 || reading.controls * 50 > units || reading.cost > units * 16 * kBit + 8 * kBit) {
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
    int32_t margin = 0;
    const auto best = static_cast<size_t>(facts.likeliest(kByteReadings, margin));
    if (best >= kByteReadings) {
        answer = {JKC_DECISION_NONE, 80, 0};
        return false;
    }
    const Reading &chosen = facts.as(static_cast<ReadAs>(best));
    int32_t gained = 0;
    for (size_t piece = 0; piece <= (facts.sample_length() - 1) / kPiece; ++piece) {
        int32_t most = 0;
        for (int i = 0; i < kByteReadings; ++i) {
            most = std::max(most, chosen.pieces[piece] - facts.as(static_cast<ReadAs>(i)).pieces[piece] - 20 * kBit);
        }
        gained += most;
    }
    answer = {JKC_DECISION_NONE, confidence_by(gained), 0};
    return gained >= kMixedMargin;
}

bool is_of_other_language(Facts &facts, Answer &answer) {
    int32_t margin = 0;
    const ReadAs best = facts.likeliest(kReadings, margin);
    answer = {JKC_DECISION_NONE, confidence_by(margin), 0};
    return best >= ReadAs::kLatin;
}

bool is_likeliest(Facts &facts, Answer &answer) {
    int32_t margin = 0;
    const ReadAs best = facts.likeliest(kReadings, margin);
    answer = {facts.type_of(best), confidence_by(margin), 0};
    return margin >= kClearMargin;
}

bool is_open(Facts &facts, Answer &answer) {
    int32_t margin = 0;
    const ReadAs best = facts.likeliest(kReadings, margin);
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
    {"byte-order mark", has_bom},
    {"escape sequences", has_escapes},
    {"7-bit text", is_seven_bit},
    {"well-formed UTF-8", is_utf8_with_longer},
    {"UTF-16 characters", is_utf16},
    {"NUL bytes", has_nuls},
    {"control bytes", has_controls},
    {"mixed encodings", is_mixed},
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
