// Work in several processes, so that what ends one file's work, a signal even, leaves that of the others alone.
#pragma once

#include <cstddef>
#include <functional>

namespace jkc::cli {

constexpr int kEndedBySignal = -1;

// Calls work(0) to work(count - 1), each in a process of its own and at most `jobs` at a time; and in this process
// done(i, a) for each that has answered a, 0 to 255, or kEndedBySignal. With one job, and where the system gives no
// more processes, the work is done in this one.
void run_side_by_side(size_t count, int jobs, const std::function<int(size_t)> &work,
                      const std::function<void(size_t, int)> &done);

} // namespace jkc::cli
