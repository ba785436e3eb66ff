#include "support/failing_alloc.h"

#include <cstdlib>

#include <gtest/gtest.h>

namespace jkc::testing {
namespace {

TEST(FailingAllocTest, FailsOnceAtTheNthCallAndCountsWhatIsLeft) {
    size_t live_before_free = 0;
    size_t live_after_free = 0;
    void *first = nullptr;
    void *second = nullptr;
    void *third = nullptr;
    {
        FailingAlloc alloc(2);
        first = malloc(10);
        second = calloc(2, 10);
        third = realloc(nullptr, 10);
        third = realloc(third, 100000);
        live_before_free = alloc.live();
        free(first);
        free(third);
        live_after_free = alloc.live();
    }
    EXPECT_NE(first, nullptr);
    EXPECT_EQ(second, nullptr);
    EXPECT_NE(third, nullptr);
    EXPECT_EQ(live_before_free, 2U);
    EXPECT_EQ(live_after_free, 0U);
}

} // namespace
} // namespace jkc::testing
