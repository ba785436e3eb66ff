// The context record.
#pragma once

#include "core/internal.h"

namespace jkc {

// Sets up a record that is filled with zeros; it has no blocks.
void set_defaults(JkcContext &ctx);

} // namespace jkc
