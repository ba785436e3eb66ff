#include <gtest/gtest.h>

#include "core/internal.h"

namespace jkc::testing {
namespace {

// The records in order, each an int, checking the links both ways.
std::vector<int> contents(const JkcListNode *list) {
    std::vector<int> values;
    const JkcListHeader *header = list->header;
    const JkcListNode *before = nullptr;
    for (const JkcListNode *node = header->first; node != nullptr && node->data != nullptr; node = node->next) {
        values.push_back(*static_cast<const int *>(node->data));
        EXPECT_EQ(node->prev, before);
        EXPECT_EQ(node->header, header);
        before = node;
    }
    EXPECT_EQ(header->last, before == nullptr ? header->first : before);
    EXPECT_EQ(header->count, values.size());
    return values;
}

JkcListNode *add(JkcListNode *node, int value) { return ll_add(node, &value, sizeof value); }

using Ints = std::vector<int>;

TEST(RecordListTest, LinksAndCountFollowEachChange) {
    JkcListNode *list = ll_create();
    EXPECT_EQ(list->data, nullptr);
    EXPECT_EQ(contents(list), Ints());
    EXPECT_EQ(add(list, 1), list) << "the first record fills the first node";
    JkcListNode *third = add(list, 3);
    JkcListNode *second = add(list, 2); // behind the first, not at the end
    add(third, 4);
    EXPECT_EQ(contents(list), (Ints{1, 2, 3, 4}));

    const int other = 7;
    EXPECT_EQ(ll_replace(second, &other, sizeof other), second);
    EXPECT_EQ(contents(list), (Ints{1, 7, 3, 4}));
    EXPECT_EQ(ll_delete(second), third);
    EXPECT_EQ(ll_delete(third->next), third) << "the last one gives the one before it";
    EXPECT_EQ(contents(list), (Ints{1, 3}));
    EXPECT_EQ(ll_delete(list->header->first), third);
    EXPECT_EQ(contents(third), Ints{3});
    list = ll_delete(third);
    EXPECT_EQ(contents(list), Ints());
    EXPECT_EQ(ll_delete(list), list) << "an empty node stays";
    EXPECT_EQ(ll_replace(list, &other, sizeof other), nullptr);

    add(list, 5);
    add(list, 6);
    EXPECT_EQ(ll_clear(list), list->header);
    EXPECT_EQ(contents(list), Ints());
    EXPECT_EQ(add(list, 8), list);
    EXPECT_EQ(contents(list), Ints{8});
    ll_release(&list);
    EXPECT_EQ(list, nullptr);
    ll_release(&list);
}

} // namespace
} // namespace jkc::testing
