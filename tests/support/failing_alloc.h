// Allocation failures at will, and a count of what the code under test leaves allocated.
// Works on code in this program (the static library): the linker wraps its calls.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <unordered_set>

namespace jkc::testing {

// While one is alive, the n-th allocation (from 1; 0: none) fails, once, and the rest succeed.
// Only one at a time. Keep assertions and the set-up of a test outside its life.
class FailingAlloc {
public:
    explicit FailingAlloc(size_t fail_at);
    ~FailingAlloc();
    FailingAlloc(const FailingAlloc &) = delete;
    FailingAlloc &operator=(const FailingAlloc &) = delete;

    // Whether the n-th was reached: a loop over n ends at the first run where it was not.
    bool failed() const { return fail_at_ != 0 && requests_ >= fail_at_; }
    // Allocations made since the start and not freed: leaks, once the code has cleaned up.
    size_t live() const { return live_.size(); }

    // For the wrapped functions.
    bool next_fails() { return ++requests_ == fail_at_; }
    void note_alloc(const void *p) { live_.insert(p); }
    void note_free(const void *p) { live_.erase(p); }

private:
    size_t fail_at_;
    size_t requests_ = 0;
    // The nodes come from operator new in libstdc++, which is not wrapped.
    std::unordered_set<const void *> live_;
};

// Runs an operation with its n-th allocation failing, for each n until there is none. It must answer JKC_EALLOC when an
// allocation failed and no error otherwise, and leave nothing allocated. `check` follows each run. Returns the number
// of allocations.
size_t fail_each_allocation(const std::function<int64_t()> &operation, const std::function<void(bool failed)> &check);

} // namespace jkc::testing
