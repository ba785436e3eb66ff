#include "signals.h"

#include <unistd.h>

#include <atomic>

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

} // namespace

sigset_t ending_signals() {
    sigset_t set;
    sigemptyset(&set);
    for (const int number : kEndingSignals) {
        sigaddset(&set, number);
    }
    return set;
}

void handle_ending_signals() { change_handler(SIG_DFL, remove_file_and_end, static_cast<int>(SA_RESETHAND)); }

void doom_file(const char *path) { doomed_file = path; }

SignalMask::SignalMask(int how) {
    const sigset_t set = ending_signals();
    sigprocmask(how, &set, &before_);
}

SignalNote::SignalNote() { change_handler(SIG_DFL, note, 0); }
SignalNote::~SignalNote() { forget(); }
int SignalNote::noted() { return noted_signal; }
void SignalNote::forget() { change_handler(note, SIG_DFL, 0); }

void end_by(int signal_number) {
    std::signal(signal_number, SIG_DFL);
    const SignalWindow window;
    raise(signal_number);
    _exit(128 + signal_number);
}

} // namespace jkc::cli
