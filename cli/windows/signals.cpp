#include "signals.h"

#include <windows.h>

#include <cstdlib>
#include <mutex>

#include "platform.h"

namespace jkc::cli {
namespace {

std::recursive_mutex pause; // held while nothing may end the program
const char *doomed_file = nullptr;

// Runs in a thread of its own. What it answers lets the system end the program, and the lock keeps all others still
// until then.
BOOL WINAPI remove_file_and_end(DWORD) {
    pause.lock();
    if (doomed_file != nullptr) {
        remove_file(doomed_file);
    }
    return FALSE;
}

} // namespace

void handle_ending_signals() {
    static const BOOL handled = SetConsoleCtrlHandler(remove_file_and_end, TRUE);
    static_cast<void>(handled);
}

void doom_file(const char *path) {
    const SignalPause here;
    doomed_file = path;
}

SignalGuard::SignalGuard(bool block) : blocked_before_(block ? 1 : 0) {
    if (block) {
        pause.lock();
    }
}

SignalGuard::~SignalGuard() {
    if (blocked_before_ != 0) {
        pause.unlock();
    }
}

void end_by(int signal_number) { std::_Exit(128 + signal_number); }

} // namespace jkc::cli
