// The old text of a file that is replaced.
#pragma once

#include <string>

namespace jkc::cli {

// Keeps a file under a second name: by a hard link, or as a copy where the file system has none. One that is there
// already is taken for it when it holds the same. Answers whether it was made. Throws FileError.
bool keep_backup(const std::string &path, const std::string &backup);

} // namespace jkc::cli
