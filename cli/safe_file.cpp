#include "safe_file.h"

#include <cerrno>
#include <random>

#include "attributes.h"
#include "backup.h"
#include "quoting.h"
#include "report.h"
#include "signals.h"
#include "translate.h"

namespace jkc::cli {
namespace {

// The path of an existing regular file that may be written, without symbolic links.
std::string existing_file(const std::string &path) {
    const auto real = real_path(path);
    const auto file = real ? status_of(*real) : std::nullopt;
    if (!file) {
        throw FileError(path, errno);
    }
    if (file->kind != FileKind::kRegular) {
        throw file->kind == FileKind::kFolder ? FileError(path, EISDIR) : FileError(path, tr("not a regular file"));
    }
    // Renaming would replace a write-protected file too, but then it was protected in vain.
    if (!may_write(*real)) {
        throw FileError(path, errno);
    }
    return *real;
}

bool is_new(const std::string &path) { return !status_of_link(path) && errno == ENOENT; }

// Its name up to the last slash.
std::string folder_of(const std::string &path) { return path.substr(0, path.rfind('/') + 1); }

bool is_same_state(const FileStatus &a, const FileStatus &b) {
    // A link that comes or goes changes the second time too, and nothing of the file.
    const bool same_times = a.modified == b.modified && (a.links != b.links || a.changed == b.changed);
    return is_same_file(a, b) && a.size == b.size && same_times;
}

std::string random_name() {
    constexpr char kLetters[] = "abcdefghijklmnopqrstuvwxyz0123456789";
    constexpr int kLength = 6;
    std::random_device random;
    std::string name = kTemporaryPrefix;
    for (int i = 0; i < kLength; ++i) {
        name += kLetters[random() % (sizeof kLetters - 1)];
    }
    return name;
}

} // namespace

SafeFile::SafeFile(const std::string &path) : Output(path, -1) {
    begin(is_new(path) ? path : existing_file(path), nullptr);
}

SafeFile::SafeFile(const std::string &path, const std::string &backup_suffix, const FileStatus &read)
    : Output(path, -1) {
    const std::string target = existing_file(path);
    if (!backup_suffix.empty()) {
        backup_ = target + backup_suffix;
    }
    begin(target, &read);
}

void SafeFile::begin(const std::string &target, const FileStatus *read) {
    target_ = target;
    old_ = read != nullptr ? *read : status_of(target_);
    if (old_) {
        check_replaceable(target_, *old_, name());
    }
    create_temporary();
    if (old_) {
        take_over_attributes(descriptor(), target_, *old_, name());
    }
}

void SafeFile::create_temporary() {
    const std::string folder = folder_of(target_);
    handle_ending_signals();
    const SignalPause pause;
    int descriptor = -1;
    do {
        temporary_.path = folder + random_name();
        descriptor = create_file(temporary_.path, old_ ? Access::kOwner : Access::kAsUsual);
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
        remove_file(path);
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
    if (time_ && !set_times(descriptor(), nullptr, &*time_)) {
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
    if (!replace_file(temporary_.path, target_)) {
        const int error_number = errno;
        if (backup_made) {
            remove_file(backup_);
        }
        throw FileError(name(), error_number);
    }
    doom_file(nullptr);
    temporary_.path.clear();
    sync_folder(folder_of(target_));
}

} // namespace jkc::cli
