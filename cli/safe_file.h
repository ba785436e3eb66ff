// A file that is replaced as a whole or not at all.
#pragma once

#include <string>

#include "output.h"

namespace jkc::cli {

// Writes to a temporary file beside the path and renames it in commit(). When that has not happened, the
// destructor or a signal removes the temporary file. Only one may exist at a time.
//
// An existing file's mode, owner and group are kept where the system allows it; of a symbolic link the file
// that it points to is replaced. A new file gets the mode that the umask leaves.
class SafeFile : public Output {
public:
    // Throws FileError.
    explicit SafeFile(const std::string &path);
    // For a file that must exist. commit() keeps the old one under its path with backup_suffix, where nothing
    // may exist yet; an empty suffix: it is not kept.
    SafeFile(const std::string &path, const std::string &backup_suffix);
    ~SafeFile() override;

    void commit() override;

private:
    void open_beside(const std::string &target);

    std::string target_;
    std::string backup_;    // empty: none
    std::string temporary_; // empty: none, or renamed
};

} // namespace jkc::cli
