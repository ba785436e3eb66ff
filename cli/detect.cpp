#include "detect.h"

#include <unistd.h>

#include <utility>

#include "code_types.h"
#include "each_file.h"
#include "input.h"
#include "library.h"
#include "line_ends.h"
#include "output.h"
#include "quoting.h"
#include "text_checks.h"

namespace jkc::cli {
namespace {

// What is printed is the same in all languages, for programs to read.
std::string line_end_names(int line_ends) {
    constexpr std::pair<int, const char *> kNames[] = {
        {JKC_LINE_LF, "LF"}, {JKC_LINE_CR, "CR"}, {JKC_LINE_CRLF, "CRLF"}};
    std::string names;
    for (const auto &[bit, name] : kNames) {
        if ((line_ends & bit) != 0) {
            names += names.empty() ? "" : "+";
            names += name;
        }
    }
    return names.empty() ? "no line ends" : names;
}

ExitCode detect_file(const std::string &name, const Options &options, Output &out) {
    const Input in(name);
    const std::string_view bytes = in.for_library();
    const Context ctx = make_context();
    const int type = in.judged(jkc_judges_buffer(ctx.get(), nullptr, nullptr, bytes.data(), bytes.size(), 0));
    const auto print = [&](const std::string &answer) {
        out.print((options.null_names ? name + '\0' : shown_on(STDOUT_FILENO, name) + ": ") + answer + "\n");
    };
    if (find_binary_byte(in.text(), type)) {
        print("binary");
        return kUndecidedOrLost;
    }
    if (is_undecided(type)) {
        print(type < 0 ? "unknown" : "undecided (" + judged_set_names(type) + ")");
        return kUndecidedOrLost;
    }
    if (type < 0) {
        throw FileError(name, status_reason(type, ctx->sys_errno));
    }
    print(code_type_name(type) + ", " + line_end_names(find_line_ends(in.text(), type)));
    return kDone;
}

} // namespace

ExitCode detect(const Options &options) {
    Output out;
    const ExitCode code = for_each_file(list_files(options), out,
                                        [&](const std::string &name) { return detect_file(name, options, out); });
    if (out.error() == 0) {
        out.commit();
    }
    return code;
}

} // namespace jkc::cli
