#include "judge/input/byte_source.h"

#include <algorithm>
#include <cerrno>
#include <cstring>

#include "judge/input/foreign_source.h"
#include "judge/input/record_list.h"

namespace jkc {

namespace {

// A reader that has nothing yet is asked again, but not for ever.
constexpr int kMaxEmptyReads = 1000;

enum class Source : uint8_t { kBuffer, kStream, kReader };

Source source_of(const JkcContext &ctx) {
    if ((ctx.mode & JKC_MODE_READER) == JKC_MODE_READER) {
        return Source::kReader;
    }
    return (ctx.mode & JKC_MODE_BUFFER) != 0 ? Source::kBuffer : Source::kStream;
}

} // namespace

int ByteSource::failed() {
    if (source_of(*ctx_) == Source::kStream) {
        ctx_->sys_errno = errno;
    }
    ll_clear(ctx_->blocks);
    return JKC_EREAD;
}

int ByteSource::load_chunk(JkcReader &reader) {
    reader.taken = 0;
    reader.filled = 0;
    for (int empty = 0; empty < kMaxEmptyReads && !reader.ended; ++empty) {
        const int64_t got = reader.read(&reader, reader.chunk, sizeof reader.chunk);
        if (got == kReadFailed) {
            return failed();
        }
        if (got > 0) {
            reader.filled = static_cast<size_t>(got);
            return JKC_SUCCESS;
        }
        reader.ended = got < 0;
    }
    reader.ended = true;
    return JKC_SUCCESS;
}

int ByteSource::read(uint8_t *dst, size_t room, size_t &count) {
    switch (source_of(*ctx_)) {
    case Source::kBuffer: {
        const size_t left = static_cast<size_t>(ctx_->in_end - ctx_->in_ptr);
        const size_t taken = std::min(left, room);
        if (taken > 0) {
            memcpy(dst, ctx_->in_ptr, taken);
            ctx_->in_ptr += taken;
        }
        count += taken;
        return JKC_SUCCESS;
    }
    case Source::kStream: {
        const size_t got = fread(dst, 1, room, ctx_->in_file);
        count += got;
        return got < room && ferror(ctx_->in_file) != 0 ? failed() : JKC_SUCCESS;
    }
    case Source::kReader: {
        // Fills the room however short the reads are, so that the result does not depend on how the input was cut.
        JkcReader &reader = *ctx_->reader;
        while (room > 0) {
            if (reader.taken == reader.filled) {
                const int status = load_chunk(reader);
                if (status != JKC_SUCCESS || reader.filled == 0) {
                    return status;
                }
            }
            const size_t taken = std::min(reader.filled - reader.taken, room);
            memcpy(dst, reader.chunk + reader.taken, taken);
            reader.taken += taken;
            dst += taken;
            room -= taken;
            count += taken;
        }
        return JKC_SUCCESS;
    }
    }
    return JKC_SUCCESS;
}

bool ByteSource::in_memory() const { return source_of(*ctx_) == Source::kBuffer; }

int ByteSource::at_end(bool &end) {
    switch (source_of(*ctx_)) {
    case Source::kBuffer:
        end = ctx_->in_ptr == ctx_->in_end;
        return JKC_SUCCESS;
    case Source::kStream: {
        const int c = getc(ctx_->in_file);
        end = c == EOF;
        if (end) {
            return ferror(ctx_->in_file) != 0 ? failed() : JKC_SUCCESS;
        }
        ungetc(c, ctx_->in_file);
        return JKC_SUCCESS;
    }
    case Source::kReader: {
        JkcReader &reader = *ctx_->reader;
        const int status = reader.taken == reader.filled ? load_chunk(reader) : static_cast<int>(JKC_SUCCESS);
        end = reader.taken == reader.filled;
        return status;
    }
    }
    return JKC_SUCCESS;
}

void reset_block(JkcBlock &block) {
    memset(&block, 0, sizeof block);
    block.start = JKC_BLOCK_HEADROOM;
    block.end = JKC_BLOCK_HEADROOM;
}

void start_first_block(JkcBlock &block) {
    for (int32_t &start : block.scan_start) {
        start = JKC_BLOCK_HEADROOM;
    }
}

void start_next_block(JkcBlock &block, const JkcBlock &before) {
    constexpr size_t kCarryRoom = 8; // no scanner leaves more over
    memcpy(block.data + JKC_BLOCK_HEADROOM - kCarryRoom, before.data + before.end - kCarryRoom, kCarryRoom);
    block.start = JKC_BLOCK_HEADROOM;
    block.end = JKC_BLOCK_HEADROOM;
}

JkcBlock *add_block(JkcContext *ctx) {
    JkcListNode *node = add_record(ctx->blocks->header->last, sizeof(JkcBlock));
    if (node == nullptr) {
        ll_clear(ctx->blocks);
        return nullptr;
    }
    auto *block = static_cast<JkcBlock *>(node->data);
    memset(block->data, 0, JKC_BLOCK_HEADROOM);
    return block;
}

int keep_block(JkcContext *ctx, const JkcBlock &block) {
    if (ll_add(ctx->blocks->header->last, &block, sizeof block) != nullptr) {
        return JKC_SUCCESS;
    }
    ll_clear(ctx->blocks);
    return JKC_EALLOC;
}

} // namespace jkc
