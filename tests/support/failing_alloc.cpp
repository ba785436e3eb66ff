#include "support/failing_alloc.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <optional>
#include <utility>

#include <gtest/gtest.h>

#include "core/internal.h"

namespace {
jkc::testing::FailingAlloc *active = nullptr;

// Notes something where there is someone to do so, whose own allocations do not count: a C++ library that is linked
// statically is wrapped, too.
template <class Note>
void note(Note note) {
    if (auto *noting = std::exchange(active, nullptr)) {
        note(*noting);
        active = noting;
    }
}

void *noted(void *p) {
    if (p != nullptr) {
        note([p](auto &alloc) { alloc.note_alloc(p); });
    }
    return p;
}
} // namespace

namespace jkc::testing {

FailingAlloc::FailingAlloc(size_t fail_at) : fail_at_(fail_at) { active = this; }
FailingAlloc::~FailingAlloc() { active = nullptr; }

size_t fail_each_allocation(const std::function<int64_t()> &operation, const std::function<void(bool failed)> &check) {
    for (size_t n = 1;; n++) {
        std::optional<FailingAlloc> alloc(n);
        const int64_t result = operation();
        const size_t left = alloc->live();
        const bool failed = alloc->failed();
        alloc.reset();
        EXPECT_EQ(left, 0U) << n;
        EXPECT_EQ(std::min<int64_t>(result, 0), failed ? JKC_EALLOC : 0) << n;
        check(failed);
        if (!failed) {
            return n - 1;
        }
    }
}

} // namespace jkc::testing

// The names are those that the linker's --wrap asks for.
extern "C" {
void *__real_malloc(size_t size);
void *__real_calloc(size_t count, size_t size);
void *__real_realloc(void *p, size_t size);
void __real_free(void *p);

void *__wrap_malloc(size_t size) {
    return active != nullptr && active->next_fails() ? nullptr : noted(__real_malloc(size));
}

void *__wrap_calloc(size_t count, size_t size) {
    return active != nullptr && active->next_fails() ? nullptr : noted(__real_calloc(count, size));
}

void *__wrap_realloc(void *p, size_t size) {
    if (active != nullptr && active->next_fails()) {
        return nullptr;
    }
    // Noted before the call: afterwards the old address must not be used at all.
    auto old = reinterpret_cast<uintptr_t>(p);
    void *moved = __real_realloc(p, size);
    if (moved != nullptr) {
        note([old](auto &alloc) { alloc.note_free(reinterpret_cast<const void *>(old)); });
        noted(moved);
    }
    return moved;
}

void __wrap_free(void *p) {
    note([p](auto &alloc) { alloc.note_free(p); });
    __real_free(p);
}
}
