// The signals that end the program, and the temporary file that must not outlive it.
#pragma once

#include <csignal>

namespace jkc::cli {

// SIGHUP, SIGINT, SIGQUIT, SIGTERM.
sigset_t ending_signals();

// Lets each of them remove the doomed file before it ends the program. Those that the caller of the program told to
// ignore (nohup) stay ignored.
void handle_ending_signals();

// The temporary file to be removed; null: none. The name must stay until the next call.
void doom_file(const char *path);

// Blocks or lets through the ending signals while it lives.
class SignalMask {
public:
    explicit SignalMask(int how);
    ~SignalMask() { sigprocmask(SIG_SETMASK, &before_, nullptr); }
    SignalMask(const SignalMask &) = delete;
    SignalMask &operator=(const SignalMask &) = delete;

    const sigset_t &before() const { return before_; }

private:
    sigset_t before_{};
};

// While the file system and what is told of it change together.
struct SignalPause : SignalMask {
    SignalPause() : SignalMask(SIG_BLOCK) {}
};

// The long part of the work, which a signal may end, where the others are blocked.
struct SignalWindow : SignalMask {
    SignalWindow() : SignalMask(SIG_UNBLOCK) {}
};

// Holds the ending signals back until the work has come to a stop of its own. As long as it lives they are blocked but
// where before() is the mask, and noted.
class SignalNote : public SignalPause {
public:
    SignalNote();
    ~SignalNote();
    // The last one that came; 0: none.
    static int noted();
    // Gives the signals their default, for a process that was started here.
    static void forget();
};

// Ends the program as the signal does.
[[noreturn]] void end_by(int signal_number);

} // namespace jkc::cli
