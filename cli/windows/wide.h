// Names in UTF-16, as the system takes them, and its errors.
#pragma once

#include <optional>
#include <string>

namespace jkc::cli {

// Nothing, and errno, where the text is not well-formed.
std::optional<std::wstring> wide(const std::string &text);

// In UTF-8. A surrogate without its other half becomes bytes that wide() takes back in no case.
std::string narrow(const std::wstring &text);

// The errno value for an error of the system.
int errno_of(unsigned long error);

// The system's handle of a descriptor.
void *handle_of(int descriptor);

} // namespace jkc::cli
