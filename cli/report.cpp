#include "report.h"

#include <cstdio>
#include <cstring>

namespace jkc::cli {
namespace {

bool wipe_line = false;

} // namespace

FileError::FileError(std::string file, int error_number) : FileError(std::move(file), std::strerror(error_number)) {}

void say(const std::string &about, const std::string &what) {
    // One call, so that lines of several processes do not mix.
    const std::string line = std::string(wipe_line ? kWipeLine : "") + "jkc: " + about + ": " + what + "\n";
    std::fwrite(line.data(), 1, line.size(), stderr);
}

void wipe_line_before_messages(bool wipe) { wipe_line = wipe; }

} // namespace jkc::cli
