#include "help.h"

#include <algorithm>

#include "jkc.h"
#include "translate.h"

namespace jkc::cli {
namespace {

std::string padded(std::string text, size_t width) {
    text.resize(std::max(text.size(), width), ' ');
    return text;
}

// "  -t, --to CODE         code type to write"
std::string option_line(const OptionRow &option) {
    constexpr size_t kWidth = 24;
    std::string line = "  ";
    if (option.letter != 0) {
        line.append({'-', option.letter, ',', ' '});
    }
    line.append("--").append(option.name);
    if (option.argument != nullptr) {
        line.append(option.argument[0] == '[' ? "" : " ").append(option.argument);
    }
    return padded(line + " ", kWidth) + tr(option.help) + "\n";
}

std::string option_lines(const Command &command) {
    std::string lines;
    for (const OptionRow &option : all_options()) {
        lines += (option.commands & command.bit) != 0 && option.help != nullptr ? option_line(option) : "";
    }
    return lines;
}

std::string command_lines() {
    constexpr size_t kWidth = 24;
    std::string lines;
    for (const Command &command : all_commands().subspan(1)) {
        lines += padded(std::string("  jkc ") + command.name, kWidth) + tr(command.what) + "\n";
    }
    return lines;
}

} // namespace

std::string help_text(const Command &command) {
    const bool is_program = command.bit == kForProgram;
    std::string usage = command.name;
    usage.append(is_program ? "" : " ").append(command.usage);
    std::string text = format(tr("usage: jkc %s"), usage.c_str()) + "\n\n";
    text.append(tr(command.about)).append("\n\n");
    text += is_program ? command_lines() : option_lines(command);
    text += "\n";
    if (is_program) {
        text += tr("  jkc help COMMAND      tell more about a command, as does jkc COMMAND -h\n"
                   "  jkc -l, --list        list the code types and their aliases\n"
                   "  jkc -V, --version     tell the version\n");
        text += "\n";
    }
    if (command.notes[0] != '\0') {
        text += std::string(tr(command.notes)) + "\n";
    }
    return text + tr("Exit status: 0 done; 1 undecided, binary, losses refused; 2 usage; 3 I/O.\n");
}

std::string version_text() {
    const uint32_t library = jkc_version_number();
    return format(tr("jkc %s (library %u.%u.%u)"), JKC_VERSION_STRING, library / 10000, library / 100 % 100,
                  library % 100) +
           "\n";
}

} // namespace jkc::cli
