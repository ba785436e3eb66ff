#include "support/forced_judgement.h"

#include <optional>

#include "core/internal.h"

namespace {
std::optional<int> forced;
} // namespace

namespace jkc::testing {

ForcedJudgement::ForcedJudgement(int code_type) { forced = code_type; }
ForcedJudgement::~ForcedJudgement() { forced.reset(); }

} // namespace jkc::testing

// The names are those that the linker's --wrap asks for.
extern "C" {
int __real__jkc_judges(JkcContext *ctx, int *type_out, int *line_out, int preferred, bool plain_is_preferred,
                       bool keep_blocks);

int __wrap__jkc_judges(JkcContext *ctx, int *type_out, int *line_out, int preferred, bool plain_is_preferred,
                       bool keep_blocks) {
    if (!forced) {
        return __real__jkc_judges(ctx, type_out, line_out, preferred, plain_is_preferred, keep_blocks);
    }
    ctx->srg_exists = 0;
    ctx->utfmac_exists = 0;
    const int status = _fill_buffer(ctx, JKC_TYPE_SJIS); // a type that is read and not looked at
    return status == JKC_SUCCESS ? *forced : status;
}
}
