// jkc check
#pragma once

#include "options.h"
#include "report.h"

namespace jkc::cli {

// Tells which lines are ill-formed in the code type of their file, and what they would be.
ExitCode check(const Options &options);

} // namespace jkc::cli
