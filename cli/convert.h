// The command "convert".
#pragma once

#include "options.h"
#include "report.h"

namespace jkc::cli {

ExitCode convert(const Options &options);

} // namespace jkc::cli
