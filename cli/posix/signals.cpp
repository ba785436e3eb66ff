#include "signals.h"

#include <unistd.h>

#include <atomic>
#include <csignal>
#include <iterator>

#include "signal_note.h"

namespace jkc::cli {
namespace {

constexpr int kEndingSignals[] = {SIGHUP, SIGINT, SIGQUIT, SIGTERM};

std::atomic<const char *> doomed_file{nullptr};
static_assert(std::atomic<const char *>::is_always_lock_free, "a signal handler reads it");

volatile std::sig_atomic_t noted_signal = 0;

extern "C" void remove_file_and_end(int signal_number) {
    if (const char *path = doomed_file.load()) {
        unlink(path);
    }
    // The handler is reset by now (SA_RESETHAND): the signal ends the program once this returns.
    raise(signal_number);
}

extern "C" void note(int signal_number) { noted_signal = signal_number; }

// Puts one handler in the place of another.
void change_handler(void (*from)(int), void (*to)(int), int flags) {
    for (const int number : kEndingSignals) {
        struct sigaction action {};
        if (sigaction(number, nullptr, &action) == 0 && action.sa_handler == from) {
            action.sa_handler = to;
            action.sa_flags = flags;
            sigaction(number, &action, nullptr);
        }
    }
}

sigset_t ending_signals() {
    sigset_t set;
    sigemptyset(&set);
    for (const int number : kEndingSignals) {
        sigaddset(&set, number);
    }
    return set;
}

} // namespace

void handle_ending_signals() { change_handler(SIG_DFL, remove_file_and_end, static_cast<int>(SA_RESETHAND)); }

void doom_file(const char *path) { doomed_file = path; }

SignalGuard::SignalGuard(bool block) {
    const sigset_t set = ending_signals();
    sigset_t before;
    sigprocmask(block ? SIG_BLOCK : SIG_UNBLOCK, &set, &before);
    for (size_t i = 0; i < std::size(kEndingSignals); ++i) {
        blocked_before_ |= sigismember(&before, kEndingSignals[i]) == 1 ? uint32_t{1} << i : 0;
    }
}

SignalGuard::~SignalGuard() {
    sigset_t mask;
    sigprocmask(SIG_BLOCK, nullptr, &mask);
    for (size_t i = 0; i < std::size(kEndingSignals); ++i) {
        const bool blocked = (blocked_before_ >> i & 1) != 0;
        blocked ? sigaddset(&mask, kEndingSignals[i]) : sigdelset(&mask, kEndingSignals[i]);
    }
    sigprocmask(SIG_SETMASK, &mask, nullptr);
}

SignalNote::SignalNote() {
    const sigset_t set = ending_signals();
    sigprocmask(SIG_BLOCK, &set, &before_);
    change_handler(SIG_DFL, note, 0);
}

SignalNote::~SignalNote() {
    forget();
    sigprocmask(SIG_SETMASK, &before_, nullptr);
}

int SignalNote::noted() { return noted_signal; }
void SignalNote::forget() { change_handler(note, SIG_DFL, 0); }

void end_by(int signal_number) {
    std::signal(signal_number, SIG_DFL);
    const SignalWindow window;
    raise(signal_number);
    _exit(128 + signal_number);
}

} // namespace jkc::cli
