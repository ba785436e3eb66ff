// Which paths the layer takes for files.
#pragma once

#include "core/internal.h"

namespace jkc {

// 0, or the status that says why this is none.
int32_t require_regular_file(const char *path);

} // namespace jkc
