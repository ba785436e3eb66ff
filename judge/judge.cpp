// Judging a source. judge() looks for a BOM, reads the source block by block (judge/input/), feeds each block to a
// Judgement and hands out its verdict. The public entry points are at the end.
#include <cerrno>
#include <cstring>
#include <utility>

#include "core/code_types.h"
#include "core/files.h"
#include "judge/input/byte_source.h"
#include "judge/input/feature_scan.h"
#include "judge/input/source_bits.h"
#include "judge/judge.h"

namespace jkc {

namespace {

// Reads bytes one by one, so that a stream with a BOM is read no further than that. Returns the code type of the BOM, 0
// without one, or a failure; `count` bytes are at `data` then.
int read_bom(ByteSource &source, uint8_t *data, size_t &count) {
    for (;;) {
        const size_t before = count;
        const int status = source.read(data + count, 1, count);
        if (status != JKC_SUCCESS || count == before) {
            return status;
        }
        const BomMatch match = match_bom(data, count);
        if (!match.may_grow) {
            return match.type;
        }
    }
}

// The tables that the scan starts with. Only the EUC scanner selects others.
void select_first_tables(JkcContext *ctx) {
    select_source_tables(*ctx, JKC_TYPE_JIS);
    select_source_tables(*ctx, JKC_TYPE_EUC);
}

// Where a judgement puts its answers.
struct Answers {
    int *type_out;
    int *line_out;

    int answer(int result) const {
        if (type_out != nullptr) {
            *type_out = result;
        }
        return result;
    }
};

// What is to become of the input besides the judgement.
struct Wanted {
    bool kept;      // it is to be in ctx->blocks
    bool line_ends; // they are counted in passing, as the input is not kept

    bool anything() const { return kept || line_ends; }
};

// Reads the rest of the source, if anything is wanted of it, as the code type.
int take_rest(JkcContext *ctx, JkcBlock &block, const Answers &answers, int code_type, Wanted wanted,
              LineEnds &line_ends) {
    if (wanted.anything()) {
        const int status =
            wanted.kept ? fill_buffer(ctx, block, code_type) : look_through_rest(ctx, block, code_type, line_ends);
        if (status != JKC_SUCCESS) {
            return answers.answer(status);
        }
        if (answers.line_out != nullptr) {
            *answers.line_out = wanted.kept ? _check_ln(ctx, 0, code_type) : line_ends.of(code_type);
        }
    }
    return answers.answer(code_type);
}

// Feeds a judgement the source from its `count` bytes in the block on, until the answer stands. What is kept is read
// straight into its record, in which scan_start stays as it was before the scanners went on.
int feed_source(JkcContext *ctx, Judgement &judgement, JkcBlock &block, size_t count, Wanted wanted,
                LineEnds &line_ends) {
    ByteSource source(ctx);
    start_first_block(block);
    int32_t scan_start[sizeof block.scan_start / sizeof *block.scan_start];
    memcpy(scan_start, block.scan_start, sizeof scan_start);
    size_t zeros_from = JKC_BLOCK_HEADROOM; // in the block itself
    for (const JkcBlock *before = nullptr;; count = 0) {
        JkcBlock *into = wanted.kept ? add_block(ctx) : &block;
        if (into == nullptr) {
            return JKC_EALLOC;
        }
        if (before != nullptr) {
            start_next_block(*into, *before);
        } else if (into != &block) {
            memcpy(into->data, block.data, JKC_BLOCK_HEADROOM + count);
            into->start = JKC_BLOCK_HEADROOM;
        }
        memcpy(into->scan_start, scan_start, sizeof scan_start);
        bool last = false;
        int status = source.read(into->data + JKC_BLOCK_HEADROOM + count, JKC_BLOCK_READ - count, count);
        if (status == JKC_SUCCESS) {
            status = source.at_end(last);
        }
        if (status != JKC_SUCCESS) {
            return status;
        }
        into->end = JKC_BLOCK_HEADROOM + static_cast<int32_t>(count);
        const auto filled = static_cast<size_t>(into->end);
        const size_t stale = into == &block ? zeros_from : sizeof into->data;
        memset(into->data + filled, 0, stale > filled ? stale - filled : 0);
        zeros_from = filled;
        if (wanted.line_ends) {
            judgement.take_line_ends(into->data + into->start, into->data + into->end, line_ends);
        }
        const bool is_decided = judgement.take_block(*into, last);
        for (size_t i = 0; i < sizeof scan_start / sizeof *scan_start; ++i) {
            std::swap(scan_start[i], into->scan_start[i]);
        }
        if (is_decided) {
            return JKC_SUCCESS;
        }
        if (last) {
            judgement.decide();
            return JKC_SUCCESS;
        }
        before = into;
    }
}

// Judges a source in memory again, for the set of possible candidates.
int32_t count_to_the_end(JkcContext *ctx, JkcBlock &block, int preferred, bool plain_is_preferred,
                         const uint8_t *begin) {
    select_first_tables(ctx);
    reset_block(block);
    Judgement judgement(ctx, preferred, plain_is_preferred, Counting::kEucToTheEnd);
    LineEnds unused;
    ctx->in_ptr = begin;
    feed_source(ctx, judgement, block, 0, {false, false}, unused);
    return judgement.possible;
}

int judge_source(JkcContext *ctx, int *type_out, int *line_out, int preferred) {
    const int result = judge(ctx, WorkArea(), type_out, line_out, preferred, false, false);
    clear_source(ctx);
    ll_clear(ctx->blocks);
    ctx->sts = result;
    return result;
}

} // namespace

int judge(JkcContext *ctx, const WorkArea &area, int *type_out, int *line_out, int preferred, bool plain_is_preferred,
          bool keep, Counting counting) {
    const Answers answers{type_out, line_out};
    if (type_out != nullptr) {
        *type_out = -1;
    }
    if (line_out != nullptr) {
        *line_out = 0;
    }
    if (area.block() == nullptr) {
        return answers.answer(JKC_EALLOC);
    }
    JkcBlock &block = *area.block();
    reset_block(block);
    ctx->srg_exists = 0;
    ctx->utfmac_exists = 0;
    const uint8_t *const begin = ctx->in_ptr;
    const Wanted wanted{keep, line_out != nullptr && !keep};
    LineEnds line_ends;

    ByteSource source(ctx);
    size_t count = 0;
    const int bom = read_bom(source, block.data + JKC_BLOCK_HEADROOM, count);
    if (bom < 0) {
        return answers.answer(bom);
    }
    if (count == 0) {
        return answers.answer(JKC_TYPE_EMPTY);
    }
    if (bom != 0) {
        return take_rest(ctx, block, answers, bom, wanted, line_ends);
    }

    select_first_tables(ctx);
    if (counting == Counting::kWhileItCounts && type_out != nullptr && !source.in_memory()) {
        counting = Counting::kEucToTheEnd;
    }
    Judgement judgement(ctx, preferred, plain_is_preferred, counting);
    const int status = feed_source(ctx, judgement, block, count, wanted, line_ends);
    if (status != JKC_SUCCESS) {
        return answers.answer(status);
    }
    const Verdict verdict = judgement.verdict;
    if (verdict.result == JKC_TYPE_JIS2004 || verdict.result == JKC_TYPE_ASCII) {
        return take_rest(ctx, block, answers, verdict.result, wanted, line_ends);
    }
    if (verdict.kind == Verdict::Kind::kSingle) {
        answers.answer(verdict.result);
    } else if (answers.type_out != nullptr) {
        *answers.type_out = judgement.set_is_right()
                                ? judgement.possible
                                : count_to_the_end(ctx, block, preferred, plain_is_preferred, begin);
    }
    if (answers.line_out != nullptr && verdict.kind != Verdict::Kind::kSet) {
        *answers.line_out = wanted.kept ? _check_ln(ctx, 0, verdict.result) : line_ends.of(verdict.result);
    }
    return verdict.result;
}

} // namespace jkc

int _jkc_judges(JkcContext *ctx, int *type_out, int *line_out, int preferred, bool plain_is_preferred,
                bool keep_blocks) {
    const bool keep = keep_blocks || line_out != nullptr; // callers find the blocks there
    return jkc::judge(ctx, jkc::WorkArea(), type_out, line_out, preferred, plain_is_preferred, keep);
}

int jkc_judge_for_conversion(JkcContext *ctx, const jkc::WorkArea *area, int preferred, bool plain_is_preferred) {
    return jkc::judge(ctx, *area, nullptr, nullptr, preferred, plain_is_preferred, true);
}

int jkc_judges_buffer(JkcContext *ctx, int *type_out, int *line_out, const char *buf, size_t len, int preferred) {
    ctx->in_ptr = reinterpret_cast<const uint8_t *>(buf);
    ctx->in_end = ctx->in_ptr + len;
    jkc::set_source(ctx, JKC_MODE_BUFFER);
    return jkc::judge_source(ctx, type_out, line_out, preferred);
}

int jkc_judges_stream(JkcContext *ctx, int *type_out, int *line_out, FILE *fp, int preferred) {
    ctx->in_file = fp;
    jkc::set_source(ctx, JKC_MODE_STREAM);
    return jkc::judge_source(ctx, type_out, line_out, preferred);
}

int jkc_judges_file(JkcContext *ctx, int *type_out, int *line_out, const char *path, int preferred) {
    FILE *fp = jkc::open_to_read(path);
    if (fp == nullptr) {
        ctx->sys_errno = errno;
        ctx->sts = JKC_EROPEN;
        if (type_out != nullptr) {
            *type_out = JKC_EROPEN;
        }
        return JKC_EROPEN;
    }
    jkc::set_source(ctx, JKC_MODE_FILE);
    const int result = jkc_judges_stream(ctx, type_out, line_out, fp, preferred);
    fclose(fp);
    return result;
}
