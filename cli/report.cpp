#include "report.h"

#include <cerrno>

#include "descriptor.h"
#include "platform.h"
#include "quoting.h"
#include "translate.h"

namespace jkc::cli {
namespace {

bool wipe_line = false;
Spoken *collected = nullptr;
int report_descriptor = kStandardOutput;

std::string reason_of(const std::string &file, int error) {
    // A link is there, whatever the system says of what it points to.
    const auto target = error == ENOENT ? link_target(file) : std::nullopt;
    if (target) {
        return format(tr("a symbolic link to '%s', which does not exist"), shown(*target).c_str());
    }
    return error == EILSEQ ? tr("a name that is not well-formed Unicode") : system_text(error);
}

void write(int descriptor, const std::string &text) { write_all(descriptor, text.data(), text.size()); }

void put(const std::string &line) {
    if (collected != nullptr) {
        collected->messages += line;
    } else {
        pass_on({line, ""});
    }
}

} // namespace

FileError::FileError(std::string file, int error)
    : std::runtime_error(reason_of(file, error)), name(std::move(file)), error_number(error) {}

void say(const std::string &about, const std::string &what) { put("jkc: " + shown(about) + ": " + what + "\n"); }

void say(const std::string &what) { put("jkc: " + what + "\n"); }

void tell(const FileError &error) {
    if (error.error_number != EPIPE) {
        say(error.name, error.what());
    }
}

void report_text(const std::string &lines) {
    if (collected != nullptr) {
        collected->report += lines;
    } else {
        pass_on({"", lines});
    }
}

void report_to(int descriptor) { report_descriptor = descriptor; }

void collect(Spoken *spoken) { collected = spoken; }

void pass_on(const Spoken &spoken) {
    if (!spoken.messages.empty()) {
        write(kStandardError, (wipe_line ? kWipeLine : "") + spoken.messages);
    }
    if (!spoken.report.empty()) {
        write(report_descriptor, spoken.report);
    }
}

void wipe_line_before_messages(bool wipe) { wipe_line = wipe; }

} // namespace jkc::cli
