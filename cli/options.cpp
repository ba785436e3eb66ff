#include "options.h"

#include <getopt.h>

#include <algorithm>
#include <array>
#include <cstdlib>

#include "code_types.h"

namespace jkc::cli {
namespace {

// Options without a one-letter form.
enum LongOption { kVersion = 256, kList, kEol, kInPlace, kSuppress, kCompose, kStrict, kNoProgress };

constexpr option kNoMore{nullptr, 0, nullptr, 0};
constexpr option kHelpOption{"help", no_argument, nullptr, 'h'};
constexpr option kVersionOption{"version", no_argument, nullptr, kVersion};
constexpr option kListOption{"list", no_argument, nullptr, kList};

constexpr option kCommonOptions[] = {kHelpOption, kVersionOption, kListOption, kNoMore};
constexpr option kConvertOptions[] = {
    kHelpOption,
    kVersionOption,
    kListOption,
    {"from", required_argument, nullptr, 'f'},
    {"to", required_argument, nullptr, 't'},
    {"output", required_argument, nullptr, 'o'},
    {"in-place", optional_argument, nullptr, kInPlace},
    {"eol", required_argument, nullptr, kEol},
    {"suppress", no_argument, nullptr, kSuppress},
    {"compose", no_argument, nullptr, kCompose},
    {"strict", no_argument, nullptr, kStrict},
    {"quiet", no_argument, nullptr, 'q'},
    {"jobs", required_argument, nullptr, 'j'},
    {"no-progress", no_argument, nullptr, kNoProgress},
    kNoMore,
};
constexpr option kLinesOptions[] = {
    kHelpOption,
    kVersionOption,
    kListOption,
    {"from", required_argument, nullptr, 'f'},
    {"to", required_argument, nullptr, 't'},
    kNoMore,
};

struct Command {
    const char *name;
    Action action;
    const char *short_options;
    const option *long_options;
};

// The first stands for a command line without a command.
constexpr std::array kCommands{
    Command{"", Action::kHelp, "+h", kCommonOptions},
    Command{"detect", Action::kDetect, "h", kCommonOptions},
    Command{"convert", Action::kConvert, "hf:t:o:qj:", kConvertOptions},
    Command{"lines", Action::kLines, "hf:t:", kLinesOptions},
};

int code_type_option(const char *name) {
    const int type = find_code_type(name);
    if (type < 0) {
        throw UsageError("unknown code type '" + std::string(name) + "' ('jkc --list' shows the known ones)");
    }
    return type;
}

uint32_t line_type_option(const std::string &name) {
    constexpr std::pair<const char *, uint32_t> kLineTypes[] = {
        {"keep", JKC_LINE_KEEP}, {"lf", JKC_LINE_LF}, {"crlf", JKC_LINE_CRLF}, {"cr", JKC_LINE_CR}};
    for (const auto &[known, type] : kLineTypes) {
        if (name == known) {
            return type;
        }
    }
    throw UsageError("unknown line end '" + name + "' (keep, lf, crlf or cr)");
}

std::string backup_suffix_option(const char *suffix) {
    if (suffix == nullptr) {
        return "";
    }
    std::string text = suffix;
    if (text.empty() || text.find('/') != std::string::npos) {
        throw UsageError("--in-place takes a suffix such as .bak");
    }
    return text;
}

int jobs_option(const char *number) {
    constexpr long kMost = 1000;
    char *end = nullptr;
    const long jobs = std::strtol(number, &end, 10);
    if (end == number || *end != '\0' || jobs < 1 || jobs > kMost) {
        throw UsageError("--jobs takes a number from 1 to " + std::to_string(kMost));
    }
    return static_cast<int>(jobs);
}

void check_lines(const Options &options) {
    if (options.files.size() > 1) {
        throw UsageError("lines takes one file");
    }
    if (options.to == JKC_TYPE_JIS2004) {
        throw UsageError("lines cannot be read in " + code_type_name(options.to));
    }
}

void check_convert(const Options &options, bool files_named) {
    if (options.to == 0) {
        throw UsageError("convert needs the target: -t CODE");
    }
    if (!options.in_place) {
        if (options.jobs > 1) {
            throw UsageError("--jobs needs --in-place, since joined output is written in order");
        }
        return;
    }
    if (options.output) {
        throw UsageError("-o and --in-place exclude each other");
    }
    if (!files_named || std::find(options.files.begin(), options.files.end(), "-") != options.files.end()) {
        throw UsageError("--in-place needs files, not standard input");
    }
}

} // namespace

Options parse_options(int argc, char **argv) {
    if (argc < 2) {
        throw UsageError("no command (see 'jkc --help')");
    }
    Options options;
    std::vector<char *> args(argv, argv + argc);
    const Command *command = kCommands.data();
    if (args[1][0] != '-') {
        options.command = args[1];
        command = std::find_if(kCommands.begin() + 1, kCommands.end(),
                               [&](const Command &c) { return options.command == c.name; });
        if (command == kCommands.end()) {
            throw UsageError("unknown command '" + options.command + "' (see 'jkc --help')");
        }
        args.erase(args.begin() + 1);
    }
    options.action = command->action;
    if (options.action == Action::kLines) {
        options.to = JKC_TYPE_UTF8;
    }

    char program[] = "jkc"; // how getopt_long begins its messages
    args[0] = program;
    const int count = static_cast<int>(args.size());
    args.push_back(nullptr);
    for (;;) {
        switch (getopt_long(count, args.data(), command->short_options, command->long_options, nullptr)) {
        case 'h':
            options.action = Action::kHelp;
            return options;
        case kVersion:
            options.action = Action::kVersion;
            return options;
        case kList:
            options.action = Action::kList;
            return options;
        case 'f':
            options.from = code_type_option(optarg);
            continue;
        case 't':
            options.to = code_type_option(optarg);
            continue;
        case 'o':
            options.output = optarg;
            continue;
        case 'q':
            options.quiet = true;
            continue;
        case 'j':
            options.jobs = jobs_option(optarg);
            continue;
        case kNoProgress:
            options.progress = false;
            continue;
        case kEol:
            options.line_type = line_type_option(optarg);
            continue;
        case kInPlace:
            options.in_place = true;
            options.backup_suffix = backup_suffix_option(optarg);
            continue;
        case kSuppress:
            options.suppress = true;
            continue;
        case kCompose:
            options.compose = true;
            continue;
        case kStrict:
            options.strict = true;
            continue;
        case -1:
            break;
        default:
            throw UsageError(""); // getopt_long has told why
        }
        break;
    }
    options.files.assign(args.begin() + optind, args.end() - 1);
    const bool files_named = !options.files.empty();
    if (!files_named) {
        options.files.emplace_back("-");
    }
    if (options.action == Action::kConvert) {
        check_convert(options, files_named);
    }
    if (options.action == Action::kLines) {
        check_lines(options);
    }
    return options;
}

} // namespace jkc::cli
