// What --help and --version print.
#pragma once

#include <string>

namespace jkc::cli {

// Help on a command; on the whole program for any other name.
const char *help_text(const std::string &command);

std::string version_text();

} // namespace jkc::cli
