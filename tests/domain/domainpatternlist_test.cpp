#include "domain/domainpatternlist.h"
#include "tests/common/describe.h"

#include <gtest/gtest.h>

#include <set>
#include <vector>

namespace {

using domain::Pattern;
using domain::PatternList;

void merge(PatternList& list, const std::vector<int>& sequence, int count = 0) {
    Pattern pattern;
    model::fill(pattern, sequence, count);
    list.merge(pattern);
}

TEST(Pattern, IsACycleWhenItEndsWhereItBegan) {
    const struct {
        std::vector<int> sequence;
        bool cycle;
    } rows[] = {{{}, false}, {{4}, false}, {{4, 9}, false}, {{4, 9, 4}, true}, {{4, 4}, true}};

    for (const auto& row : rows) {
        Pattern pattern;
        model::fill(pattern, row.sequence);
        EXPECT_EQ(pattern.isCycle(), row.cycle) << model::describe(pattern);
    }
}

TEST(Pattern, IsTheSameSequenceWhateverTheCount) {
    Pattern a;
    Pattern b;
    model::fill(a, {1, 2, 1}, 3);
    model::fill(b, {1, 2, 1}, 7);
    EXPECT_TRUE(a.isSameSequence(b));
    model::fill(b, {1, 2, 1, 2, 1}, 3);
    EXPECT_FALSE(a.isSameSequence(b));
}

TEST(Pattern, IsCopiedWithItsCountByTheListsFactoryToo) {
    const PatternList::Factory factory(false);
    domain::Pattern pattern, copy, made;
    model::fill(pattern, {1, 2, 1}, 5);
    copy = pattern;
    EXPECT_EQ(model::describe(copy = *&copy), "1,2,1x5");
    EXPECT_EQ(factory.setObject(&made, &copy), &made);
    EXPECT_EQ(factory.setObject(&made, nullptr), &made);
    EXPECT_EQ(model::describe(made), "1,2,1x5");
}

TEST(PatternList, TakesWhatItLacksAndCountsTheRest) {
    for (const int size : {0, 3, 40}) {
        PatternList list;
        PatternList other;
        PatternList merged;
        for (int i = 0; i < size; ++i)
            merge(list, {0, i, 0}, i);
        for (int i = size / 2; i < size + 20; ++i)
            merge(other, {0, i, 0}, 2 * i);
        merged = list;
        merged.merge(other);
        const Pattern* last = other.at(other.size() - 1);
        list.take(other);
        EXPECT_EQ(model::describe(list), model::describe(merged));
        EXPECT_EQ(list.at(list.size() - 1), last);
        EXPECT_TRUE(other.isEmpty());
        merge(list, {0, size + 1, 0});
        merge(other, {0, size + 1, 0});
        EXPECT_EQ(list.size(), size + 20);
        EXPECT_EQ(other.size(), 1);
    }
}

TEST(PatternList, AssignmentCopiesAndRecycles) {
    PatternList list;
    PatternList other;
    merge(list, {1, 2, 1});
    merge(list, {1, 3, 1});
    merge(other, {5, 6, 5}, 4);
    const std::set<const Pattern*> objects{list.at(0), list.at(1)};
    list = other;
    EXPECT_EQ(model::describe(list), "5,6,5x4");
    EXPECT_EQ(objects.count(list.at(0)), 1U);
    merge(list, {5, 7, 5});
    EXPECT_EQ(objects.count(list.at(1)), 1U);
    list = list;
    EXPECT_EQ(list.size(), 2);
    list = PatternList();
    EXPECT_TRUE(list.isEmpty());
}

TEST(PatternList, GivesBackTheStorageOfAMuchLongerRun) {
    PatternList list;
    merge(list, std::vector<int>(5000, 1));
    list.clear();
    merge(list, std::vector<int>(2000, 1));
    EXPECT_GE(list.at(0)->mSequence.capacity(), 5000);
    list.clear();
    merge(list, {1, 2, 1});
    EXPECT_LT(list.at(0)->mSequence.capacity(), 64);
}

} // namespace
