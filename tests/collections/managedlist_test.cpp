#include "collections/managedlist.h"
#include "tests/common/countingfactory.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <stdexcept>

namespace {

using testing::ElementsAre;

using List = ManagedList<Counted*>;

std::vector<int> ids(const List& list) {
    std::vector<int> found;
    for (const Counted* counted : list)
        found.push_back(counted->id);
    return found;
}

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

TEST(ManagedList, HandsThePoppedObjectOutAgainReset) {
    const CountingFactory factory;
    List list(factory);
    Counted* object = list.pushFront();
    object->value = 7;
    list.popFront();
    EXPECT_EQ(object->value, 7) << "reset before it is reused";
    EXPECT_EQ(list.pushFront(), object);
    EXPECT_EQ(object->value, 0);
    EXPECT_EQ(factory.made, 1);
    EXPECT_THAT(factory.initialized, ElementsAre(0, 0));
}

TEST(ManagedList, ReusesClearedObjectsBehindThoseThatWaited) {
    const CountingFactory factory;
    List list(factory);
    fill(list, 5);
    list.popFront();
    list.popFront();
    list.clear();
    EXPECT_TRUE(list.isEmpty());
    fill(list, 5);
    EXPECT_THAT(ids(list), ElementsAre(1, 0, 2, 3, 4));
    EXPECT_EQ(factory.made, 5);
    fill(list, 1);
    EXPECT_EQ(factory.made, 6);
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

TEST(ManagedList, IsUnchangedWhenNoObjectCanBeMade) {
    CountingFactory factory;
    List list(factory);
    fill(list, 1);
    factory.beforeNew = [](int) { throw std::runtime_error("none left"); };
    EXPECT_THROW(list.pushFront(), std::runtime_error);
    EXPECT_THROW(list.pushBack(), std::runtime_error);
    EXPECT_THAT(ids(list), ElementsAre(0));
    list.popFront();
    EXPECT_EQ(list.pushBack()->id, 0);
}

TEST(ManagedListDeathTest, UnorderedInsertionsAreForbiddenOnOrderedLists) {
    const CountingFactory ordered(true);
    List list(ordered);
    EXPECT_DEATH(list.pushFront(), "Quillon/collections/managedlist.*pushFront.*!mFactory.mSort");
    EXPECT_DEATH(list.pushBack(), "Quillon/collections/managedlist.*pushBack.*!mFactory.mSort");
}

} // namespace
