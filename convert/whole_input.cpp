#include "convert/whole_input.h"

namespace jkc {

namespace {

// Without a writer the output is thrown away.
int32_t hand_over(const JkcContext *ctx, const Conversion &conversion) {
    const uint8_t *begin = conversion.out.begin();
    return ctx->writer != nullptr ? ctx->writer(begin, conversion.pending(), ctx->user_data) : 0;
}

int32_t hand_over_last(JkcContext *ctx, const Conversion &conversion) {
    const int32_t answer = conversion.pending() > 0 ? hand_over(ctx, conversion) : 0;
    return end_with(ctx, answer != 0 ? answer : conversion.status);
}

} // namespace

int32_t end_with(JkcContext *ctx, int32_t status) {
    ctx->sts = status;
    return status;
}

int32_t convert_blocks(JkcContext *ctx, BlockCursor &cursor, Conversion &conversion) {
    for (;;) {
        Input in{cursor.p, cursor.end, cursor.is_last()};
        const Stop stop = conversion.run(in);
        cursor.p += in.p - cursor.p;
        switch (stop) {
        case Stop::kInput:
            cursor.carry_over();
            break;
        case Stop::kOutput: {
            const int32_t answer = hand_over(ctx, conversion);
            if (answer == 0) {
                conversion.clear_pending();
            } else if (answer == JKC_EUEXPEOD && conversion.stop(in)) {
                return hand_over_last(ctx, conversion);
            } else {
                return end_with(ctx, answer);
            }
            break;
        }
        case Stop::kEnd:
            return hand_over_last(ctx, conversion);
        }
    }
}

int32_t convert_all(JkcContext *ctx, MakeConversion *make, bool add_bom, const WorkArea &area) {
    reset_unmappable(*ctx);
    if (area.block() == nullptr) {
        return end_with(ctx, JKC_EALLOC);
    }
    BlockCursor cursor(ctx);
    ConversionRoom room;
    return convert_blocks(ctx, cursor, *make(room, ctx, area.bytes(), add_bom, nullptr));
}

} // namespace jkc
