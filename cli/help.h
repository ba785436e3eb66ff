// What --help and --version print.
#pragma once

#include <string>

#include "command_table.h"

namespace jkc::cli {

std::string help_text(const Command &command);

std::string version_text();

} // namespace jkc::cli
