// The commands and their options: one table, from which the command line is read, help is made and unknown words are
// guessed at.
#pragma once

#include <span>
#include <string_view>

namespace jkc::cli {

enum class Action { kNone, kHelp, kVersion, kList, kDetect, kConvert, kCheck, kLines, kUnmojibake };

// What a command is to options; they are ORed.
enum CommandBit : unsigned {
    kForProgram = 1,
    kForDetect = 2,
    kForConvert = 4,
    kForCheck = 8,
    kForLines = 16,
    kForUnmojibake = 32,
    kForAll = 63
};

struct Command {
    const char *name; // the first is the program without a command, and has none
    Action action;
    CommandBit bit;
    const char *usage; // what stands behind the name; not translated
    const char *what;  // for the list of commands
    const char *about; // what help says before the options
    const char *notes; // and behind them
};

enum class OptionId {
    kTo,
    kFrom,
    kAssume,
    kByLine,
    kOutput,
    kInPlace,
    kOutputDir,
    kKeepTime,
    kEol,
    kCompose,
    kOnLoss,
    kSuppress,
    kStrict,
    kAllowLoss,
    kDryRun,
    kReport,
    kJson,
    kExplain,
    kRecursive,
    kInclude,
    kExclude,
    kFilesFrom,
    kNull,
    kJobs,
    kQuiet,
    kNoProgress,
    kHelp,
    kList,
    kVersion,
};

struct OptionRow {
    OptionId id;
    unsigned commands; // CommandBits
    char letter;       // 0: none
    const char *name;
    const char *other_name; // null: none
    const char *argument;   // as help shows it, "[=X]" for one that may be missing; null: none
    const char *help;

    bool is_named(std::string_view word) const { return word == name || (other_name != nullptr && word == other_name); }
    // If not from "=", from the word behind.
    bool needs_argument() const { return argument != nullptr && argument[0] != '['; }
};

std::span<const Command> all_commands();
std::span<const OptionRow> all_options();

// Null where there is none.
const Command *find_command(const char *name);

} // namespace jkc::cli
