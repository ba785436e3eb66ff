#include "complete.h"

#include <strings.h>

#include <algorithm>
#include <string_view>

#include "code_types.h"
#include "command_table.h"
#include "option_values.h"
#include "translate.h"

namespace jkc::cli {
namespace {

class Completion {
public:
    // A word in front of the one that is typed.
    void pass(std::string_view word) {
        if (awaiting_ != nullptr) {
            awaiting_ = nullptr;
        } else if (word == "--") {
            options_end_ = true;
        } else if (options_end_ || word.size() < 2 || word[0] != '-') {
            pass_plain(std::string(word));
        } else if (word[1] == '-') {
            const OptionRow *row = find_long(word.substr(2));
            awaiting_ = row != nullptr && row->needs_argument() ? row : nullptr;
        } else {
            pass_letters(word.substr(1));
        }
    }

    std::string text(const std::string &typed) {
        const size_t equals = typed.find('=');
        if (awaiting_ != nullptr) {
            offer_arguments(*awaiting_, "", typed);
        } else if (command_ == nullptr) {
            // Who knows what it takes.
        } else if (command_->bit == kForProgram && (about_help_ || typed[0] != '-')) {
            offer_commands(typed);
        } else if (options_end_ || typed[0] != '-') {
            files_ = "files";
        } else if (equals == std::string::npos) {
            offer_options(typed);
        } else if (const OptionRow *row = find_long(std::string_view(typed).substr(0, equals).substr(2))) {
            offer_arguments(*row, typed.substr(0, equals + 1), typed.substr(equals + 1));
        }
        return files_ + ("\n" + lines_);
    }

private:
    // A command, or a file that is not looked at.
    void pass_plain(const std::string &word) {
        if (command_ == nullptr || command_->bit != kForProgram) {
            return;
        }
        if (word == "help" && !about_help_) {
            about_help_ = true;
        } else {
            command_ = about_help_ ? nullptr : find_command(word.c_str());
        }
    }

    // "qf", where the next word is the argument of f. In "fsjis" it is no more.
    void pass_letters(std::string_view letters) {
        for (; !letters.empty(); letters.remove_prefix(1)) {
            const OptionRow *row = find([&](const OptionRow &r) { return r.letter == letters[0]; });
            if (row != nullptr && row->argument != nullptr) {
                awaiting_ = letters.size() == 1 ? row : nullptr;
                return;
            }
        }
    }

    template <typename Fits>
    const OptionRow *find(Fits fits) const {
        const auto all = all_options();
        const auto found = std::find_if(all.begin(), all.end(), [&](const OptionRow &row) {
            return command_ != nullptr && (row.commands & command_->bit) != 0 && fits(row);
        });
        return found == all.end() ? nullptr : &*found;
    }

    const OptionRow *find_long(std::string_view name) const {
        return find([&](const OptionRow &row) { return row.is_named(name); });
    }

    void offer(const std::string &word, const char *what) {
        lines_.append(word).append("\t").append(what).append("\n");
    }

    void offer_if_typed(const std::string &word, const char *what, const std::string &typed) {
        if (word.starts_with(typed)) {
            offer(word, what);
        }
    }

    void offer_commands(const std::string &typed) {
        for (const Command &command : all_commands().subspan(1)) {
            offer_if_typed(command.name, tr(command.what), typed);
        }
        if (!about_help_) {
            offer_if_typed("help", "", typed);
        }
    }

    void offer_options(const std::string &typed) {
        find([&](const OptionRow &row) {
            const char *what = row.help == nullptr ? "" : tr(row.help);
            const std::string name = std::string("--").append(row.name);
            if (row.letter != 0) {
                offer_if_typed({'-', row.letter}, what, typed);
            }
            offer_if_typed(name, what, typed);
            if (row.argument != nullptr && !row.needs_argument()) {
                offer_if_typed(name + "=", what, typed);
            }
            return false;
        });
    }

    // `before`: what of the word stands before the argument.
    void offer_arguments(const OptionRow &row, const std::string &before, const std::string &typed) {
        switch (row.id) {
        case OptionId::kTo:
        case OptionId::kFrom:
        case OptionId::kAssume:
            offer_code_names(before, typed);
            break;
        case OptionId::kEol:
            offer_values(kLineTypes, before, typed);
            break;
        case OptionId::kOnLoss:
            offer_values(kLossPolicies, before, typed);
            break;
        case OptionId::kReport:
            offer_values(kReportForms, before, typed);
            break;
        case OptionId::kOutput:
        case OptionId::kFilesFrom:
            files_ = "files";
            break;
        case OptionId::kOutputDir:
            files_ = "folders";
            break;
        default: // a number or a pattern
            break;
        }
    }

    // Aliases, of which there are many, from the first letter on.
    void offer_code_names(const std::string &before, const std::string &typed) {
        for (const CodeName &code : code_names()) {
            if (strncasecmp(code.name.c_str(), typed.c_str(), typed.size()) == 0 &&
                (!typed.empty() || !code.is_alias)) {
                offer(before + code.name, tr(code.meaning));
            }
        }
    }

    template <typename Value, size_t kCount>
    void offer_values(const OptionValue<Value> (&values)[kCount], const std::string &before, const std::string &typed) {
        for (const OptionValue<Value> &value : values) {
            offer_if_typed(before + value.first, "", before + typed);
        }
    }

    const Command *command_ = all_commands().data(); // null: there is no such command
    bool about_help_ = false;                        // "help" came, and commands are what it takes
    bool options_end_ = false;
    const OptionRow *awaiting_ = nullptr; // its argument is the next word
    const char *files_ = "nothing";
    std::string lines_;
};

} // namespace

std::string completions(const char *const *words) {
    Completion completion;
    for (; words[0] != nullptr && words[1] != nullptr; ++words) {
        completion.pass(words[0]);
    }
    return completion.text(words[0] == nullptr ? "" : words[0]);
}

} // namespace jkc::cli
