#include "command_table.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "translate.h"

namespace jkc::cli {
namespace {

constexpr std::array kCommands{
    Command{"", Action::kNone, kForProgram, "COMMAND [OPTION...] [FILE...]", "",
            JKC_TEXT("Judges which Japanese encoding a text is in, and converts it."), ""},
    Command{"detect", Action::kDetect, kForDetect, "[OPTION...] [FILE...]",
            JKC_TEXT("tell the code type and line ends of each file"),
            JKC_TEXT("Prints a line for each file: \"FILE: CODE TYPE, LINE ENDS\". Without a file, or\n"
                     "where the file is \"-\", reads standard input."),
            JKC_TEXT("  letter.txt: SJIS, CRLF               one code type is right\n"
                     "  log.txt: UTF8, LF+CRLF               several kinds of line ends\n"
                     "  short.txt: undecided (SJIS, EUC)     these are as likely\n"
                     "  mixed.txt: unknown                   none fits all of it\n"
                     "  photo.jpg: binary                    is no text\n")},
    Command{"convert", Action::kConvert, kForConvert, "[OPTION...] -t CODE [FILE...]", JKC_TEXT("convert files"),
            JKC_TEXT("Converts each file, or standard input without a file or for \"-\"."), ""},
    Command{"check", Action::kCheck, kForCheck, "[OPTION...] [FILE...]", JKC_TEXT("tell which lines are ill-formed"),
            JKC_TEXT("Prints where a text is ill-formed in its code type, once a line, and what the\n"
                     "line would be. Without a file, or where the file is \"-\", reads standard input."),
            JKC_TEXT("  log.txt:51:1: ill-formed bytes 82; the line would be SJIS\n"
                     "  log.txt: UTF8, 1 ill-formed line\n")},
    Command{"lines", Action::kLines, kForLines, "[OPTION...] [FILE]",
            JKC_TEXT("number the lines and count their characters"),
            JKC_TEXT("Prints the lines of a file, or of standard input without one or for \"-\", each\n"
                     "behind its number and its count of characters."),
            "      1     19  Dear Ms Takahashi,\n"
            "      2      0\n"},
    Command{"unmojibake", Action::kUnmojibake, kForUnmojibake, "[OPTION...] [FILE...]",
            JKC_TEXT("propose what a text was that was read wrongly"),
            JKC_TEXT("Prints, in UTF-8, what each text was before it was read in another encoding than\n"
                     "its own, and tells on standard error which these were; exits with 1 where it\n"
                     "knows of none. Writes no file. Without a file, or where the file is \"-\", reads\n"
                     "standard input."),
            ""},
};

constexpr unsigned kForFiles = kForDetect | kForConvert | kForCheck | kForUnmojibake;
constexpr unsigned kForTexts = kForFiles | kForLines;

constexpr std::array kOptions{
    OptionRow{OptionId::kTo, kForConvert | kForLines, 't', "to", "to-code", "CODE",
              JKC_TEXT("code type to write; 'jkc -l' shows them")},
    OptionRow{OptionId::kFrom, kForTexts, 'f', "from", "from-code", "CODE",
              JKC_TEXT("code type to expect: it wins where several fit")},
    OptionRow{OptionId::kAssume, kForTexts, 0, "assume", nullptr, "CODE",
              JKC_TEXT("code type that the text is in, whatever it shows")},
    OptionRow{OptionId::kByLine, kForConvert, 0, "by-line", nullptr, nullptr,
              JKC_TEXT("convert lines in other code types as such")},
    OptionRow{OptionId::kByLine, kForUnmojibake, 0, "by-line", nullptr, nullptr,
              JKC_TEXT("mend lines, where the whole text is not mended")},
    OptionRow{OptionId::kDryRun, kForConvert, 'n', "dry-run", nullptr, nullptr,
              JKC_TEXT("write nothing, tell what would become of each file")},
    OptionRow{OptionId::kReport, kForConvert, 0, "report", nullptr, "[=json]",
              JKC_TEXT("tell each file, and each loss with its place")},
    OptionRow{OptionId::kOutput, kForConvert, 'o', "output", nullptr, "OUT",
              JKC_TEXT("write all to OUT, not to standard output")},
    OptionRow{OptionId::kInPlace, kForConvert, 0, "in-place", nullptr, "[=SUFFIX]",
              JKC_TEXT("replace each file, keep the old as FILE+SUFFIX")},
    OptionRow{OptionId::kOutputDir, kForConvert, 0, "output-dir", nullptr, "DIR",
              JKC_TEXT("write each file below DIR")},
    OptionRow{OptionId::kKeepTime, kForConvert, 0, "keep-time", nullptr, nullptr,
              JKC_TEXT("give what is written the file's modification time")},
    OptionRow{OptionId::kEol, kForConvert, 0, "eol", nullptr, "KIND",
              JKC_TEXT("line ends: keep (default), lf, crlf or cr")},
    OptionRow{OptionId::kCompose, kForConvert, 0, "compose", nullptr, nullptr,
              JKC_TEXT("compose letters with their marks (Unicode sources)")},
    OptionRow{OptionId::kOnLoss, kForConvert, 0, "on-loss", nullptr, "WHAT",
              JKC_TEXT("replace (default), omit, escape or stop")},
    OptionRow{OptionId::kSuppress, kForConvert, 0, "suppress", nullptr, nullptr,
              JKC_TEXT("the same as --on-loss=omit")},
    OptionRow{OptionId::kStrict, kForConvert, 0, "strict", nullptr, nullptr,
              JKC_TEXT("refuse files that would lose something")},
    OptionRow{OptionId::kAllowLoss, kForConvert, 0, "allow-loss", nullptr, nullptr,
              JKC_TEXT("--in-place: lose even where no old file is kept")},
    OptionRow{OptionId::kExplain, kForDetect, 0, "explain", nullptr, nullptr,
              JKC_TEXT("show the evidence, and the rule that decided")},
    OptionRow{OptionId::kJson, kForDetect | kForUnmojibake, 0, "json", nullptr, nullptr,
              JKC_TEXT("a JSON object in each line")},
    OptionRow{OptionId::kRecursive, kForFiles, 'r', "recursive", nullptr, nullptr,
              JKC_TEXT("take the files in folders and below")},
    OptionRow{OptionId::kInclude, kForFiles, 0, "include", nullptr, "GLOB", JKC_TEXT("of these only those that match")},
    OptionRow{OptionId::kExclude, kForFiles, 0, "exclude", nullptr, "GLOB",
              JKC_TEXT("neither files nor folders that match")},
    OptionRow{OptionId::kFilesFrom, kForFiles, 0, "files-from", nullptr, "LIST",
              JKC_TEXT("take the files that LIST names, a line each")},
    OptionRow{OptionId::kNull, kForDetect, '0', "null", nullptr, nullptr,
              JKC_TEXT("names end in a NUL, in LIST and in what is printed")},
    OptionRow{OptionId::kNull, kForConvert | kForCheck | kForUnmojibake, '0', "null", nullptr, nullptr,
              JKC_TEXT("names in LIST end in a NUL")},
    OptionRow{OptionId::kJobs, kForConvert, 'j', "jobs", nullptr, "N", JKC_TEXT("convert N files side by side")},
    OptionRow{OptionId::kQuiet, kForConvert, 'q', "quiet", nullptr, nullptr, JKC_TEXT("tell only what failed")},
    OptionRow{OptionId::kNoProgress, kForConvert, 0, "no-progress", nullptr, nullptr,
              JKC_TEXT("no bar for long work on a terminal")},
    OptionRow{OptionId::kHelp, kForAll, 'h', "help", nullptr, nullptr, nullptr},
    OptionRow{OptionId::kList, kForAll, 'l', "list", nullptr, nullptr, nullptr},
    OptionRow{OptionId::kVersion, kForAll, 'V', "version", nullptr, nullptr, nullptr},
};

} // namespace

std::span<const Command> all_commands() { return kCommands; }
std::span<const OptionRow> all_options() { return kOptions; }

const Command *find_command(const char *name) {
    const auto *found = std::find_if(kCommands.begin() + 1, kCommands.end(),
                                     [&](const Command &command) { return std::string_view(name) == command.name; });
    return found == kCommands.end() ? nullptr : found;
}

} // namespace jkc::cli
