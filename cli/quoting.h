// Names as a terminal may see them.
#pragma once

#include <string>

namespace jkc::cli {

// A name that shall be printed to a descriptor. On a terminal one with characters that the locale cannot print, such
// as those of an escape sequence, becomes $'...' for the shell; everywhere else names are what they are.
std::string shown_on(int descriptor, const std::string &name);

// The same for a message.
std::string shown(const std::string &name);

} // namespace jkc::cli
