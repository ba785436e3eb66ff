// The rules of the decision, in the order in which they are asked. docs/decision.md tells them in words.
#include "judge/decision.h"

#include <algorithm>
#include <iterator>

#include "judge/candidates.h"
#include "judge/facts.h"
#include "judge/language.h"

namespace jkc {

namespace {

// How much likelier the likeliest reading must be than the next one: 64 times. Less leaves 0.07 % of the pieces of 4 to
// 300 bytes of prose in EUC open and 0.002 % of those in Shift_JIS, and takes 0.002 % for another encoding.
constexpr int32_t kClearMargin = 6 * kBit;
// A few characters in a long text are often single bytes of other encodings, as in program sources. What is well-formed
// UTF-8 is so no more seldom than in a short text.
constexpr int32_t kClearMarginOfFew = 20 * kBit;
constexpr int32_t kFewCharacters = 12;
constexpr uint64_t kLongText = 1024;

int32_t clear_margin(Facts &facts, ReadAs best) {
    const bool few = facts.found.length >= kLongText && facts.as(best).characters < kFewCharacters;
    return few && !facts.is_utf8() ? kClearMarginOfFew : kClearMargin;
}

// What the pieces of a mixed text gain when each is read in the encoding that suits it.
constexpr int32_t kMixedMargin = 60 * kBit;

// So many bytes of UTF-16 without NULs do not fit a byte encoding by chance: of 24,000 pieces of prose of 40 bytes 21
// do, of 9,300 of 64 bytes none.
constexpr uint64_t kLongForUtf16 = 64;
// Nor do so many bytes of a mixed text.
constexpr uint64_t kLongForMixed = 512;

// Where no encoding fits, this many bytes for each NUL or control byte tell data from text.
constexpr uint64_t kBytesPerControlInNoise = 200;

// What damage takes from the confidence.
constexpr int32_t kDamage = 15;

struct Answer {
    int32_t decision;
    int32_t confidence;
    int32_t open;
};

// 50 is a tie, and each bit adds one.
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

bool is_jis(const Facts &facts) {
    const int32_t type = facts.found.judged;
    return (type == JKC_TYPE_JIS || type == JKC_TYPE_JIS2004) && !facts.selects_ascii_only();
}

bool has_escapes(Facts &facts, Answer &answer) {
    if (!is_jis(facts)) {
        return false;
    }
    const int64_t others = facts.high_bytes();
    answer = {facts.found.judged, others == 0 ? 99 : 99 - kDamage, 0};
    return is_tolerable(others, static_cast<int64_t>(facts.found.length));
}

// Text with escape sequences and with text of another encoding.
bool has_escapes_and_more(Facts &facts, Answer &answer) {
    answer = {JKC_DECISION_NONE, 90, 0};
    return is_jis(facts);
}

bool is_utf16(Facts &facts, Answer &answer) {
    if (facts.found.nul_count == 0 && facts.found.length >= kLongForUtf16 && facts.fits_without_error()) {
        return false;
    }
    const ReadAs encoding =
        facts.cost(ReadAs::kUtf16Be) <= facts.cost(ReadAs::kUtf16Le) ? ReadAs::kUtf16Be : ReadAs::kUtf16Le;
    if (!facts.may_be_utf16(encoding)) {
        return false;
    }
    int32_t other = INT32_MAX;
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
    if (facts.found.judged == JKC_TYPE_JIS && facts.high_bytes() == 0) { // with escape sequences for a terminal
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
    if (facts.found.length >= kLongForMixed && facts.fits_without_error()) {
        return false;
    }
    auto chosen = ReadAs::kSjis;
    for (const ReadAs encoding : {ReadAs::kEuc, ReadAs::kUtf8}) {
        chosen = facts.cost(encoding) < facts.cost(chosen) ? encoding : chosen;
    }
    int32_t gained = 0;
    for (size_t piece = 0; piece * kPiece < facts.part().size(); ++piece) {
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
    return facts.found.nul_count + facts.found.control_count > facts.found.length / kBytesPerControlInNoise &&
           fits_nothing(facts, other);
}

bool is_of_other_language(Facts &facts, Answer &answer) {
    const auto [best, margin] = facts.likeliest();
    answer = {JKC_DECISION_NONE, confidence_by(margin), 0};
    return best >= ReadAs::kLatin;
}

bool is_likeliest(Facts &facts, Answer &answer) {
    const auto [best, margin] = facts.likeliest();
    answer = {facts.type_of(best), confidence_by(margin) - (facts.is_damaged(best) ? kDamage : 0), 0};
    return margin >= clear_margin(facts, best);
}

bool is_open(Facts &facts, Answer &answer) {
    const auto [best, margin] = facts.likeliest();
    const int32_t least = facts.cost(best);
    answer = {JKC_DECISION_UNDECIDED, 50, 0};
    for (int i = 0; i < kReadings; ++i) {
        const auto encoding = static_cast<ReadAs>(i);
        const int32_t type = facts.type_of(encoding);
        if (type >= 0 && facts.fits(encoding) && facts.cost(encoding) - least < clear_margin(facts, best)) {
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
