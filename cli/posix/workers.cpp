#include "workers.h"

#include <sys/select.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <list>
#include <map>

#if defined(__linux__)
#include <sys/prctl.h>
#endif

#include "descriptor.h"
#include "platform.h"
#include "report.h"
#include "signal_note.h"

namespace jkc::cli {
namespace {

constexpr size_t kNothing = static_cast<size_t>(-1);

using SharedNumber = std::atomic<size_t>;
static_assert(SharedNumber::is_always_lock_free, "processes share it");

// Numbers that all processes see: the next part that nobody has taken, and of each process the part that it is at.
class SharedNumbers {
public:
    explicit SharedNumbers(size_t processes)
        : size_((processes + 1) * sizeof(SharedNumber)), numbers_(static_cast<SharedNumber *>(share_memory(size_))) {}
    ~SharedNumbers() {
        if (numbers_ != nullptr) {
            release_memory(numbers_, size_);
        }
    }
    SharedNumbers(const SharedNumbers &) = delete;
    SharedNumbers &operator=(const SharedNumbers &) = delete;

    bool exist() const { return numbers_ != nullptr; }
    SharedNumber &next() { return numbers_[0]; }
    SharedNumber &current(size_t process) { return numbers_[process + 1]; }

private:
    size_t size_;
    SharedNumber *numbers_;
};

// What a process sends of a part; the messages and the report follow.
struct Answer {
    size_t part;
    size_t messages_length;
    size_t report_length;
    int answer;
};

// A signal that ends the program ends the processes that it started, too.
void end_with(pid_t parent) {
#if defined(__linux__)
    prctl(PR_SET_PDEATHSIG, SIGTERM);
#endif
    if (getppid() != parent) {
        _exit(1);
    }
}

class Workers {
public:
    explicit Workers(const Work &work) : work_(work), shared_(std::min(work.count, static_cast<size_t>(work.jobs))) {}

    int run() {
        const size_t processes = std::min(work_.count, static_cast<size_t>(work_.jobs));
        for (size_t i = 0; i < processes && shared_.exist() && start(i);) {
            ++i;
        }
        while (!workers_.empty()) {
            wait();
            hand_over();
        }
        do_the_rest();
        hand_over_all();
        return SignalNote::noted();
    }

private:
    struct Worker {
        pid_t process;
        int pipe;
        size_t number;
        std::string received;
    };
    struct Result {
        int answer;
        Spoken spoken;
    };

    bool start(size_t number) {
        int ends[2];
        if (pipe(ends) != 0) {
            return false;
        }
        if (ends[0] >= FD_SETSIZE) { // more than can be waited for
            ::close(ends[0]);
            ::close(ends[1]);
            return false;
        }
        shared_.current(number) = kNothing;
        const pid_t parent = getpid();
        const pid_t child = fork();
        if (child == 0) {
            end_with(parent);
            SignalNote::forget();
            do_parts(number, ends[1]);
        }
        ::close(ends[1]);
        if (child < 0) {
            ::close(ends[0]);
            return false;
        }
        workers_.push_back({child, ends[0], number, ""});
        return true;
    }

    // What a started process does.
    [[noreturn]] void do_parts(size_t number, int pipe) {
        Spoken spoken;
        collect(&spoken);
        for (size_t i = 0; (i = shared_.next()++) < work_.count;) {
            shared_.current(number) = i;
            spoken = {};
            const int done = work_.work(i);
            const Answer answer{i, spoken.messages.size(), spoken.report.size(), done};
            std::string text(sizeof answer, '\0');
            std::memcpy(text.data(), &answer, sizeof answer);
            text += spoken.messages + spoken.report;
            if (write_all(pipe, text.data(), text.size()) != text.size()) {
                break;
            }
        }
        _exit(0);
    }

    // Until a process has sent something or ended, a signal has come, or it is time for a tick.
    void wait() {
        fd_set pipes;
        FD_ZERO(&pipes);
        int most = -1;
        for (const Worker &worker : workers_) {
            FD_SET(worker.pipe, &pipes);
            most = std::max(most, worker.pipe);
        }
        constexpr timespec kTick{0, 100'000'000};
        const int ready = pselect(most + 1, &pipes, nullptr, nullptr, &kTick, &signals_.before());
        work_.tick();
        if (ready < 0 && SignalNote::noted() != 0) {
            shared_.next() = work_.count; // for those that ignore the signal
            for (const Worker &worker : workers_) {
                kill(worker.process, SIGTERM);
            }
        }
        auto worker = workers_.begin();
        for (size_t left = ready > 0 ? workers_.size() : 0; left > 0;
             --left) { // those that are started here come later
            const auto here = worker++;
            if (FD_ISSET(here->pipe, &pipes) && !receive(*here)) {
                end(*here);
                workers_.erase(here);
            }
        }
    }

    // False at the end.
    bool receive(Worker &worker) {
        char data[65536];
        const ssize_t count = read(worker.pipe, data, sizeof data);
        if (count <= 0) {
            return count < 0 && errno == EINTR;
        }
        worker.received.append(data, static_cast<size_t>(count));
        Answer answer{};
        size_t taken = 0;
        while (worker.received.size() - taken >= sizeof answer) {
            std::memcpy(&answer, worker.received.data() + taken, sizeof answer);
            const size_t report = taken + sizeof answer + answer.messages_length;
            if (worker.received.size() < report + answer.report_length) {
                break;
            }
            results_[answer.part] = {answer.answer,
                                     {worker.received.substr(taken + sizeof answer, answer.messages_length),
                                      worker.received.substr(report, answer.report_length)}};
            taken = report + answer.report_length;
        }
        worker.received.erase(0, taken);
        return true;
    }

    void end(const Worker &worker) {
        ::close(worker.pipe);
        int status = 0;
        while (waitpid(worker.process, &status, 0) < 0 && errno == EINTR) {
        }
        const bool killed = !WIFEXITED(status);
        if (!killed || SignalNote::noted() != 0) {
            return;
        }
        const size_t part = shared_.current(worker.number);
        if (part != kNothing && part >= next_done_ && results_.count(part) == 0) {
            results_[part] = {kEndedBySignal, {}};
        }
        if (shared_.next() < work_.count) {
            start(worker.number);
        }
    }

    // The parts that are next.
    void hand_over() {
        for (auto first = results_.begin(); first != results_.end() && first->first == next_done_;
             first = results_.erase(first)) {
            hand_over(first->first, first->second);
        }
    }

    void hand_over(size_t part, const Result &result) {
        pass_on(result.spoken);
        work_.done(part, result.answer);
        next_done_ = part + 1;
    }

    // What no process could be had for.
    void do_the_rest() {
        for (size_t i = next_done_; i < work_.count && SignalNote::noted() == 0; ++i) {
            hand_over();
            if (i < next_done_) {
                continue;
            }
            // Taken by a process that was gone before it could say so; or by none.
            const bool was_taken = shared_.exist() && i < shared_.next();
            hand_over(i, {was_taken ? kEndedBySignal : work_.work(i), {}});
        }
    }

    // After an interruption: also what stands behind a gap.
    void hand_over_all() {
        for (const auto &[part, result] : results_) {
            hand_over(part, result);
        }
    }

    const Work &work_;
    SignalNote signals_;
    SharedNumbers shared_;
    std::list<Worker> workers_;
    std::map<size_t, Result> results_; // that wait for one before them
    size_t next_done_ = 0;
};

} // namespace

int do_work(const Work &work) { return Workers(work).run(); }

} // namespace jkc::cli
