// The command "lines".
#pragma once

#include "options.h"
#include "report.h"

namespace jkc::cli {

ExitCode lines(const Options &options);

} // namespace jkc::cli
