#include "safe_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <memory>

#include "report.h"

namespace jkc::cli {
namespace {

constexpr int kEndingSignals[] = {SIGHUP, SIGINT, SIGQUIT, SIGTERM};

// The temporary file that an ending signal must remove; null: none.
std::atomic<const char *> doomed_file{nullptr};
static_assert(std::atomic<const char *>::is_always_lock_free, "a signal handler reads it");

extern "C" void remove_file_and_end(int signal_number) {
    if (const char *path = doomed_file.load()) {
        unlink(path);
    }
    // The handler is reset by now (SA_RESETHAND): the signal ends the program once this returns.
    raise(signal_number);
}

void handle_ending_signals() {
    for (const int number : kEndingSignals) {
        struct sigaction action {};
        // What the caller of the program told to ignore (nohup) stays ignored.
        if (sigaction(number, nullptr, &action) == 0 && action.sa_handler == SIG_DFL) {
            action.sa_handler = remove_file_and_end;
            action.sa_flags = static_cast<int>(SA_RESETHAND);
            sigaction(number, &action, nullptr);
        }
    }
}

// Holds the ending signals back, so that the file system and doomed_file change together.
class SignalPause {
public:
    SignalPause() {
        sigset_t set;
        sigemptyset(&set);
        for (const int number : kEndingSignals) {
            sigaddset(&set, number);
        }
        sigprocmask(SIG_BLOCK, &set, &before_);
    }
    ~SignalPause() { sigprocmask(SIG_SETMASK, &before_, nullptr); }
    SignalPause(const SignalPause &) = delete;
    SignalPause &operator=(const SignalPause &) = delete;

private:
    sigset_t before_{};
};

// The path of an existing regular file that may be written, without symbolic links.
std::string existing_file(const std::string &path) {
    const std::unique_ptr<char, decltype(&std::free)> real(realpath(path.c_str(), nullptr), &std::free);
    struct stat file {};
    if (!real || stat(real.get(), &file) != 0) {
        throw FileError(path, errno);
    }
    if (!S_ISREG(file.st_mode)) {
        throw S_ISDIR(file.st_mode) ? FileError(path, EISDIR) : FileError(path, "not a regular file");
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

mode_t new_file_mode() {
    const mode_t mask = umask(0);
    umask(mask);
    return 0666 & ~mask;
}

// Gives an open file the owner, group and mode of another one, as far as the system allows.
void take_over_attributes(int descriptor, const struct stat &from) {
    mode_t mode = from.st_mode & 07777;
    if (fchown(descriptor, from.st_uid, from.st_gid) != 0) {
        mode &= 0777; // no set-id bits for another owner
        if (fchown(descriptor, static_cast<uid_t>(-1), from.st_gid) != 0) {
            // Another group may do no more than anybody.
            mode &= ~static_cast<mode_t>(S_IRWXG) | ((mode & S_IRWXO) << 3);
        }
    }
    fchmod(descriptor, mode);
}

} // namespace

SafeFile::SafeFile(const std::string &path) : Output(path, -1) {
    open_beside(is_new(path) ? path : existing_file(path));
}

SafeFile::SafeFile(const std::string &path, const std::string &backup_suffix) : Output(path, -1) {
    const std::string target = existing_file(path);
    if (!backup_suffix.empty()) {
        backup_ = target + backup_suffix;
    }
    open_beside(target);
}

void SafeFile::open_beside(const std::string &target) {
    const size_t slash = target.rfind('/');
    target_ = target;
    temporary_ = (slash == std::string::npos ? "" : target.substr(0, slash + 1)) + ".jkc-XXXXXX";
    {
        handle_ending_signals();
        const SignalPause pause;
        const int descriptor = mkostemp(temporary_.data(), O_CLOEXEC);
        if (descriptor < 0) {
            const std::string reason = std::strerror(errno);
            throw FileError(name(), "cannot create a temporary file beside it: " + reason);
        }
        doomed_file = temporary_.c_str();
        set_descriptor(descriptor);
    }
    struct stat old {};
    if (stat(target_.c_str(), &old) == 0) {
        take_over_attributes(descriptor(), old);
    } else {
        fchmod(descriptor(), new_file_mode());
    }
}

SafeFile::~SafeFile() {
    if (!temporary_.empty()) {
        const SignalPause pause;
        unlink(temporary_.c_str());
        doomed_file = nullptr;
    }
}

void SafeFile::commit() {
    // Not every file system can do it, and those that cannot say EINVAL.
    if (fsync(descriptor()) != 0 && errno != EINVAL) {
        throw FileError(name(), errno);
    }
    close();
    const SignalPause pause;
    if (!backup_.empty() && link(target_.c_str(), backup_.c_str()) != 0) {
        throw FileError(backup_, errno);
    }
    if (std::rename(temporary_.c_str(), target_.c_str()) != 0) {
        const int error_number = errno;
        if (!backup_.empty()) {
            unlink(backup_.c_str());
        }
        throw FileError(name(), error_number);
    }
    doomed_file = nullptr;
    temporary_.clear();
}

} // namespace jkc::cli
