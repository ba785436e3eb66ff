// The command line.
#pragma once

#include <cstdint>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

#include "jkc.h"

namespace jkc::cli {

enum class Action { kHelp, kVersion, kList, kDetect, kConvert, kLines };

struct Options {
    Action action = Action::kHelp;
    std::string command;            // as typed; empty: none
    std::vector<std::string> files; // never empty for a command; "-" is standard input
    int from = 0;                   // expected code type; 0: none
    int to = 0;                     // wanted code type
    uint32_t line_type = JKC_LINE_KEEP;
    bool suppress = false;
    bool compose = false;
    bool strict = false;
    bool quiet = false;
    bool in_place = false;
    std::string backup_suffix;         // for in_place; empty: keep no old file
    std::optional<std::string> output; // nothing or "-": standard output
    int jobs = 1;                      // processes that convert side by side
    bool progress = true;
};

// A command line that cannot be understood. what() is the reason; empty when it has been told already.
struct UsageError : std::runtime_error {
    using std::runtime_error::runtime_error;
};

Options parse_options(int argc, char **argv);

} // namespace jkc::cli
