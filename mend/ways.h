// The misreadings that can be undone.
#pragma once

#include <span>

#include "core/internal.h"

namespace jkc {

// In the order of preference, where two give the same.
std::span<const JkcMisreading> ways_back();

} // namespace jkc
