#include "processes.h"

#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <map>

#if defined(__linux__)
#include <sys/prctl.h>
#endif

namespace jkc::cli {
namespace {

// A signal that ends the program ends the processes that it started, too.
void end_with(pid_t parent) {
#if defined(__linux__)
    prctl(PR_SET_PDEATHSIG, SIGTERM);
#endif
    if (getppid() != parent) {
        raise(SIGTERM);
    }
}

class Processes {
public:
    explicit Processes(const std::function<void(size_t, int)> &done) : done_(done) {}

    size_t running() const { return running_.size(); }

    // False when the system gives no process.
    bool start(size_t i, const std::function<int(size_t)> &work) {
        const pid_t parent = getpid();
        const pid_t child = fork();
        if (child == 0) {
            end_with(parent);
            _exit(work(i));
        }
        if (child > 0) {
            running_[child] = i;
        }
        return child > 0;
    }

    void wait_for_one() {
        int status = 0;
        const pid_t child = waitpid(-1, &status, 0);
        if (child < 0 && errno == EINTR) {
            return;
        }
        const auto found = running_.find(child);
        if (found != running_.end()) {
            done_(found->second, WIFEXITED(status) ? WEXITSTATUS(status) : kEndedBySignal);
            running_.erase(found);
        }
    }

private:
    const std::function<void(size_t, int)> &done_;
    std::map<pid_t, size_t> running_;
};

} // namespace

void run_side_by_side(size_t count, int jobs, const std::function<int(size_t)> &work,
                      const std::function<void(size_t, int)> &done) {
    Processes processes(done);
    for (size_t i = 0; i < count; ++i) {
        while (processes.running() >= static_cast<size_t>(jobs)) {
            processes.wait_for_one();
        }
        if (jobs == 1 || !processes.start(i, work)) {
            done(i, work(i));
        }
    }
    while (processes.running() > 0) {
        processes.wait_for_one();
    }
}

} // namespace jkc::cli
