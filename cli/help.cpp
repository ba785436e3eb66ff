#include "help.h"

#include <array>
#include <cstdio>

#include "jkc.h"

namespace jkc::cli {
namespace {

constexpr const char *kProgramHelp = R"(usage: jkc COMMAND [OPTION...] [FILE...]

Judges which Japanese encoding a text is in, and converts it.

  jkc detect [FILE...]            tell the code type and line ends of each file
  jkc convert -t CODE [FILE...]   convert files
  jkc lines [-t CODE] FILE        number the lines and count their characters

  jkc COMMAND --help              tell more about a command
  jkc --list                      list the code types and their aliases
  jkc --version                   tell the version

Exit status: 0 done; 1 undecided, binary, or losses under --strict; 2 usage;
3 input or output.
)";

constexpr const char *kDetectHelp = R"(usage: jkc detect [FILE...]

Prints a line for each file: "FILE: CODE TYPE, LINE ENDS". Without a file, or
where the file is "-", reads standard input.

  letter.txt: SJIS, CRLF               one code type fits
  mixed.txt: UTF8, LF+CRLF             several kinds of line ends
  short.txt: undecided (SJIS, EUC)     these fit equally well
  photo.jpg: unknown                   none fits
  letter.doc: binary                   has control bytes that no text has

Exit status: 0 done; 1 undecided, unknown or binary; 2 usage; 3 input or output.
)";

constexpr const char *kLinesHelp = R"(usage: jkc lines [OPTION...] [FILE]

Prints the lines of a file, or of standard input without one or for "-", each
behind its number and its count of characters.

  -t, --to CODE         code type to print in (UTF8)
  -f, --from CODE       code type to expect, as with convert

      1     19  Dear Ms Takahashi,
      2      0

Exit status: 0 done; 1 undecided or binary; 2 usage; 3 input or output, or a
line that cannot be read to its end.
)";

constexpr const char *kConvertHelp = R"(usage: jkc convert [OPTION...] -t CODE [FILE...]

Converts each file, or standard input without a file or for "-". What code type
a file is in is judged from its bytes.

  -t, --to CODE         code type to convert to ('jkc --list' shows them)
  -f, --from CODE       code type to expect: it wins when several fit equally,
                        but does not overrule what the bytes show
  -o, --output OUT      write to OUT, not to standard output; several files
                        are joined
  --in-place[=SUFFIX]   replace each file, and keep the old one as FILE+SUFFIX
  --eol KIND            line ends: keep (default), lf, crlf or cr
  --compose             compose letters with their marks (Unicode sources)
  --suppress            leave out what CODE lacks; otherwise '?' stands for it
  --strict              take lost characters and invalid bytes as failure: OUT
                        or the file in place stays as it was
  -j, --jobs N          convert in N processes side by side (with --in-place)
  -q, --quiet           tell only what failed
  --no-progress         no bar for long work on a terminal

Files are written beside and renamed when all went well. Exit status: 0 done;
1 undecided, binary, or losses under --strict; 2 usage; 3 input or output.
)";

} // namespace

const char *help_text(const std::string &command) {
    if (command == "detect") {
        return kDetectHelp;
    }
    if (command == "lines") {
        return kLinesHelp;
    }
    return command == "convert" ? kConvertHelp : kProgramHelp;
}

std::string version_text() {
    const uint32_t library = jkc_version_number();
    std::array<char, 64> text{};
    std::snprintf(text.data(), text.size(), "jkc %s (library %u.%u.%u)\n", JKC_VERSION_STRING, library / 10000,
                  library / 100 % 100, library % 100);
    return text.data();
}

} // namespace jkc::cli
