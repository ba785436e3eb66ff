// The pending output and its way to the caller's writer.
#pragma once

#include "core/internal.h"

namespace jkc {

class Output {
public:
    // Output is handed over as soon as more than `flush_above` bytes are pending.
    Output(JkcContext *ctx, size_t flush_above) : ctx_(ctx), flush_above_(flush_above) {}

    // The whole record serves: one converter may have 8193 bytes pending.
    static uint8_t *begin() { return reinterpret_cast<uint8_t *>(&_buffser_info); }
    static size_t pending(const uint8_t *o) { return static_cast<size_t>(o - begin()); }
    bool full(const uint8_t *o) const { return pending(o) > flush_above_; }

    // Steps of at most `longest` bytes that can each begin without being full.
    size_t safe_steps(const uint8_t *o, size_t longest) const {
        return full(o) ? 0 : (flush_above_ - pending(o)) / longest + 1;
    }

    // Hands over what is pending. Returns the writer's answer; without a writer the output is thrown away.
    int32_t hand_over(const uint8_t *o) const {
        return ctx_->writer != nullptr ? ctx_->writer(begin(), pending(o), ctx_->user_data) : 0;
    }

private:
    JkcContext *ctx_;
    size_t flush_above_;
};

} // namespace jkc
