#include "detect.h"

#include <utility>

#include "code_types.h"
#include "each_file.h"
#include "json.h"
#include "judged.h"
#include "losses.h"
#include "output.h"
#include "platform.h"
#include "quoting.h"
#include "told_conversion.h"
#include "translate.h"

namespace jkc::cli {
namespace {

constexpr std::pair<int, const char *> kLineEnds[] = {
    {JKC_LINE_LF, "LF"}, {JKC_LINE_CR, "CR"}, {JKC_LINE_CRLF, "CRLF"}};

// The kinds of line ends that the text has in the code type.
int line_ends_of(const Judged &judged) {
    switch (without_mark(judged.type)) {
    case JKC_TYPE_UTF16BE:
        return judged.found.line_ends_utf16be;
    case JKC_TYPE_UTF16LE:
        return judged.found.line_ends_utf16le;
    default:
        return judged.found.line_ends_bytes;
    }
}

// What is printed is the same in all languages, for programs to read.
std::string line_end_names(int line_ends) {
    std::string names;
    for (const auto &[bit, name] : kLineEnds) {
        if ((line_ends & bit) != 0) {
            names.append(names.empty() ? "" : "+").append(name);
        }
    }
    return names.empty() ? "no line ends" : names;
}

// "SJIS, CRLF"
std::string describe(const Judged &judged) {
    if (judged.type == JKC_DECISION_UNDECIDED) {
        return "undecided (" + judged_set_names(judged.found.open) + ")";
    }
    if (judged.type == JKC_TYPE_EMPTY || !judged.is_decided()) {
        return jkc_decision_name(judged.type);
    }
    return code_type_name(judged.type) + ", " + line_end_names(line_ends_of(judged));
}

// The first ill-formed bytes of a text that is said to be in a code type.
struct IllFormed {
    uint64_t count = 0;
    PlacedLoss first{};
};

IllFormed find_ill_formed(const Source &source, const Judged &judged) {
    IllFormed found;
    const Part whole{judged.type, 1, 1, 0, source.length()};
    const Route route = route_to(JKC_TYPE_UTF8, Options());
    for_each_loss(source, whole, route, [&](const PlacedLoss &loss) {
        found.first = found.count == 0 ? loss : found.first;
        ++found.count;
        return true;
    });
    return found;
}

std::string explain(const Judged &judged) {
    const JkcDetection &found = judged.found;
    std::string text = format("  rule: %s (%d %% sure)\n", jkc_rule_name(found.rule), found.confidence);
    constexpr const char *kRow = "  %-14s %12s %12s %12s %12s %12s\n";
    text += format(kRow, "candidate", "valid", "ill-formed", "kana", "penalty", "first error");
    for (const JkcEvidence &e : found.evidence) {
        text +=
            format(kRow, code_type_name(e.type).c_str(), std::to_string(e.valid).c_str(),
                   std::to_string(e.ill_formed).c_str(), std::to_string(e.kana).c_str(),
                   std::to_string(e.penalty).c_str(), e.first_error < 0 ? "-" : std::to_string(e.first_error).c_str());
    }
    return text;
}

nlohmann::ordered_json json_of(const std::string &name, const Judged &judged) {
    nlohmann::ordered_json object;
    const JkcDetection &found = judged.found;
    object["file"] = name;
    object["encoding"] = jkc_decision_name(judged.type);
    if (judged.is_decided()) {
        object["line_ends"] = nlohmann::ordered_json::array();
        for (const auto &[bit, line_end] : kLineEnds) {
            if ((line_ends_of(judged) & bit) != 0) {
                object["line_ends"].push_back(line_end);
            }
        }
    }
    if (found.open != 0) {
        object["candidates"] = judged_set_names(found.open);
    }
    object["rule"] = jkc_rule_name(found.rule);
    object["confidence"] = found.confidence;
    object["length"] = found.length;
    object["utf8_well_formed"] = found.utf8_first_error < 0;
    object["nul"] = found.nul_count;
    object["controls"] = found.control_count;
    for (const JkcEvidence &e : found.evidence) {
        nlohmann::ordered_json evidence;
        evidence["encoding"] = jkc_decision_name(e.type);
        evidence["valid"] = e.valid;
        evidence["ill_formed"] = e.ill_formed;
        evidence["kana"] = e.kana;
        evidence["penalty"] = e.penalty;
        if (e.first_error >= 0) {
            evidence["first_error"] = e.first_error;
        }
        object["evidence"].push_back(std::move(evidence));
    }
    return object;
}

ExitCode detect_file(const Options &options, const std::string &name, Output &out) {
    Source source(name);
    const Judged judged = judge(source, options);
    const IllFormed wrong = judged.assumed && judged.is_decided() ? find_ill_formed(source, judged) : IllFormed();
    const bool fits = judged.is_decided() && wrong.count == 0;
    if (options.json) {
        nlohmann::ordered_json object = json_of(name, judged);
        if (judged.assumed) {
            object["ill_formed"] = wrong.count;
        }
        out.print(line_of(object));
    } else {
        std::string text = describe(judged);
        if (wrong.count > 0) {
            text = format(tr("not %s: %llu ill-formed, the first %s at %s"), code_type_name(judged.type).c_str(),
                          static_cast<unsigned long long>(wrong.count), describe(wrong.first).c_str(),
                          describe_place(wrong.first.loss).c_str());
        }
        out.print((options.null_names ? name + '\0' : shown_on(kStandardOutput, name) + ": ") + text + "\n");
        if (options.explain) {
            out.print(explain(judged));
        }
    }
    return fits ? kDone : kUndecidedOrLost;
}

} // namespace

ExitCode detect(const Options &options) {
    Output out;
    const ExitCode code = for_each_file(list_files(options), out,
                                        [&](const std::string &name) { return detect_file(options, name, out); });
    if (out.error() == 0) {
        out.commit();
    }
    return code;
}

} // namespace jkc::cli
