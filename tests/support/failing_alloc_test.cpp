#include "support/failing_alloc.h"

#include <cstdlib>

#include <gtest/gtest.h>

namespace jkc::testing {
namespace {

TEST(FailingAllocTest, FailsOnceAtTheNthCallAndCountsWhatIsLeft) {
    bool given[3]{};
    size_t live_before_free = 0;
    size_t live_after_free = 0;
    {
        FailingAlloc alloc(2);
        void *first = malloc(10);
        void *second = calloc(2, 10);
        void *third = realloc(nullptr, 10);
        if (void *moved = realloc(third, 100000)) {
            third = moved;
        }
        given[0] = first != nullptr;
        given[1] = second != nullptr;
        given[2] = third != nullptr;
        live_before_free = alloc.live();
        free(first);
        free(second);
        free(third);
        live_after_free = alloc.live();
    }
    EXPECT_TRUE(given[0]);
    EXPECT_FALSE(given[1]);
    EXPECT_TRUE(given[2]);
    EXPECT_EQ(live_before_free, 2U);
    EXPECT_EQ(live_after_free, 0U);
}

} // namespace
} // namespace jkc::testing
