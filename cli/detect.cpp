#include "detect.h"

#include <array>
#include <utility>

#include "code_types.h"
#include "each_file.h"
#include "input.h"
#include "library.h"
#include "output.h"

namespace jkc::cli {
namespace {

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

// The line ends of UTF-16 text. The library looks for them byte by byte when the text has a byte-order mark,
// and so takes CR LF for two line ends and half of another character for one.
int utf16_line_ends(FILE *text, bool big_endian) {
    int found = 0;
    bool after_cr = false;
    std::array<unsigned char, 2> bytes{};
    while (std::fread(bytes.data(), 1, bytes.size(), text) == bytes.size()) {
        const int unit = big_endian ? bytes[0] << 8 | bytes[1] : bytes[1] << 8 | bytes[0];
        if (unit == '\n') {
            found |= after_cr ? JKC_LINE_CRLF : JKC_LINE_LF;
        } else if (after_cr) {
            found |= JKC_LINE_CR;
        }
        after_cr = unit == '\r';
    }
    return after_cr ? found | JKC_LINE_CR : found;
}

ExitCode detect_file(const std::string &name, Output &out) {
    Input in(name);
    in.make_rewindable();
    const Context ctx = make_context();
    int line_ends = 0;
    const int type = jkc_judges_stream(ctx.get(), nullptr, &line_ends, in.stream(), 0);
    if (is_undecided(type)) {
        out.print(name + (type < 0 ? ": unknown\n" : ": undecided (" + judged_set_names(type) + ")\n"));
        return kUndecidedOrLost;
    }
    if (type < 0) {
        throw FileError(name, status_reason(type, ctx->sys_errno));
    }
    if (type == JKC_TYPE_UTF16BE_BOM || type == JKC_TYPE_UTF16LE_BOM) {
        in.rewind();
        line_ends = utf16_line_ends(in.stream(), type == JKC_TYPE_UTF16BE_BOM);
    }
    out.print(name + ": " + code_type_name(type) + ", " + line_end_names(line_ends) + "\n");
    return kDone;
}

} // namespace

ExitCode detect(const Options &options) {
    Output out;
    const ExitCode code =
        for_each_file(options.files, &out, [&](const std::string &name) { return detect_file(name, out); });
    if (out.error() == 0) {
        out.commit();
    }
    return code;
}

} // namespace jkc::cli
