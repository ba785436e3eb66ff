#include <optional>
#include <sstream>

#include <gtest/gtest.h>

#include "judge/ranking.h"
#include "support/case_file.h"
#include "support/exact_buffer.h"
#include "support/selection.h"
#include "support/sources.h"
#include "support/test_stream.h"

namespace jkc::testing {
namespace {

constexpr int kUntouched = 0x55;

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

std::string judge(const Case &c, Way way, size_t piece = TestStream::kNever) {
    const Options &o = c.options;
    JkcContext *ctx = create_jkc();
    soil(*ctx);
    const ExactBuffer buffer(c.input);
    std::optional<TestStream> stream; // made where it is read: some systems have files for it
    if (way == Way::kStream) {
        stream.emplace(c.input, piece);
    }
    CutReader reader(c.input, piece);
    ctx->reader = &reader;
    ctx->mode = way == Way::kReader ? JKC_MODE_READER : 0; // a source that an entry point keeps

    int type = kUntouched;
    int line = kUntouched;
    int *type_out = o.has("no_type") ? nullptr : &type;
    int *line_out = o.has("eol") ? &line : nullptr;
    const int preferred = static_cast<int>(o.number("preferred"));
    int result = 0;
    if (o.has("keep") || o.has("hint")) {
        ctx->in_ptr = buffer.data();
        ctx->in_end = buffer.data() + buffer.size();
        ctx->in_file = stream ? stream->file() : nullptr;
        ctx->mode |= way == Way::kBuffer ? JKC_MODE_BUFFER : way == Way::kReader ? JKC_MODE_READER : JKC_MODE_STREAM;
        result = _jkc_judges(ctx, type_out, line_out, preferred, o.has("hint"), o.has("keep"));
    } else {
        result = way == Way::kFile ? jkc_judges_file(ctx, type_out, line_out, text_file(c.input).c_str(), preferred)
                 : way == Way::kStream
                     ? jkc_judges_stream(ctx, type_out, line_out, stream->file(), preferred)
                     : jkc_judges_buffer(ctx, type_out, line_out, buffer.chars(), c.input.size(), preferred);
        EXPECT_TRUE(ctx->sts == result && (ctx->mode & JKC_MODE_SOURCE) == 0) << "the source is not forgotten";
    }
    const std::string kept = take_blocks(*ctx);
    EXPECT_TRUE(c.input.ends_with(kept));
    std::ostringstream out;
    out << result;
    if (type != (type_out != nullptr ? result : kUntouched)) {
        out << " type=" << type;
    }
    if (line_out != nullptr) {
        out << " eol=" << line;
    }
    out << judged_state(*ctx);
    if (!kept.empty()) {
        out << " kept=" << kept.size();
    }
    release_jkc(ctx);
    return out.str();
}

// However a stream or reader hands out the bytes, the same evidence is seen.
TEST(JudgeTest, ATextIsJudgedOtherwiseOrACutOfTheInputChangesTheAnswer) {
    check_results("judge.txt", [](const Case &c) {
        std::string answer = judge(c, Way::kBuffer);
        EXPECT_EQ(judge(c, Way::kFile), answer);
        for (const size_t piece : {1U, 2U, 3U, 7U, 977U, 8128U}) {
            EXPECT_EQ(judge(c, Way::kReader, piece), answer) << piece;
            if (TestStream::kCutsAndFails || piece == 1U) {
                EXPECT_EQ(judge(c, Way::kStream, piece), answer) << piece;
            }
        }
        return answer;
    });
}

// Evidence of a gigabyte and more, up to what no counter of 32 bits holds.
TEST(JudgeTest, TheRankingOfALongTextWrapsRound) {
    const struct {
        Evidence sjis, euc, utf8;
        int64_t total;
        int winner;
    } cases[] = {
        {{820000000, 9, 0, 0}, {820000000, 10, 0, 0}, {820000000, 0, 400000000, 0}, 820000000, JKC_TYPE_UTF8},
        {{820000000, 0, 0, 0}, {820000000, 0, 0, 0}, {1640000000, 0, 820000000, 0}, 1640000000, JKC_TYPE_UTF8},
        {{1400000000, 0, 0, 0}, {0, 0, 0, 0}, {3000000000, 0, 3000000000, 0}, 3000000000, JKC_TYPE_UTF8},
        {{3000000000, 0, 3000000000, 0}, {0, 0, 0, 0}, {5000000000, 3, 0, 0}, 5000000000, JKC_TYPE_SJIS},
        {{0, 0, 0, 0}, {INT64_C(1) << 40, 0, 0, 0}, {(INT64_C(1) << 40) - 1, 0, 0, 0}, INT64_C(1) << 40, JKC_TYPE_EUC},
    };
    for (const auto &c : cases) {
        Candidate candidates[kCandidates];
        for (int i = 0; i < kCandidates; i++) {
            const int type = kCandidateTypes[i];
            const Evidence found = type == JKC_TYPE_SJIS   ? c.sjis
                                   : type == JKC_TYPE_EUC  ? c.euc
                                   : type == JKC_TYPE_UTF8 ? c.utf8
                                                           : Evidence{0, kTooManyErrors, 0, 0};
            candidates[i] = {type, judged_bit(type), found, 0};
        }
        const int32_t possible = judged_bit(JKC_TYPE_SJIS) | judged_bit(JKC_TYPE_EUC) | judged_bit(JKC_TYPE_UTF8);
        EXPECT_EQ(rank(candidates, possible, c.total, 0).result, c.winner);
    }
}

} // namespace
} // namespace jkc::testing
