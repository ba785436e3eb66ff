// A file that is replaced as a whole or not at all.
#pragma once

#include <optional>
#include <string>

#include "output.h"
#include "platform.h"

namespace jkc::cli {

// What the names of temporary files begin with.
constexpr const char *kTemporaryPrefix = ".jkc-";

// Writes to a temporary file beside the path and renames it in commit(). When that has not happened, the
// destructor or a signal removes the temporary file. Only one may exist at a time.
//
// An existing file's attributes are kept (attributes.h), and it is not replaced when it changes meanwhile; of a symbolic
// link the file that it points to is replaced. A new file gets the mode that its folder and the umask give.
class SafeFile : public Output {
public:
    // Throws FileError.
    explicit SafeFile(const std::string &path);
    // For a file that must exist, and be what it was when it was `read`. commit() keeps the old one under its path with
    // backup_suffix; an empty suffix: it is not kept.
    SafeFile(const std::string &path, const std::string &backup_suffix, const FileStatus &read);

    // The modification time to give it.
    void set_time(const FileTime &time) { time_ = time; }
    void commit() override;

private:
    // Removed when it goes out of use, unless it was renamed.
    struct Temporary {
        Temporary() = default;
        ~Temporary();
        Temporary(const Temporary &) = delete;
        Temporary &operator=(const Temporary &) = delete;
        std::string path; // empty: none, or renamed
    };

    void begin(const std::string &target, const FileStatus *read);
    void create_temporary();
    void check_unchanged() const;

    std::string target_;
    std::string backup_; // empty: none
    Temporary temporary_;
    std::optional<FileStatus> old_; // the target as it was found
    std::optional<FileTime> time_;
};

} // namespace jkc::cli
