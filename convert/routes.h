// Which converter takes one family of encodings to another.
#pragma once

#include "core/internal.h"

namespace jkc {

enum class Family : uint8_t { kJis, kSjis, kEuc, kUtf16Be, kUtf16Le, kUtf8, kNone };
constexpr int kFamilies = static_cast<int>(Family::kNone);

Family family_of(int32_t code_type);

// Whether the code type is a Unicode form with a byte-order mark.
bool has_mark(int32_t code_type);

// Runs the converter of a pair. A pair without one converts nothing and gives 0.
int32_t run_route(JkcContext *ctx, int32_t src_type, int32_t dst_type);

} // namespace jkc
