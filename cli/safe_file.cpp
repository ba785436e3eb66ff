#include "safe_file.h"

#include <fcntl.h>
#include <sys/random.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <memory>

#include "attributes.h"
#include "backup.h"
#include "descriptor.h"
#include "quoting.h"
#include "report.h"
#include "signals.h"
#include "translate.h"

namespace jkc::cli {
namespace {

// The path of an existing regular file that may be written, without symbolic links.
std::string existing_file(const std::string &path) {
    const std::unique_ptr<char, decltype(&std::free)> real(realpath(path.c_str(), nullptr), &std::free);
    struct stat file {};
    if (!real || stat(real.get(), &file) != 0) {
        throw FileError(path, errno);
    }
    if (!S_ISREG(file.st_mode)) {
        throw S_ISDIR(file.st_mode) ? FileError(path, EISDIR) : FileError(path, tr("not a regular file"));
    }
    // Renaming would replace a write-protected file too, but then it was protected in vain.
    if (faccessat(AT_FDCWD, real.get(), W_OK, AT_EACCESS) != 0) {
        throw FileError(path, errno);
    }
    return real.get();
}

bool is_new(const std::string &path) {
    struct stat file {};
    return lstat(path.c_str(), &file) != 0 && errno == ENOENT;
}

std::optional<struct stat> status_of(const std::string &path) {
    struct stat file {};
    return stat(path.c_str(), &file) == 0 ? std::optional(file) : std::nullopt;
}

// Its name up to the last slash.
std::string folder_of(const std::string &path) { return path.substr(0, path.rfind('/') + 1); }

bool equal(const timespec &a, const timespec &b) { return a.tv_sec == b.tv_sec && a.tv_nsec == b.tv_nsec; }

bool is_same_state(const struct stat &a, const struct stat &b) {
    // A link that comes or goes changes the second time too, and nothing of the file.
    const bool same_times = equal(a.st_mtim, b.st_mtim) && (a.st_nlink != b.st_nlink || equal(a.st_ctim, b.st_ctim));
    return a.st_dev == b.st_dev && a.st_ino == b.st_ino && a.st_size == b.st_size && same_times;
}

// In a sticky folder others may make files, but not take the place of one. To see it now leaves nothing half done.
void check_replaceable(const std::string &path, const struct stat &file, const std::string &name) {
    const std::string folder = folder_of(path);
    const auto found = status_of(folder.empty() ? "." : folder);
    const uid_t user = geteuid();
    if (found && (found->st_mode & S_ISVTX) != 0 && user != 0 && user != found->st_uid && user != file.st_uid) {
        throw FileError(name, tr("its folder is sticky: only the file's owner may replace it"));
    }
}

std::string random_name() {
    constexpr char kLetters[] = "abcdefghijklmnopqrstuvwxyz0123456789";
    std::array<unsigned char, 6> random{};
    if (getrandom(random.data(), random.size(), 0) < 0) {
        throw FileError(kTemporaryPrefix, errno);
    }
    std::string name = kTemporaryPrefix;
    for (const unsigned char number : random) {
        name += kLetters[number % (sizeof kLetters - 1)];
    }
    return name;
}

} // namespace

SafeFile::SafeFile(const std::string &path) : Output(path, -1) {
    begin(is_new(path) ? path : existing_file(path), nullptr);
}

SafeFile::SafeFile(const std::string &path, const std::string &backup_suffix, const struct stat &read)
    : Output(path, -1) {
    const std::string target = existing_file(path);
    if (!backup_suffix.empty()) {
        backup_ = target + backup_suffix;
    }
    begin(target, &read);
}

void SafeFile::begin(const std::string &target, const struct stat *read) {
    target_ = target;
    old_ = read != nullptr ? *read : status_of(target_);
    if (old_) {
        check_replaceable(target_, *old_, name());
    }
    // The system knows best what a new file's mode is in this folder.
    create_temporary(old_ ? 0600 : 0666);
    if (old_) {
        take_over_attributes(descriptor(), target_, *old_, name());
    }
}

void SafeFile::create_temporary(mode_t mode) {
    const std::string folder = folder_of(target_);
    handle_ending_signals();
    const SignalPause pause;
    int descriptor = -1;
    do {
        temporary_.path = folder + random_name();
        descriptor = open(temporary_.path.c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, mode);
    } while (descriptor < 0 && errno == EEXIST);
    if (descriptor < 0) {
        const std::string reason = system_text(errno);
        temporary_.path.clear();
        const std::string where = shown(folder.size() < 2 ? folder + "." : folder.substr(0, folder.size() - 1));
        throw FileError(name(),
                        format(tr("no file can be made in its folder '%s': %s"), where.c_str(), reason.c_str()));
    }
    doom_file(temporary_.path.c_str());
    set_descriptor(descriptor);
}

SafeFile::Temporary::~Temporary() {
    if (!path.empty()) {
        const SignalPause pause;
        unlink(path.c_str());
        doom_file(nullptr);
    }
}

void SafeFile::check_unchanged() const {
    const auto now = status_of(target_);
    if (now.has_value() != old_.has_value() || (now && !is_same_state(*now, *old_))) {
        throw FileError(name(), tr("changed while it was converted; it is left as it is now"));
    }
}

void SafeFile::commit() {
    const timespec times[] = {{0, UTIME_OMIT}, time_.value_or(timespec{0, UTIME_OMIT})};
    if (time_ && futimens(descriptor(), times) != 0) {
        throw FileError(name(), errno);
    }
    if (!sync_to_disk(descriptor())) {
        throw FileError(name(), errno);
    }
    close();
    const SignalPause pause;
    check_unchanged();
    const bool backup_made = !backup_.empty() && keep_backup(target_, backup_);
    if (backup_made) {
        sync_folder(folder_of(target_)); // the old text has its second name before it loses the first
    }
    if (std::rename(temporary_.path.c_str(), target_.c_str()) != 0) {
        const int error_number = errno;
        if (backup_made) {
            unlink(backup_.c_str());
        }
        throw FileError(name(), error_number);
    }
    doom_file(nullptr);
    temporary_.path.clear();
    sync_folder(folder_of(target_));
}

} // namespace jkc::cli
