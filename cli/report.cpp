#include "report.h"

#include <cstdio>
#include <cstring>

namespace jkc::cli {

FileError::FileError(std::string file, int error_number) : FileError(std::move(file), std::strerror(error_number)) {}

void say(const std::string &about, const std::string &what) {
    // One call, so that lines of several processes do not mix.
    const std::string line = "jkc: " + about + ": " + what + "\n";
    std::fwrite(line.data(), 1, line.size(), stderr);
}

} // namespace jkc::cli
