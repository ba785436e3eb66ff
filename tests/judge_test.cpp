#include <gtest/gtest.h>

#include "support/case_file.h"
#include "support/exact_buffer.h"
#include "support/selection.h"
#include "support/sources.h"
#include "support/test_stream.h"

namespace jkc::testing {
namespace {

constexpr int kUntouched = 0x55;

// Everything that a judgement leaves behind.
struct Judged {
    int result;
    int type_out;
    int line_out;
    bool srg;
    bool utfmac;
    std::string euc;
    std::string jis;
    std::string kept;
    bool reusable; // the source is forgotten and `sts` is the result

    bool operator==(const Judged &) const = default;
};

void PrintTo(const Judged &j, std::ostream *out) {
    *out << std::hex << "result=" << j.result << " type=" << j.type_out << " eol=" << j.line_out << " srg=" << j.srg
         << " utfmac=" << j.utfmac << " euc=" << j.euc << " jis=" << j.jis << " kept=" << show_bytes(j.kept)
         << " reusable=" << j.reusable;
}

std::string take_blocks(JkcContext &ctx) {
    std::string bytes;
    for (const JkcListNode *node = ctx.blocks; node != nullptr && node->data != nullptr; node = node->next) {
        const auto *block = static_cast<const JkcBlock *>(node->data);
        bytes.append(reinterpret_cast<const char *>(block->data) + block->start,
                     static_cast<size_t>(block->end - block->start));
    }
    ll_clear(ctx.blocks);
    return bytes;
}

// What an earlier use of the context may have left.
void soil(JkcContext &ctx) {
    ctx.euc_src_table = _euc2unibems_table00;
    ctx.euc_src_count = _euc2unibems_table00_size;
    ctx.euc_src_table_8f = _euc2unibems_table8f;
    ctx.euc_src_count_8f = _euc2unibems_table8f_size;
    ctx.jis_src_table = _jis2unibe2022jp2004_table02;
    ctx.jis_src_count = _jis2unibe2022jp2004_table02_size;
    ctx.jis_src_offset = _jis2unibe2022jp2004_table02_offset;
    ctx.srg_exists = ctx.utfmac_exists = 1;
}

Judged judge(const Case &c, Way way, size_t piece) {
    JkcContext *ctx = create_jkc();
    soil(*ctx);
    const ExactBuffer buffer(c.input);
    TestStream stream(c.input, piece);
    CutReader reader(c.input, piece);
    ctx->reader = &reader;

    int type = kUntouched;
    int line = kUntouched;
    int *type_out = c.options.has("no_type") ? nullptr : &type;
    int *line_out = c.options.has("eol") ? &line : nullptr;
    const int preferred = static_cast<int>(c.options.number("preferred"));
    Judged judged{};
    if (way == Way::kReader) {
        ctx->mode = JKC_MODE_READER; // an entry point keeps a source that stands in the context already
    }
    if (c.options.has("keep") || c.options.has("hint")) {
        ctx->in_ptr = buffer.data();
        ctx->in_end = buffer.data() + buffer.size();
        ctx->in_file = stream.file();
        ctx->mode |= way == Way::kBuffer ? JKC_MODE_BUFFER : way == Way::kReader ? JKC_MODE_READER : JKC_MODE_STREAM;
        judged.result = _jkc_judges(ctx, type_out, line_out, preferred, c.options.has("hint"), c.options.has("keep"));
        judged.kept = take_blocks(*ctx);
        judged.reusable = true;
    } else {
        judged.result = way == Way::kFile
                            ? jkc_judges_file(ctx, type_out, line_out, text_file(c.input).c_str(), preferred)
                        : way == Way::kStream
                            ? jkc_judges_stream(ctx, type_out, line_out, stream.file(), preferred)
                            : jkc_judges_buffer(ctx, type_out, line_out, buffer.chars(), c.input.size(), preferred);
        judged.kept = take_blocks(*ctx);
        judged.reusable = ctx->sts == judged.result && (ctx->mode & JKC_MODE_SOURCE) == 0;
    }
    judged.type_out = type;
    judged.line_out = line;
    judged.srg = ctx->srg_exists != 0;
    judged.utfmac = ctx->utfmac_exists != 0;
    judged.euc = euc_source(*ctx);
    judged.jis = jis_source(*ctx);
    release_jkc(ctx);
    return judged;
}

Judged expected(const Case &c) {
    const Options &o = c.options;
    const auto number = [&o](const char *name, int otherwise) { return static_cast<int>(o.number(name, otherwise)); };
    const int result = number("result", 0);
    const auto bom = static_cast<size_t>(o.number("bom")); // bytes that are not kept
    return {result,
            o.has("no_type") ? kUntouched : number("type", result),
            o.has("eol") ? number("eol", 0) : kUntouched,
            o.has("srg"),
            o.has("utfmac"),
            o.text("euc", "common"),
            o.text("jis", "50221"),
            o.has("keep") || (o.has("hint") && o.has("eol")) ? c.input.substr(bom) : "",
            true};
}

TEST(JudgeTest, EveryCaseFromBufferAndFile) {
    for (const Case &c : read_cases("judge.txt")) {
        SCOPED_TRACE(c.name + show_bytes(c.input));
        EXPECT_EQ(judge(c, Way::kBuffer, TestStream::kNever), expected(c));
        EXPECT_EQ(judge(c, Way::kFile, TestStream::kNever), expected(c));
    }
}

// However a stream or reader hands out the bytes, the same evidence is seen.
TEST(JudgeTest, NoCutOfTheInputChangesTheAnswer) {
    for (const Case &c : read_cases("judge.txt")) {
        SCOPED_TRACE(c.name + show_bytes(c.input));
        for (const size_t piece : {1U, 2U, 3U, 7U, 977U, 8128U}) {
            EXPECT_EQ(judge(c, Way::kStream, piece), expected(c)) << piece;
            EXPECT_EQ(judge(c, Way::kReader, piece), expected(c)) << piece;
        }
    }
}

} // namespace
} // namespace jkc::testing
