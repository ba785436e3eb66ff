// The command "detect".
#pragma once

#include "options.h"
#include "report.h"

namespace jkc::cli {

ExitCode detect(const Options &options);

} // namespace jkc::cli
