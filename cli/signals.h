// The signals that end the program, and the temporary file that must not outlive it. On POSIX systems these are SIGHUP,
// SIGINT, SIGQUIT and SIGTERM, on Windows what a console sends.
#pragma once

#include <cstdint>

namespace jkc::cli {

// Lets each of them remove the doomed file before it ends the program. Those that the caller of the program told to
// ignore (nohup) stay ignored.
void handle_ending_signals();

// The temporary file to be removed; null: none. The name must stay until the next call.
void doom_file(const char *path);

// Blocks or lets through the ending signals while it lives.
class SignalGuard {
public:
    explicit SignalGuard(bool block);
    ~SignalGuard();
    SignalGuard(const SignalGuard &) = delete;
    SignalGuard &operator=(const SignalGuard &) = delete;

private:
    uint32_t blocked_before_ = 0; // a bit for each
};

// While the file system and what is told of it change together.
struct SignalPause : SignalGuard {
    SignalPause() : SignalGuard(true) {}
};

// The long part of the work, which a signal may end, where the others are blocked.
struct SignalWindow : SignalGuard {
    SignalWindow() : SignalGuard(false) {}
};

// Ends the program as the signal does.
[[noreturn]] void end_by(int signal_number);

} // namespace jkc::cli
