#include "file_report.h"

#include "code_types.h"
#include "jkc/detector.h"
#include "json.h"
#include "platform.h"
#include "quoting.h"
#include "translate.h"

namespace jkc::cli {
namespace {

const char *name_of_kind(int32_t kind) {
    switch (kind) {
    case JKC_LOSS_UNMAPPABLE:
        return "unmappable";
    case JKC_LOSS_TRUNCATED:
        return "truncated";
    default:
        return "ill-formed";
    }
}

} // namespace

void FileReport::read_as(const std::vector<Part> &parts, int target) {
    target_ = code_type_name(target);
    for (const Part &part : parts) {
        const std::string name = code_type_name(part.type);
        if (("+" + source_ + "+").find("+" + name + "+") == std::string::npos) {
            source_.append(source_.empty() ? "" : "+").append(name);
        }
    }
}

void FileReport::not_read(int decision, std::string reason) {
    source_ = jkc_decision_name(decision);
    give_reason(std::move(reason));
}

void FileReport::lost(const Source &source, const std::vector<Part> &parts, const Route &route, uint64_t count) {
    count_ = count;
    if (options_.report == ReportForm::kNone) {
        return;
    }
    for (const Part &part : parts) {
        for_each_loss(source, part, route, [&](const PlacedLoss &loss) {
            losses_.push_back(loss);
            return true;
        });
    }
}

std::string FileReport::text(Outcome outcome) const {
    if (options_.report == ReportForm::kJson) {
        return json(outcome);
    }
    std::string lines;
    for (const PlacedLoss &loss : losses_) {
        lines +=
            format("%s:%llu:%llu: ", shown_on(kStandardOutput, name_).c_str(),
                   static_cast<unsigned long long>(loss.loss.line), static_cast<unsigned long long>(loss.loss.column)) +
            format(tr("byte %llu: %s"), static_cast<unsigned long long>(loss.loss.offset), describe(loss).c_str()) +
            "\n";
    }
    return options_.dry_run || options_.report == ReportForm::kText ? lines + line(outcome) : lines;
}

// "letter.txt: SJIS to UTF8: would be converted, 2 losses"
std::string FileReport::line(Outcome outcome) const {
    std::string line = shown_on(kStandardOutput, name_) + ": ";
    if (outcome == Outcome::kUndecided) {
        return line + reason_ + "\n";
    }
    if (!target_.empty()) {
        line += format(tr("%s to %s: "), source_.c_str(), target_.c_str());
    }
    line += tr(options_.dry_run ? would_be(outcome) : name_of(outcome));
    if (count_ > 0) {
        line +=
            tr(", ") + format(tr_count("%llu loss", "%llu losses", count_), static_cast<unsigned long long>(count_));
    }
    return line + (reason_.empty() ? "" : tr(", ") + reason_) + "\n";
}

std::string FileReport::json(Outcome outcome) const {
    nlohmann::ordered_json object;
    object["file"] = name_;
    object["outcome"] = name_of(outcome);
    object["dry_run"] = options_.dry_run;
    if (!source_.empty()) {
        object["from"] = source_;
    }
    if (!target_.empty()) {
        object["to"] = target_;
    }
    if (!reason_.empty()) {
        object["reason"] = reason_;
    }
    object["loss_count"] = count_;
    object["losses"] = nlohmann::ordered_json::array();
    for (const PlacedLoss &loss : losses_) {
        nlohmann::ordered_json told;
        told["kind"] = name_of_kind(loss.loss.kind);
        told["line"] = loss.loss.line;
        told["column"] = loss.loss.column;
        told["offset"] = loss.loss.offset;
        told["bytes"] = in_hex(loss.bytes);
        if (loss.loss.code_point >= 0) {
            told["character"] = utf8_of(loss.loss.code_point);
        }
        object["losses"].push_back(std::move(told));
    }
    return line_of(object);
}

} // namespace jkc::cli
