// Judging a source. judge() looks for a BOM, reads the source block by block (judge/input/), feeds each block to a
// Judgement and hands out its verdict. The public entry points are at the end.
#include <cerrno>
#include <cstring>

#include "core/code_types.h"
#include "core/files.h"
#include "core/work_area.h"
#include "judge/input/byte_source.h"
#include "judge/input/feature_scan.h"
#include "judge/input/source_bits.h"
#include "judge/judge.h"

namespace jkc {

namespace {

// The most bytes that a scanner leaves over at a block's end.
constexpr size_t kCarryRoom = 8;

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

// Reads the rest of the source, if it is to be kept, as the code type.
int take_rest(JkcContext *ctx, JkcBlock &block, const Answers &answers, int code_type, bool keep) {
    if (keep) {
        const int status = fill_buffer(ctx, block, code_type);
        if (status != JKC_SUCCESS) {
            return answers.answer(status);
        }
        if (answers.line_out != nullptr) {
            *answers.line_out = _check_ln(ctx, 0, code_type);
        }
    }
    return answers.answer(code_type);
}

// Clears the block for the next read, but for its last bytes, which go into the headroom.
void start_next_block(JkcBlock &block) {
    uint8_t carry[kCarryRoom];
    memcpy(carry, block.data + block.end - kCarryRoom, kCarryRoom);
    int32_t scan_start[4];
    memcpy(scan_start, block.scan_start, sizeof scan_start);
    reset_block(block);
    memcpy(block.data + JKC_BLOCK_HEADROOM - kCarryRoom, carry, kCarryRoom);
    memcpy(block.scan_start, scan_start, sizeof scan_start);
}

// Feeds a judgement its blocks until the answer stands. `next(room, count, last)` puts more data behind the `count`
// bytes that the block has, and returns a status.
template <class Next>
int feed_blocks(Judgement &judgement, JkcBlock &block, size_t count, Next next) {
    for (int32_t &start : block.scan_start) {
        start = JKC_BLOCK_HEADROOM;
    }
    for (;;) {
        bool last = false;
        const int status = next(count, last);
        if (status != JKC_SUCCESS) {
            return status;
        }
        if (judgement.take_block(block, last)) {
            return JKC_SUCCESS;
        }
        if (last) {
            judgement.decide();
            return JKC_SUCCESS;
        }
        start_next_block(block);
        count = 0;
    }
}

int feed_source(JkcContext *ctx, Judgement &judgement, JkcBlock &block, size_t count, bool keep) {
    ByteSource source(ctx);
    return feed_blocks(judgement, block, count, [&](size_t filled, bool &last) {
        int status = source.read(block.data + JKC_BLOCK_HEADROOM + filled, JKC_BLOCK_READ - filled, filled);
        if (status == JKC_SUCCESS) {
            status = source.at_end(last);
        }
        block.end = JKC_BLOCK_HEADROOM + static_cast<int32_t>(filled);
        return status == JKC_SUCCESS && keep ? keep_block(ctx, block) : status;
    });
}

void feed_kept_blocks(const JkcContext *ctx, Judgement &judgement, JkcBlock &block) {
    const JkcListNode *node = ctx->blocks;
    feed_blocks(judgement, block, 0, [&node, &block](size_t /*filled*/, bool &last) {
        const auto *kept = static_cast<const JkcBlock *>(node->data);
        block.end = kept->end;
        memcpy(block.data + kept->start, kept->data + kept->start, static_cast<size_t>(kept->end - kept->start));
        node = node->next;
        last = node == nullptr;
        return static_cast<int>(JKC_SUCCESS);
    });
}

// Judges again and counts everything, for the set of possible candidates. The input is kept, or in memory at `begin`.
int32_t count_to_the_end(JkcContext *ctx, JkcBlock &block, int preferred, bool plain_is_preferred, bool keep,
                         const uint8_t *begin) {
    select_first_tables(ctx);
    reset_block(block);
    Judgement judgement(ctx, preferred, plain_is_preferred, Counting::kToTheEnd);
    if (keep) {
        feed_kept_blocks(ctx, judgement, block);
    } else {
        ctx->in_ptr = begin;
        feed_source(ctx, judgement, block, 0, false);
    }
    return judgement.possible;
}

int judge_source(JkcContext *ctx, int *type_out, int *line_out, int preferred) {
    const int result = _jkc_judges(ctx, type_out, line_out, preferred, false, line_out != nullptr);
    clear_source(ctx);
    ll_clear(ctx->blocks);
    ctx->sts = result;
    return result;
}

} // namespace

int judge(JkcContext *ctx, int *type_out, int *line_out, int preferred, bool plain_is_preferred, bool keep,
          Counting counting) {
    const Answers answers{type_out, line_out};
    if (type_out != nullptr) {
        *type_out = -1;
    }
    if (line_out != nullptr) {
        *line_out = 0;
        keep = true; // the line-end check reads the kept blocks
    }
    const WorkArea area;
    if (area.block() == nullptr) {
        return answers.answer(JKC_EALLOC);
    }
    JkcBlock &block = *area.block();
    reset_block(block);
    ctx->srg_exists = 0;
    ctx->utfmac_exists = 0;
    const uint8_t *const begin = ctx->in_ptr;

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
        return take_rest(ctx, block, answers, bom, keep);
    }

    select_first_tables(ctx);
    const bool can_count_again = keep || source.in_memory();
    if (counting == Counting::kWhileItCounts && type_out != nullptr && !can_count_again) {
        counting = Counting::kEucToTheEnd;
    }
    Judgement judgement(ctx, preferred, plain_is_preferred, counting);
    const int status = feed_source(ctx, judgement, block, count, keep);
    if (status != JKC_SUCCESS) {
        return answers.answer(status);
    }
    const Verdict verdict = judgement.verdict;
    if (verdict.result == JKC_TYPE_JIS2004 || verdict.result == JKC_TYPE_ASCII) {
        return take_rest(ctx, block, answers, verdict.result, keep);
    }
    if (verdict.kind == Verdict::Kind::kSingle) {
        answers.answer(verdict.result);
    } else if (answers.type_out != nullptr) {
        *answers.type_out = judgement.set_is_right()
                                ? judgement.possible
                                : count_to_the_end(ctx, block, preferred, plain_is_preferred, keep, begin);
    }
    if (answers.line_out != nullptr && verdict.kind != Verdict::Kind::kSet) {
        *answers.line_out = _check_ln(ctx, 0, verdict.result);
    }
    return verdict.result;
}

} // namespace jkc

int _jkc_judges(JkcContext *ctx, int *type_out, int *line_out, int preferred, bool plain_is_preferred,
                bool keep_blocks) {
    return jkc::judge(ctx, type_out, line_out, preferred, plain_is_preferred, keep_blocks);
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
