#include "collections/managedlist.h"
#include "tests/common/countingfactory.h"

#include <gtest/gtest.h>

namespace {

using List = ManagedList<Counted*>;

void fill(List& list, int count) {
    while (count-- > 0)
        list.pushBack()->value = 1;
}

TEST(ManagedList, HasNothingWhenNew) {
    const CountingFactory factory;
    List list(factory);
    EXPECT_TRUE(list.isEmpty());
    EXPECT_EQ(list.size(), 0);
    ManagedListIterator<Counted*> it(list);
    EXPECT_FALSE(it.hasValue());
    EXPECT_EQ(*it, nullptr);
    EXPECT_EQ(++it, nullptr);
    EXPECT_THROW(list.front(), List::is_empty);
    EXPECT_THROW(list.popFront(), List::is_empty);
    EXPECT_THROW(list.at(0), List::bad_index);
}

TEST(ManagedList, FindsElementsByPosition) {
    const CountingFactory factory;
    List list(factory);
    fill(list, 2);
    Counted* first = list.pushFront();
    EXPECT_EQ(list.front(), first);
    EXPECT_EQ(list.at(0), first);
    EXPECT_EQ(list.at(1)->id, 0);
    EXPECT_EQ(list.at(2)->id, 1);
    EXPECT_THROW(list.at(3), List::bad_index);
    EXPECT_THROW(list.at(-1), List::bad_index);
}

TEST(ManagedList, IteratorStaysOnItsElementWhenOthersArePushedBeforeIt) {
    const CountingFactory factory;
    List list(factory);
    fill(list, 2);
    ManagedListIterator<Counted*> it = list.begin();
    list.pushFront();
    EXPECT_EQ((*it)->id, 0);
    ++it;
    EXPECT_EQ((*it)->id, 1);
    it = list.begin();
    EXPECT_EQ((*it)->id, 2);
}

TEST(ManagedListDeathTest, UnorderedInsertionsAreForbiddenOnOrderedLists) {
    const CountingFactory ordered(true);
    List list(ordered);
    EXPECT_DEATH(list.pushFront(), "Quillon/collections/managedlist.*pushFront.*!mFactory.mSort");
    EXPECT_DEATH(list.pushBack(), "Quillon/collections/managedlist.*pushBack.*!mFactory.mSort");
}

} // namespace
