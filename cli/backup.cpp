#include "backup.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

#include "attributes.h"
#include "descriptor.h"
#include "report.h"

namespace jkc::cli {
namespace {

bool holds_the_same(const std::string &path, const std::string &backup) {
    const Descriptor file(open(path.c_str(), O_RDONLY | O_CLOEXEC));
    const Descriptor kept(open(backup.c_str(), O_RDONLY | O_CLOEXEC));
    return same_content(file.number(), kept.number());
}

void copy(const std::string &path, const std::string &backup) {
    const Descriptor from(open(path.c_str(), O_RDONLY | O_CLOEXEC));
    struct stat file {};
    if (from.number() < 0 || fstat(from.number(), &file) != 0) {
        throw FileError(path, errno);
    }
    const Descriptor to(open(backup.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600));
    if (to.number() < 0) {
        throw FileError(backup, errno);
    }
    try {
        take_over_attributes(to.number(), path, file, backup);
        if (!copy_content(from.number(), to.number())) {
            throw FileError(backup, errno);
        }
        // Where times cannot be set the text is kept all the same.
        const timespec times[] = {file.st_atim, file.st_mtim};
        futimens(to.number(), times);
        if (!sync_to_disk(to.number())) {
            throw FileError(backup, errno);
        }
    } catch (...) {
        unlink(backup.c_str());
        throw;
    }
}

} // namespace

bool keep_backup(const std::string &path, const std::string &backup) {
    if (link(path.c_str(), backup.c_str()) == 0) {
        return true;
    }
    const int error = errno;
    struct stat there {};
    if (lstat(backup.c_str(), &there) == 0) {
        if (!S_ISREG(there.st_mode) || !holds_the_same(path, backup)) {
            throw FileError(backup, EEXIST);
        }
        return false;
    }
    // The first is how file systems without hard links say so.
    if (error != EPERM && error != ENOTSUP && error != ENOSYS && error != EMLINK) {
        throw FileError(backup, error);
    }
    copy(path, backup);
    return true;
}

} // namespace jkc::cli
