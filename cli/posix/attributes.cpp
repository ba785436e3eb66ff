#include "attributes.h"

#include <sys/stat.h>
#include <unistd.h>

#if defined(__linux__)
#include <sys/xattr.h>
#endif

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <iterator>
#include <optional>
#include <vector>

#include "report.h"
#include "translate.h"

namespace jkc::cli {
namespace {

#if !defined(__linux__)
// Other systems have these by other names, or not at all: owner and mode are all that is kept there.
ssize_t none() {
    errno = ENOTSUP;
    return -1;
}
ssize_t listxattr(const char *, char *, size_t) { return none(); }
ssize_t getxattr(const char *, const char *, char *, size_t) { return none(); }
ssize_t fgetxattr(int, const char *, char *, size_t) { return none(); }
ssize_t fsetxattr(int, const char *, const char *, size_t, int) { return none(); }
ssize_t fremovexattr(int, const char *) { return none(); }
#endif

constexpr const char *kAccessList = "system.posix_acl_access";

// Those that vouch for what a file holds, which the system itself takes away when that changes.
constexpr const char *kOfTheContent[] = {"security.capability", "security.ima", "security.evm"};

bool has_none(int error) { return error == ENODATA || error == ENOTSUP || error == ENOSYS; }

// Calls get(buffer, size) until what it gets fits. Nothing after an error, which errno tells.
template <typename Get>
std::optional<std::string> get_whole(Get get) {
    std::string data(256, '\0');
    for (;;) {
        const ssize_t length = get(data.data(), data.size());
        if (length >= 0) {
            data.resize(static_cast<size_t>(length));
            return data;
        }
        const ssize_t wanted = errno == ERANGE ? get(nullptr, 0) : -1;
        if (wanted < 0) {
            return std::nullopt;
        }
        data.resize(static_cast<size_t>(wanted));
    }
}

std::vector<std::string> attribute_names(const std::string &path, const std::string &name) {
    const auto list = get_whole([&](char *data, size_t size) { return listxattr(path.c_str(), data, size); });
    if (!list && !has_none(errno)) {
        throw FileError(name, format(tr("its extended attributes cannot be read: %s"), system_text(errno).c_str()));
    }
    std::vector<std::string> names;
    for (size_t i = 0; list && i < list->size(); i += names.back().size() + 1) {
        names.emplace_back(list->c_str() + i);
    }
    return names;
}

[[noreturn]] void refuse(const std::string &attribute, const std::string &name, const std::string &reason) {
    throw FileError(
        name, attribute == kAccessList
                  ? format(tr("its access control list cannot be kept: %s"), reason.c_str())
                  : format(tr("its extended attribute %s cannot be kept: %s"), attribute.c_str(), reason.c_str()));
}

void copy_attribute(int descriptor, const std::string &path, const std::string &attribute, const std::string &name) {
    const char *key = attribute.c_str();
    const auto value = get_whole([&](char *data, size_t size) { return getxattr(path.c_str(), key, data, size); });
    if (!value) {
        if (!has_none(errno)) {
            refuse(attribute, name, system_text(errno));
        }
        return;
    }
    // Labels of the system may be there already, where nobody may set them.
    const auto have = get_whole([&](char *data, size_t size) { return fgetxattr(descriptor, key, data, size); });
    if (have != value && fsetxattr(descriptor, key, value->data(), value->size(), 0) != 0) {
        refuse(attribute, name, system_text(errno));
    }
}

// The rights of three classes, each in its lowest bits.
mode_t joined(mode_t owner, mode_t group, mode_t others) { return owner << 6 | group << 3 | others; }

// Answers whether owner and group were kept.
bool take_over_owner_and_mode(int descriptor, const FileStatus &old) {
    auto mode = static_cast<mode_t>(old.mode & 07777);
    struct stat now {};
    if (fchown(descriptor, old.owner, old.group) != 0) {
        // Not even the same ones, on some file systems.
        const bool group_set = fchown(descriptor, static_cast<uid_t>(-1), old.group) == 0;
        fstat(descriptor, &now);
        const bool same_group = group_set || now.st_gid == old.group;
        if (now.st_uid != old.owner || !same_group) {
            mode &= 0777; // no set-id bits for another owner
            const mode_t owner = mode >> 6;
            mode_t group = mode >> 3 & 7;
            mode_t others = mode & 7;
            if (now.st_uid != old.owner) {
                // The former owner is in one of these classes now.
                group &= owner;
                others &= owner;
            }
            if (!same_group) {
                // Members of the old group count as others now, and others may be members of the new one.
                group &= others;
                others = group;
            }
            fchmod(descriptor, joined(owner, group, others));
            return false;
        }
    }
    fchmod(descriptor, mode);
    return true;
}

} // namespace

void take_over_attributes(int descriptor, const std::string &old_path, const FileStatus &old, const std::string &name) {
    const std::vector<std::string> attributes = attribute_names(old_path, name);
    const bool has_list = std::find(attributes.begin(), attributes.end(), kAccessList) != attributes.end();
    // A folder gives its new files a list, whose entries the mode would put into force.
    if (!has_list && fremovexattr(descriptor, kAccessList) != 0 && !has_none(errno)) {
        throw FileError(name, format(tr("the access control list of its folder cannot be kept off it: %s"),
                                     system_text(errno).c_str()));
    }
    const bool same_owner = take_over_owner_and_mode(descriptor, old);
    if (has_list && !same_owner) {
        refuse(kAccessList, name, tr("its owner or group cannot be kept"));
    }
    for (const std::string &attribute : attributes) {
        if (std::find(std::begin(kOfTheContent), std::end(kOfTheContent), attribute) == std::end(kOfTheContent)) {
            copy_attribute(descriptor, old_path, attribute, name);
        }
    }
}

void check_replaceable(const std::string &path, const FileStatus &file, const std::string &name) {
    // In a sticky folder others may make files, but not take the place of one. To see it now leaves nothing half done.
    const std::string folder = path.substr(0, path.rfind('/') + 1);
    const auto found = status_of(folder.empty() ? "." : folder);
    const uid_t user = geteuid();
    if (found && (found->mode & S_ISVTX) != 0 && user != 0 && user != found->owner && user != file.owner) {
        throw FileError(name, tr("its folder is sticky: only the file's owner may replace it"));
    }
}

} // namespace jkc::cli
