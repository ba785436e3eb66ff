// The program jkc.
#include <new>
#include <string_view>

#include "check.h"
#include "code_types.h"
#include "complete.h"
#include "convert.h"
#include "detect.h"
#include "help.h"
#include "lines.h"
#include "options.h"
#include "output.h"
#include "platform.h"
#include "report.h"
#include "translate.h"
#include "unmojibake.h"

namespace jkc::cli {
namespace {

void print(std::string_view text) {
    Output out;
    out.print(text);
    out.commit();
}

ExitCode run(int argc, char **argv) {
    if (argc > 1 && std::string_view(argv[1]) == "complete") { // for the scripts of shells, and not among the commands
        print(completions(argv + 2));
        return kDone;
    }
    const Options options = parse_options(argc, argv);
    switch (options.action) {
    case Action::kNone:
        break;
    case Action::kHelp:
        print(help_text(*options.command));
        return kDone;
    case Action::kVersion:
        print(version_text());
        return kDone;
    case Action::kList:
        print(code_type_list());
        return kDone;
    case Action::kDetect:
        return detect(options);
    case Action::kConvert:
        return convert(options);
    case Action::kCheck:
        return check(options);
    case Action::kLines:
        return lines(options);
    case Action::kUnmojibake:
        return unmojibake(options);
    }
    return kUsage;
}

} // namespace
} // namespace jkc::cli

int main(int argc, char **argv) {
    using namespace jkc::cli;
    argv = prepare_process(argc, argv);
    choose_language();
    try {
        return run(argc, argv);
    } catch (const UsageError &error) {
        say(error.what());
        return kUsage;
    } catch (const FileError &error) {
        tell(error);
    } catch (const std::bad_alloc &) {
        say(tr("out of memory"));
    }
    return kInputOutput;
}
