// The command line.
#pragma once

#include <cstdint>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

#include "command_table.h"
#include "jkc/converter.h"

namespace jkc::cli {

enum class ReportForm { kNone, kText, kJson };

struct Options {
    Action action = Action::kNone;
    const Command *command = nullptr; // the one that help is about, too
    std::vector<std::string> files;   // as named on the command line; "-" is standard input
    int from = 0;                     // expected code type; 0: none
    int assume = 0;                   // what the texts are in, whatever their bytes show; 0: that is judged
    int to = 0;                       // wanted code type
    bool any_variant = false;         // of EUC-JP or ISO-2022-JP, to which `to` belongs
    bool by_line = false;             // a text may be in several
    uint32_t line_type = JKC_LINE_KEEP;
    bool compose = false;
    uint8_t on_loss = JKC_ON_LOSS_REPLACE;
    bool strict = false;
    bool allow_loss = false; // also where the old file is not kept
    bool dry_run = false;
    ReportForm report = ReportForm::kNone;
    bool json = false;
    bool explain = false;
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
