#include "collections/managedlist.h"
#include "tests/collections/countingfactory.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <deque>
#include <random>
#include <stdexcept>

namespace {

using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::IsEmpty;

using List = ManagedList<Counted*>;

std::vector<int> ids(const List& list) {
    std::vector<int> found;
    for (ManagedListIterator<Counted*> it = list.begin(); it.hasValue(); ++it)
        found.push_back((*it)->id);
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

/// A list and what it must hold: the ids of its elements and of the objects waiting for reuse.
struct Checked {
    explicit Checked(const CountingFactory& objects)
        : factory(objects)
        , list(objects) {}

    void push(bool front) {
        const int id = retired.empty() ? factory.made : retired.front();
        if (!retired.empty())
            retired.pop_front();
        active.insert(front ? active.begin() : active.end(), id);
        Counted* object = front ? list.pushFront() : list.pushBack();
        ASSERT_EQ(object->id, id);
        ASSERT_EQ(object->value, 0);
        ASSERT_EQ(factory.initialized.back(), id);
        object->value = 1;
    }

    void pop() {
        if (active.empty())
            return;
        list.popFront();
        retired.push_front(active.front());
        active.pop_front();
    }

    void clear() {
        list.clear();
        append(retired);
    }

    void moveTo(Checked& other) {
        list.moveTo(other.list);
        if (&other != this)
            append(other.active);
    }

    void moveToRetired(Checked& other) {
        list.moveToRetired(other.list);
        if (&other != this)
            append(other.retired);
    }

    void moveFrontTo(Checked& other) {
        list.moveFrontTo(other.list);
        if (&other == this || active.empty())
            return;
        other.active.push_front(active.front());
        active.pop_front();
    }

    void append(std::deque<int>& destination) {
        destination.insert(destination.end(), active.begin(), active.end());
        active.clear();
    }

    const CountingFactory& factory;
    List list;
    std::deque<int> active;
    std::deque<int> retired;
};

void step(Checked& one, Checked& other, unsigned action) {
    switch (action % 16) {
    case 0:
        return one.clear();
    case 1:
        return one.moveTo(other);
    case 2:
        return one.moveToRetired(other);
    case 3:
    case 4:
        return one.moveFrontTo(other);
    case 5:
    case 6:
    case 7:
        return one.pop();
    default:
        return one.push(action & 16);
    }
}

TEST(ManagedList, AgreesWithDequesOverThreeLists) {
    const CountingFactory factory;
    std::vector<int> left;
    {
        std::array<Checked, 3> lists{Checked(factory), Checked(factory), Checked(factory)};
        std::mt19937 random(301);
        std::size_t pushes = 0;
        for (int i = 0; i < 10'000; ++i) {
            SCOPED_TRACE(i);
            const auto action = static_cast<unsigned>(random());
            pushes += action % 16 > 7;
            step(lists[random() % 3], lists[random() % 3], action);
            ASSERT_FALSE(HasFatalFailure());
            ASSERT_EQ(factory.initialized.size(), pushes);
            for (const Checked& one : lists) {
                ASSERT_THAT(ids(one.list), ElementsAreArray(one.active));
                ASSERT_EQ(one.list.size(), static_cast<int>(one.active.size()));
            }
        }
        EXPECT_THAT(factory.deleted, IsEmpty());
        for (auto one = lists.rbegin(); one != lists.rend(); ++one) {
            left.insert(left.end(), one->active.begin(), one->active.end());
            left.insert(left.end(), one->retired.begin(), one->retired.end());
        }
    }
    EXPECT_EQ(static_cast<int>(left.size()), factory.made);
    EXPECT_EQ(factory.deleted, left);
}

} // namespace
