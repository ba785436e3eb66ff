// Texts of the status codes.
#pragma once

#include "core/internal.h"

namespace jkc {

// In UTF-8.
const char *message_of(int status);

} // namespace jkc
