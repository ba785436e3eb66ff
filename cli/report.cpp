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
std::string *collected = nullptr;

// A link is there, whatever the system says of what it points to.
std::string reason_of(const std::string &file, int error) {
    std::array<char, PATH_MAX> target{};
    const ssize_t length = error == ENOENT ? readlink(file.c_str(), target.data(), target.size()) : -1;
    return length < 0 ? system_text(error)
                      : format(tr("a symbolic link to '%s', which does not exist"),
                               shown({target.data(), static_cast<size_t>(length)}).c_str());
}

void put(const std::string &line) {
    if (collected != nullptr) {
        *collected += line;
    } else {
        pass_on_messages(line);
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

void collect_messages(std::string *messages) { collected = messages; }

void pass_on_messages(const std::string &lines) {
    if (!lines.empty()) {
        const std::string text = (wipe_line ? kWipeLine : "") + lines;
        std::fwrite(text.data(), 1, text.size(), stderr);
    }
}

void wipe_line_before_messages(bool wipe) { wipe_line = wipe; }

} // namespace jkc::cli
