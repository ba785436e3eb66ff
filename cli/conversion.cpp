#include "conversion.h"

#include <algorithm>
#include <cinttypes>
#include <optional>

#include "code_types.h"
#include "library.h"
#include "line_ends.h"
#include "report.h"
#include "text_checks.h"
#include "translate.h"

namespace jkc::cli {
namespace {

// What the callbacks of one conversion share.
struct Run {
    JkcContext *ctx;
    const Input *in;
    LineEndWriter line_ends;
    Output *out;
    Progress *progress;
    int judged = JKC_TYPE_EMPTY;
    std::optional<size_t> binary_byte = std::nullopt;
};

// The code type that shall win ties: what -f says, without a mark, since text that begins with one ties with
// nothing. The 7-bit ones take no part in ties. Where plain text ties as ASCII with UTF-16, SJIS stands for them,
// as which ASCII is converted anyway.
int preferred_type(int expected, const Input &in) {
    if (!is_7bit(expected)) {
        return without_mark(expected);
    }
    const std::string_view bytes = in.for_library();
    const int judged = jkc_judges_buffer(make_context().get(), nullptr, nullptr, bytes.data(), bytes.size(), 0);
    const bool ascii_ties = judged > 0 && is_undecided(judged) && (judged & JKC_JUDGED_BIT(JKC_TYPE_ASCII)) != 0;
    return ascii_ties ? JKC_TYPE_SJIS : expected;
}

int32_t observe(int32_t code_type, void *user_data) {
    auto *run = static_cast<Run *>(user_data);
    run->judged = run->in->judged(code_type);
    run->binary_byte = find_binary_byte(run->in->text_behind_mark(run->judged), run->judged);
    if (run->binary_byte) {
        return 1;
    }
    if (!is_unicode(code_type)) {
        // The judgement looks for both in whatever bytes there are, and ordinary Shift_JIS and EUC text
        // raises them too. The first would widen CP50221 output to the characters of JIS X 0213, the second
        // with --compose would make a copy from a code type to itself write nothing.
        run->ctx->srg_exists = 0;
        run->ctx->utfmac_exists = 0;
    }
    return 0;
}

int32_t write(const uint8_t *data, uint64_t length, void *user_data) {
    auto *run = static_cast<Run *>(user_data);
    run->progress->at(run->ctx->read_offset);
    run->progress->draw();
    const std::string_view text = run->line_ends.rewrite({reinterpret_cast<const char *>(data), length});
    return run->out->write(text.data(), text.size()) ? JKC_SUCCESS : JKC_EWRITE;
}

// Whether a text of the judged code type is what -f says. Plain ASCII is valid in all others but UTF-16, and
// where there is a byte-order mark, "UTF-16" leaves the byte order to it.
bool agrees(int judged, int expected) {
    if (judged == JKC_TYPE_EMPTY || (judged == JKC_TYPE_ASCII && !is_utf16(expected))) {
        return true;
    }
    return without_mark(judged) == without_mark(expected) ||
           (judged == JKC_TYPE_UTF16BE_BOM && expected == JKC_TYPE_UTF16LE_BOM);
}

void warn(const Options &options, const std::string &name, int judged, int preferred) {
    if (options.from != 0 && judged != preferred && !agrees(judged, options.from)) {
        say(name, format(tr("read as %s, which its bytes show, not as %s"), code_type_name(judged).c_str(),
                         code_type_name(options.from).c_str()));
    }
    if (options.to == JKC_TYPE_ASCII && judged > JKC_TYPE_ASCII) {
        say(name, format(tr("not plain ASCII, written as %s"), code_type_name(JKC_TYPE_SJIS).c_str()));
    }
}

std::string describe_nochar(int64_t code, int64_t offset, const JkcContext &ctx, int judged) {
    std::string what = format(is_unicode(judged) ? "U+%04" PRIX64 : "0x%" PRIX64, static_cast<uint64_t>(code));
    if (code == 0) {
        // Shift_JIS and EUC hold none beyond U+FFFF, and on the way there their four bytes count as invalid.
        const bool had_four = ctx.srg_exists != 0 && without_mark(judged) == JKC_TYPE_UTF8;
        what = had_four ? tr("invalid bytes or a character beyond U+FFFF") : tr("invalid bytes");
    }
    return format(tr("%s at byte %lld"), what.c_str(), static_cast<long long>(offset));
}

// "3 characters without equivalent in SJIS: first U+2603 at byte 5, last invalid bytes at byte 40"
std::string describe_losses(const JkcContext &ctx, int judged, int target) {
    const std::string first = describe_nochar(ctx.first_nochar, ctx.first_nochar_index, ctx, judged);
    const std::string last = describe_nochar(ctx.last_nochar, ctx.last_nochar_index, ctx, judged);
    const std::string lacking = code_type_name(target == JKC_TYPE_ASCII ? static_cast<int>(JKC_TYPE_SJIS) : target);
    return ctx.nochar_count == 1
               ? format(tr("1 character without equivalent in %s: %s"), lacking.c_str(), first.c_str())
               : format(tr("%u characters without equivalent in %s: first %s, last %s"), ctx.nochar_count,
                        lacking.c_str(), first.c_str(), last.c_str());
}

// "2 invalid bytes kept: first at byte 5, last at byte 40"
std::string describe_kept(const BadBytes &kept) {
    return kept.count == 1 ? format(tr("1 invalid byte kept: first at byte %zu"), kept.first)
                           : format(tr("%llu invalid bytes kept: first at byte %zu, last at byte %zu"),
                                    static_cast<unsigned long long>(kept.count), kept.first, kept.last);
}

// The encoding of a code type: ASCII is read and written as Shift_JIS.
int encoding_of(int code_type) {
    return code_type == JKC_TYPE_ASCII ? static_cast<int>(JKC_TYPE_SJIS) : without_mark(code_type);
}

// The invalid bytes that a conversion within one encoding passes on.
BadBytes find_kept(const Run &run, int target) {
    const bool composed = run.ctx->utfmac_to != 0 && run.ctx->utfmac_exists != 0;
    const bool copied = encoding_of(run.judged) == encoding_of(target) && !composed;
    return copied ? find_ill_formed(run.in->text_behind_mark(run.judged), run.judged) : BadBytes();
}

// Adds to the library's record what it leaves out.
void add_unrecorded(const Run &run, int target) {
    const BadBytes lost = encoding_of(run.judged) == encoding_of(target)
                              ? BadBytes()
                              : find_unrecorded(run.in->text_behind_mark(run.judged), run.judged, encoding_of(target));
    if (lost.count == 0) {
        return;
    }
    JkcContext &ctx = *run.ctx;
    if (ctx.nochar_count == 0 || static_cast<int64_t>(lost.first) < ctx.first_nochar_index) {
        ctx.first_nochar = 0;
        ctx.first_nochar_index = static_cast<int64_t>(lost.first);
    }
    if (ctx.nochar_count == 0 || static_cast<int64_t>(lost.last) > ctx.last_nochar_index) {
        ctx.last_nochar = 0;
        ctx.last_nochar_index = static_cast<int64_t>(lost.last);
    }
    ctx.nochar_count += static_cast<uint32_t>(lost.count);
}

void set_options(JkcContext &ctx, const Options &options) {
    ctx.utfmac_to = options.compose ? 1 : 0;
    ctx.suppress = options.suppress && !options.strict ? 1 : 0;
}

} // namespace

Outcome convert_text(const Options &options, const Input &in, Output &out, Progress &progress) {
    const Context ctx = make_context();
    set_options(*ctx, options);
    const int preferred = preferred_type(options.from, in);
    // Files that are joined have one byte-order mark, at the front.
    const int target = out.length() == 0 ? options.to : without_mark(options.to);
    Run run{ctx.get(), &in, LineEndWriter(options.line_type, target), &out, &progress};
    const std::string_view bytes = in.for_library();
    const auto convert_with = [&](JkcWriter writer) {
        return jkc_convert_buffer(ctx.get(), reinterpret_cast<const uint8_t *>(bytes.data()), bytes.size(), preferred,
                                  target, false, observe, writer, &run);
    };
    const int32_t status = convert_with(write);
    out.print(run.line_ends.finish());
    if (run.binary_byte) {
        say(in.name(), describe_binary(in.text_behind_mark(run.judged), *run.binary_byte));
        return Outcome::kRefused;
    }
    if (is_undecided(run.judged)) {
        say(in.name(), undecided_reason(run.judged, options.from));
        return Outcome::kUndecided;
    }
    if (status != JKC_SUCCESS) {
        throw FileError(in.name(), status_reason(status, ctx->sys_errno));
    }
    if (!options.quiet) {
        warn(options, in.name(), run.judged, preferred);
    }
    if (ctx->suppress != 0) {
        // Not all that is left out is recorded, but all that would be replaced is.
        ctx->suppress = 0;
        convert_with(nullptr);
    }
    const BadBytes kept = find_kept(run, options.to);
    add_unrecorded(run, options.to);
    if (ctx->nochar_count == 0 && kept.count == 0) {
        return Outcome::kConverted;
    }
    if (!options.quiet || options.strict) {
        say(in.name(), kept.count == 0 ? describe_losses(*ctx, run.judged, options.to) : describe_kept(kept));
    }
    return options.strict ? Outcome::kRefused : Outcome::kConvertedWithLosses;
}

} // namespace jkc::cli
