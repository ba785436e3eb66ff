// Signals that wait for the work to come to a stop of its own.
#pragma once

#include <csignal>

namespace jkc::cli {

// As long as it lives the ending signals are blocked but where before() is the mask, and noted.
class SignalNote {
public:
    SignalNote();
    ~SignalNote();
    SignalNote(const SignalNote &) = delete;
    SignalNote &operator=(const SignalNote &) = delete;

    const sigset_t &before() const { return before_; }
    // The last one that came; 0: none.
    static int noted();
    // Gives the signals their default, for a process that was started here.
    static void forget();

private:
    sigset_t before_{};
};

} // namespace jkc::cli
