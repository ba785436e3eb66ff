// The command line.
#pragma once

#include <cstdint>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

#include "command_table.h"
#include "jkc.h"

namespace jkc::cli {

struct Options {
    Action action = Action::kNone;
    const Command *command = nullptr; // the one that help is about, too
    std::vector<std::string> files;   // as named on the command line; "-" is standard input
    int from = 0;                     // expected code type; 0: none
    int to = 0;                       // wanted code type
    uint32_t line_type = JKC_LINE_KEEP;
    bool suppress = false;
    bool compose = false;
    bool strict = false;
    bool quiet = false;
    bool progress = true;

    // Where to.
    std::optional<std::string> output; // nothing or "-": standard output
    bool in_place = false;
    std::string backup_suffix; // for in_place; empty: keep no old file
    std::string output_dir;    // empty: none
    bool keep_time = false;
    int jobs = 1; // processes that convert side by side

    // Which files besides those named.
    bool recursive = false;
    std::vector<std::string> include; // globs
    std::vector<std::string> exclude;
    std::string files_from; // empty: none
    bool null_names = false;

    // Whether each file is written to one of its own.
    bool writes_each() const { return in_place || !output_dir.empty(); }
};

// A command line that cannot be understood. what() is the reason.
struct UsageError : std::runtime_error {
    using std::runtime_error::runtime_error;
};

Options parse_options(int argc, char **argv);

} // namespace jkc::cli
