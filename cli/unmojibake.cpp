#include "unmojibake.h"

#include <optional>

#include "code_types.h"
#include "each_file.h"
#include "jkc/mojibake.h"
#include "json.h"
#include "judged.h"
#include "output.h"
#include "told_conversion.h"
#include "translate.h"

namespace jkc::cli {
namespace {

struct Proposal {
    std::string text;
    JkcMending how{};

    bool is_as(const Proposal &other) const {
        bool same = how.count == other.how.count;
        for (int32_t i = 0; same && i < how.count; ++i) {
            same = how.steps[i].was == other.how.steps[i].was && how.steps[i].read_as == other.how.steps[i].read_as;
        }
        return same;
    }
};

std::optional<Proposal> propose(std::string_view text) {
    Proposal proposal;
    proposal.how.size = sizeof proposal.how;
    uint8_t *mended = nullptr;
    size_t length = 0;
    if (jkc_unmojibake(reinterpret_cast<const uint8_t *>(text.data()), text.size(), &mended, &length, &proposal.how) ==
        JKC_EALLOC) {
        throw std::bad_alloc();
    }
    if (mended == nullptr) {
        return std::nullopt;
    }
    const std::unique_ptr<uint8_t, void (*)(void *)> release(mended, jkc_free);
    proposal.text.assign(reinterpret_cast<const char *>(mended), length);
    return proposal;
}

// "UTF-8 that was read as CP1252 (99 % sure)"
std::string describe(const Proposal &proposal) {
    std::string text;
    for (int32_t i = 0; i < proposal.how.count; ++i) {
        const JkcMisreading &step = proposal.how.steps[i];
        text += format(i == 0 ? tr("%s that was read as %s") : tr(", and before that %s that was read as %s"),
                       jkc_misread_name(step.was), jkc_misread_name(step.read_as));
    }
    text += format(tr(" (%d %% sure)"), proposal.how.confidence);
    const uint64_t lost = proposal.how.lost;
    if (lost > 0) {
        text += format(tr_count("; %llu character is lost", "; %llu characters are lost", lost),
                       static_cast<unsigned long long>(lost));
    }
    return text;
}

nlohmann::ordered_json json_of(const Proposal &proposal) {
    nlohmann::ordered_json object;
    object["confidence"] = proposal.how.confidence;
    object["lost"] = proposal.how.lost;
    for (int32_t i = 0; i < proposal.how.count; ++i) {
        nlohmann::ordered_json step;
        step["was"] = jkc_misread_name(proposal.how.steps[i].was);
        step["read_as"] = jkc_misread_name(proposal.how.steps[i].read_as);
        object["steps"].push_back(std::move(step));
    }
    object["text"] = proposal.text;
    return object;
}

// Mends the lines of a text, each for itself.
class Lines {
public:
    Lines(const std::string &name, bool json) : name_(name), json_(json) {}

    void take(std::string_view line) {
        ++number_;
        std::optional<Proposal> proposal = propose(line);
        if (!proposal || !run_ || !run_->is_as(*proposal)) {
            tell_run();
        }
        if (!proposal) {
            text.append(line);
            return;
        }
        text += proposal->text;
        if (json_) {
            nlohmann::ordered_json object;
            object["line"] = number_;
            object.update(json_of(*proposal));
            mended.push_back(std::move(object));
        }
        if (run_) { // what is told of several lines is the least sure of them
            proposal->how.confidence = std::min(proposal->how.confidence, run_->how.confidence);
            proposal->how.lost += run_->how.lost;
        } else {
            first_ = number_;
        }
        last_ = number_;
        run_ = std::move(proposal);
        any = true;
    }
    void finish() { tell_run(); }

    std::string text;
    nlohmann::ordered_json mended = nlohmann::ordered_json::array();
    bool any = false;

private:
    void tell_run() {
        if (run_ && !json_) {
            say(name_, describe_lines({0, first_, last_, 0, 0}) + ": " + describe(*run_));
        }
        run_.reset();
    }

    const std::string &name_;
    bool json_;
    uint64_t number_ = 0;
    uint64_t first_ = 0;
    uint64_t last_ = 0;
    std::optional<Proposal> run_; // of the lines from first_ to last_
};

ExitCode mend_file(const Options &options, const std::string &name, Output &out) {
    Source source(name);
    const Judged judged = judge(source, options);
    if (!judged.is_decided()) {
        say(name, undecided_reason(judged, options));
        return kUndecidedOrLost;
    }
    const Part whole{judged.type == JKC_TYPE_EMPTY ? static_cast<int>(JKC_TYPE_ASCII) : judged.type, 1, 1, 0,
                     source.length()};
    std::string text;
    convert_part(
        source, whole, route_to(JKC_TYPE_UTF8, options), [&](std::string_view piece) { text += piece; }, nullptr);

    nlohmann::ordered_json object;
    object["file"] = name;
    object["encoding"] = jkc_decision_name(judged.type);
    const std::optional<Proposal> proposal = propose(text);
    Lines lines(name, options.json);
    if (!proposal && options.by_line) {
        for (size_t begin = 0; begin < text.size();) {
            const size_t end = std::min(text.find('\n', begin), text.size() - 1) + 1;
            lines.take(std::string_view(text).substr(begin, end - begin));
            begin = end;
        }
        lines.finish();
    }
    const bool mended = proposal || lines.any;
    if (options.json) {
        object["mended"] = mended;
        if (proposal) {
            object.update(json_of(*proposal));
        } else if (options.by_line) {
            object["lines"] = lines.mended;
        }
        out.print(line_of(object));
    } else if (proposal) {
        say(name, describe(*proposal));
        out.print(proposal->text);
    } else {
        out.print(lines.text);
        if (!mended) {
            say(name, tr("no mojibake that can be mended"));
        }
    }
    return mended ? kDone : kUndecidedOrLost;
}

} // namespace

ExitCode unmojibake(const Options &options) {
    Output out;
    const ExitCode code =
        for_each_file(list_files(options), out, [&](const std::string &name) { return mend_file(options, name, out); });
    if (out.error() == 0) {
        out.commit();
    }
    return code;
}

} // namespace jkc::cli
