#include "options.h"

#include <strings.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>

#include "code_types.h"
#include "option_values.h"
#include "platform.h"
#include "quoting.h"
#include "suggest.h"
#include "translate.h"

namespace jkc::cli {
namespace {

int code_type_option(const std::string &name) {
    const int type = find_code_type(name);
    if (type < 0) {
        throw UsageError(format(tr("unknown code type '%s'%s ('jkc --list' shows the known ones)"), shown(name).c_str(),
                                suggest_code_type(name).c_str()));
    }
    return type;
}

// The value that a word names, whatever its case.
template <typename Value, size_t kCount>
Value named(const std::string &name, const OptionValue<Value> (&values)[kCount], const char *unknown) {
    for (const auto &[known, value] : values) {
        if (strcasecmp(name.c_str(), known) == 0) {
            return value;
        }
    }
    throw UsageError(unknown + (": " + shown(name)));
}

uint32_t line_type_option(const std::string &name) {
    return named(name, kLineTypes, tr("--eol takes keep, lf, crlf or cr"));
}

uint8_t on_loss_option(const std::string &name) {
    return named(name, kLossPolicies, tr("--on-loss takes replace, omit, escape or stop"));
}

ReportForm report_option(const char *form) {
    return form == nullptr ? ReportForm::kText : named(form, kReportForms, tr("--report takes text or json"));
}

std::string backup_suffix_option(const char *suffix) {
    if (suffix == nullptr) {
        return "";
    }
    if (*suffix == '\0' || native_name(suffix).find('/') != std::string::npos) {
        throw UsageError(tr("--in-place takes a suffix such as .bak"));
    }
    return suffix;
}

int jobs_option(const char *number) {
    constexpr int kMost = 1000;
    char *end = nullptr;
    const long jobs = std::strtol(number, &end, 10);
    if (end == number || *end != '\0' || jobs < 1 || jobs > kMost) {
        throw UsageError(format(tr("--jobs takes a number from 1 to %d"), kMost));
    }
    return static_cast<int>(jobs);
}

std::string path_option(const char *option, const char *path) {
    if (*path == '\0') {
        throw UsageError(format(tr("%s takes a name"), option));
    }
    return native_name(path);
}

const Command *command_named(const std::string &name) {
    const Command *command = find_command(name.c_str());
    if (command == nullptr) {
        Suggestion suggestion(name);
        for (const Command &known : all_commands().subspan(1)) {
            suggestion.offer(known.name);
        }
        throw UsageError(
            format(tr("unknown command '%s'%s (see 'jkc --help')"), shown(name).c_str(), suggestion.text().c_str()));
    }
    return command;
}

// Goes through the words behind the command.
class Parser {
public:
    Parser(Options &options, char **words) : options_(options), words_(words) {}

    void parse() {
        bool options_end = false;
        // An option such as --help makes an end: whatever else there is.
        const Action action = options_.action;
        while (*words_ != nullptr && options_.action == action) {
            const char *word = *words_++;
            if (options_end || word[0] != '-' || word[1] == '\0') {
                options_.files.push_back(native_name(word));
            } else if (word[1] != '-') {
                take_letters(word + 1);
            } else if (word[2] == '\0') {
                options_end = true;
            } else {
                take_long(word + 2);
            }
        }
    }

private:
    template <typename Fits>
    const OptionRow *find(Fits fits) const {
        const auto all = all_options();
        const auto found = std::find_if(all.begin(), all.end(), [&](const OptionRow &row) {
            return (row.commands & options_.command->bit) != 0 && fits(row);
        });
        return found == all.end() ? nullptr : &*found;
    }

    const char *next_word(const OptionRow &row) {
        if (*words_ == nullptr) {
            throw UsageError(format(tr("--%s needs an argument: %s"), row.name, row.argument));
        }
        return *words_++;
    }

    // "-qf sjis" or "-qfsjis"
    void take_letters(const char *letters) {
        while (*letters != '\0') {
            const char letter = *letters++;
            const OptionRow *row = find([&](const OptionRow &r) { return r.letter == letter; });
            if (row == nullptr) {
                throw UsageError(format(tr("unknown option '-%s'"), shown(std::string(1, letter)).c_str()));
            }
            if (row->argument == nullptr) {
                apply(row->id, nullptr);
                continue;
            }
            apply(row->id, *letters != '\0' ? letters : next_word(*row));
            return;
        }
    }

    // "to=sjis" or "to sjis". No abbreviations: what they mean would change with each new option.
    void take_long(const char *word) {
        const char *equals = std::strchr(word, '=');
        const std::string name(word, equals == nullptr ? std::strlen(word) : static_cast<size_t>(equals - word));
        const OptionRow *row = find([&](const OptionRow &r) { return r.is_named(name); });
        if (row == nullptr) {
            Suggestion suggestion(name);
            find([&](const OptionRow &r) {
                suggestion.offer(r.name);
                return false;
            });
            throw UsageError(format(tr("unknown option '--%s'%s"), shown(name).c_str(), suggestion.text("--").c_str()));
        }
        if (equals != nullptr && row->argument == nullptr) {
            throw UsageError(format(tr("--%s takes no argument"), row->name));
        }
        const char *argument = equals != nullptr ? equals + 1 : row->needs_argument() ? next_word(*row) : nullptr;
        apply(row->id, argument);
    }

    void apply(OptionId id, const char *argument) {
        switch (id) {
        case OptionId::kTo:
            options_.to = code_type_option(argument);
            options_.any_variant = leaves_variant_open(argument);
            break;
        case OptionId::kAssume:
            options_.assume = code_type_option(argument);
            break;
        case OptionId::kByLine:
            options_.by_line = true;
            break;
        case OptionId::kDryRun:
            options_.dry_run = true;
            break;
        case OptionId::kReport:
            options_.report = report_option(argument);
            break;
        case OptionId::kJson:
            options_.json = true;
            break;
        case OptionId::kExplain:
            options_.explain = true;
            break;
        case OptionId::kOnLoss:
            options_.on_loss = on_loss_option(argument);
            break;
        case OptionId::kAllowLoss:
            options_.allow_loss = true;
            break;
        case OptionId::kFrom:
            options_.from = code_type_option(argument);
            break;
        case OptionId::kOutput:
            options_.output = native_name(argument);
            break;
        case OptionId::kInPlace:
            options_.in_place = true;
            options_.backup_suffix = backup_suffix_option(argument);
            break;
        case OptionId::kOutputDir:
            options_.output_dir = path_option("--output-dir", argument);
            break;
        case OptionId::kKeepTime:
            options_.keep_time = true;
            break;
        case OptionId::kEol:
            options_.line_type = line_type_option(argument);
            break;
        case OptionId::kCompose:
            options_.compose = true;
            break;
        case OptionId::kSuppress:
            options_.on_loss = JKC_ON_LOSS_OMIT;
            break;
        case OptionId::kStrict:
            options_.strict = true;
            break;
        case OptionId::kRecursive:
            options_.recursive = true;
            break;
        case OptionId::kInclude:
            options_.include.emplace_back(argument);
            break;
        case OptionId::kExclude:
            options_.exclude.emplace_back(argument);
            break;
        case OptionId::kFilesFrom:
            options_.files_from = path_option("--files-from", argument);
            break;
        case OptionId::kNull:
            options_.null_names = true;
            break;
        case OptionId::kJobs:
            options_.jobs = jobs_option(argument);
            break;
        case OptionId::kQuiet:
            options_.quiet = true;
            break;
        case OptionId::kNoProgress:
            options_.progress = false;
            break;
        case OptionId::kHelp:
            options_.action = Action::kHelp;
            break;
        case OptionId::kList:
            options_.action = Action::kList;
            break;
        case OptionId::kVersion:
            options_.action = Action::kVersion;
            break;
        }
    }

    Options &options_;
    char **words_; // the next one; a null is behind the last
};

void check_lines(Options &options) {
    if (options.files.size() > 1) {
        throw UsageError(tr("lines takes one file"));
    }
    options.to = options.to == 0 ? static_cast<int>(JKC_TYPE_UTF8) : options.to;
}

void check_files(const Options &options) {
    const bool reads_input = std::find(options.files.begin(), options.files.end(), "-") != options.files.end();
    if (!options.recursive && !(options.include.empty() && options.exclude.empty())) {
        throw UsageError(tr("--include and --exclude need -r"));
    }
    if (options.files_from == "-" && reads_input) {
        throw UsageError(tr("standard input cannot be both a text and the list of files"));
    }
    if (options.writes_each() && !options.dry_run &&
        (reads_input || (options.files.empty() && options.files_from.empty()))) {
        throw UsageError(
            format(tr("%s needs files, not standard input"), options.in_place ? "--in-place" : "--output-dir"));
    }
}

void check_convert(const Options &options) {
    if (options.to == 0) {
        throw UsageError(tr("convert needs the target: -t CODE"));
    }
    if (int(options.output.has_value()) + int(options.in_place) + int(!options.output_dir.empty()) > 1) {
        throw UsageError(tr("of -o, --in-place and --output-dir only one is possible"));
    }
    if (!options.writes_each() && !options.dry_run && options.jobs > 1) {
        throw UsageError(tr("--jobs needs --in-place or --output-dir, since joined output is written in order"));
    }
    if (!options.writes_each() && options.keep_time) {
        throw UsageError(tr("--keep-time needs --in-place or --output-dir"));
    }
}

} // namespace

Options parse_options(int argc, char **argv) {
    Options options;
    options.command = all_commands().data();
    if (argc < 2 || argv[1][0] == '-') {
        Parser(options, argv + std::min(argc, 1)).parse();
        if (options.action == Action::kNone) {
            throw UsageError(tr("no command (see 'jkc --help')"));
        }
        return options;
    }
    if (std::strcmp(argv[1], "help") == 0) {
        options.command = argc > 2 ? command_named(argv[2]) : options.command;
        options.action = Action::kHelp;
        return options;
    }
    options.command = command_named(argv[1]);
    options.action = options.command->action;
    Parser(options, argv + 2).parse();
    if (options.action != options.command->action) {
        return options; // --help and the like
    }
    if (options.action == Action::kConvert) {
        check_convert(options);
    }
    if (options.action == Action::kLines) {
        check_lines(options);
    } else {
        check_files(options);
    }
    return options;
}

} // namespace jkc::cli
