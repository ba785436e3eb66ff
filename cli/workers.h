// Work on many files in processes that live on from file to file, so that what ends one of them, a signal even, leaves
// the work of the others alone.
#pragma once

#include <cstddef>
#include <functional>
#include <string>

namespace jkc::cli {

constexpr int kEndedBySignal = -1;

struct Work {
    size_t count = 0;
    int jobs = 1;
    // Does the part i, in any of the processes, and answers 0 or more.
    std::function<int(size_t i)> work;
    // Takes what part i has answered, or kEndedBySignal; in this process, in the order of the parts.
    std::function<void(size_t i, int answer)> done;
    // Called in this process several times a second.
    std::function<void()> tick;
};

// Does all parts in `jobs` processes, or in this one where the system gives none. What they say comes before done() of
// their part. Answers the signal that came in between and made it stop early, to which the caller owes an end; else 0.
int do_work(const Work &work);

} // namespace jkc::cli
