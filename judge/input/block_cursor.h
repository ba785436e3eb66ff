// Walks the chain of kept input blocks and keeps characters whole across block edges. The decoders read through it.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>

#include "core/internal.h"

namespace jkc {

class BlockCursor {
public:
    explicit BlockCursor(JkcContext *ctx) : ctx_(ctx), node_(ctx->blocks) {
        auto *block = static_cast<JkcBlock *>(node_->data);
        if (block != nullptr) {
            p = block->data + block->start;
            end = block->data + block->end;
        }
        ctx->read_offset = 0;
        ctx->block_origin = p;
    }

    // Makes at least `wanted` bytes visible, if the input has them.
    void ensure(size_t wanted) {
        while (static_cast<size_t>(end - p) < wanted && node_->next != nullptr) {
            carry_over();
        }
    }

    bool is_last() const { return node_->next == nullptr; }
    bool at_end() const { return p == end; }
    size_t left() const { return static_cast<size_t>(end - p); }

    uint8_t *p = nullptr;   // next byte
    uint8_t *end = nullptr; // one past the visible bytes

    // Moves the rest of this block in front of the next one's data. There must be a next one.
    void carry_over() {
        auto *block = static_cast<JkcBlock *>(node_->data);
        node_ = node_->next;
        auto *next = static_cast<JkcBlock *>(node_->data);
        const auto rest = static_cast<int32_t>(end - p);
        next->start -= rest;
        uint8_t *start = next->data + next->start;
        std::copy(p, end, start);
        block->end -= rest;
        ctx_->read_offset += block->end - block->start;
        ctx_->block_origin = start;
        p = start;
        end = next->data + next->end;
    }

private:
    JkcContext *ctx_;
    JkcListNode *node_;
};

// The offset in the input of the byte at p, in the current block.
inline int64_t position_of(const JkcContext &ctx, const uint8_t *p) { return (p - ctx.block_origin) + ctx.read_offset; }

} // namespace jkc
