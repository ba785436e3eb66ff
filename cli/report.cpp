#include "report.h"

#include <unistd.h>

#include <array>
#include <cerrno>
#include <climits>
#include <cstdio>

#include "quoting.h"
#include "translate.h"

namespace jkc::cli {
namespace {

bool wipe_line = false;
Spoken *collected = nullptr;
std::FILE *report_stream = stdout;

// A link is there, whatever the system says of what it points to.
std::string reason_of(const std::string &file, int error) {
    std::array<char, PATH_MAX> target{};
    const ssize_t length = error == ENOENT ? readlink(file.c_str(), target.data(), target.size()) : -1;
    return length < 0 ? system_text(error)
                      : format(tr("a symbolic link to '%s', which does not exist"),
                               shown({target.data(), static_cast<size_t>(length)}).c_str());
}

void write(std::FILE *stream, const std::string &text) {
    std::fwrite(text.data(), 1, text.size(), stream);
    std::fflush(stream);
}

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

void report_to(std::FILE *stream) { report_stream = stream; }

void collect(Spoken *spoken) { collected = spoken; }

void pass_on(const Spoken &spoken) {
    if (!spoken.messages.empty()) {
        write(stderr, (wipe_line ? kWipeLine : "") + spoken.messages);
    }
    if (!spoken.report.empty()) {
        write(report_stream, spoken.report);
    }
}

void wipe_line_before_messages(bool wipe) { wipe_line = wipe; }

} // namespace jkc::cli
