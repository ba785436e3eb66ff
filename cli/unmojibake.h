// jkc unmojibake
#pragma once

#include "options.h"
#include "report.h"

namespace jkc::cli {

// Proposes what the texts were before they were read in another encoding than theirs.
ExitCode unmojibake(const Options &options);

} // namespace jkc::cli
