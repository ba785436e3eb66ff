#include "backup.h"

#include <cerrno>

#include "attributes.h"
#include "descriptor.h"
#include "platform.h"
#include "report.h"

namespace jkc::cli {
namespace {

bool holds_the_same(const std::string &path, const std::string &backup) {
    const Descriptor file(open_to_read(path));
    const Descriptor kept(open_to_read(backup));
    return same_content(file.number(), kept.number());
}

void copy(const std::string &path, const std::string &backup) {
    const Descriptor from(open_to_read(path));
    const auto file = from.number() < 0 ? std::nullopt : status_of(from.number());
    if (!file) {
        throw FileError(path, errno);
    }
    const Descriptor to(create_file(backup, Access::kOwner));
    if (to.number() < 0) {
        throw FileError(backup, errno);
    }
    try {
        take_over_attributes(to.number(), path, *file, backup);
        if (!copy_content(from.number(), to.number())) {
            throw FileError(backup, errno);
        }
        // Where times cannot be set the text is kept all the same.
        set_times(to.number(), &file->accessed, &file->modified);
        if (!sync_to_disk(to.number())) {
            throw FileError(backup, errno);
        }
    } catch (...) {
        remove_file(backup);
        throw;
    }
}

} // namespace

bool keep_backup(const std::string &path, const std::string &backup) {
    if (make_hard_link(path, backup)) {
        return true;
    }
    const int error = errno;
    if (const auto there = status_of_link(backup)) {
        if (there->kind != FileKind::kRegular || !holds_the_same(path, backup)) {
            throw FileError(backup, EEXIST);
        }
        return false;
    }
    if (error != ENOTSUP) {
        throw FileError(backup, error);
    }
    copy(path, backup);
    return true;
}

} // namespace jkc::cli
