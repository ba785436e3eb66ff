// A judgement is the same from memory, a stream, a file and a reader, and whether or not candidates that are out are
// counted any further.
#include "judge/judge.h"
#include "tests/fuzz/support.h"

namespace jkc::fuzz {
namespace {

constexpr int kUntouched = 0x55;

struct Request {
    int preferred;
    bool type_out, line_out;
};

struct Answers {
    int result = 0, type = kUntouched, line = kUntouched;
    uint8_t srg = 0, utfmac = 0;
    const void *jis = nullptr, *euc = nullptr, *euc_8f = nullptr;

    bool operator==(const Answers &) const = default;
};

// What `judge` answers and leaves behind.
template <class Judge>
Answers answers_of(const Request &request, Judge judge) {
    JkcContext *ctx = create_jkc();
    JKC_EXPECT(ctx != nullptr);
    Answers answers;
    answers.result = judge(ctx, request.type_out ? &answers.type : nullptr, request.line_out ? &answers.line : nullptr);
    answers.srg = ctx->srg_exists;
    answers.utfmac = ctx->utfmac_exists;
    answers.jis = ctx->jis_src_table;
    answers.euc = ctx->euc_src_table;
    answers.euc_8f = ctx->euc_src_table_8f;
    release_jkc(ctx);
    return answers;
}

Answers counting(const Request &request, const Bytes &text, Counting how, bool hint, bool keep) {
    return answers_of(request, [&](JkcContext *ctx, int *type, int *line) {
        ctx->in_ptr = text.data();
        ctx->in_end = text.data() + text.size();
        ctx->mode = JKC_MODE_BUFFER;
        return judge(ctx, WorkArea(), type, line, request.preferred, hint, keep, how);
    });
}

void run(Choices &choices) {
    const Request request = {static_cast<int>(choices.below(18)), choices.yes(), choices.yes()};
    const bool hint = choices.yes();
    const bool keep = choices.yes();
    Bytes text;
    choices.take_text(text, choices.yes() ? 1 : 2, choices.below(2));

    const Answers expected = answers_of(request, [&](JkcContext *ctx, int *type, int *line) {
        return jkc_judges_buffer(ctx, type, line, text.chars(), text.size(), request.preferred);
    });
    JKC_EXPECT(answers_of(request, [&](JkcContext *ctx, int *type, int *line) {
                   CutReader reader(text, choices);
                   ctx->reader = &reader;
                   ctx->mode = JKC_MODE_READER;
                   return jkc_judges_stream(ctx, type, line, nullptr, request.preferred);
               }) == expected);
    JKC_EXPECT(expected.result >= -1 || expected.result == JKC_EUEXPEOD);
    if (choices.below(8) == 0) { // these take long
        JKC_EXPECT(answers_of(request, [&](JkcContext *ctx, int *type, int *line) {
                       const Stream stream(text);
                       return jkc_judges_stream(ctx, type, line, stream.file(), request.preferred);
                   }) == expected);
        JKC_EXPECT(answers_of(request, [&](JkcContext *ctx, int *type, int *line) {
                       return jkc_judges_file(ctx, type, line, text_file(text), request.preferred);
                   }) == expected);
    }
    const Answers counted = counting(request, text, Counting::kToTheEnd, hint, keep);
    JKC_EXPECT(counting(request, text, Counting::kWhileItCounts, hint, keep) == counted);
    JKC_EXPECT(counting(request, text, Counting::kEucToTheEnd, hint, keep) == counted);
}

} // namespace
} // namespace jkc::fuzz

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    jkc::fuzz::Choices choices(data, size);
    jkc::fuzz::run(choices);
    return 0;
}
