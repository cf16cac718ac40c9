#include "tests/common/scene.h"

#include <QSignalSpy>

#include <gtest/gtest.h>

#include <random>

namespace {

using model::fill;

TEST(LeafSelection, KnowsWhereThePrimaryIsAndTheOrderOfTheAlternates) {
    ui::LeafSelection one, two;
    EXPECT_EQ(one.primaryIndex(), -1);
    fill(one, 5, {3, 5, 8, 5});
    EXPECT_EQ(one.primaryIndex(), 1);
    fill(two, 5, {5, 3, 8, 5});
    EXPECT_FALSE(one == two);
    two = one;
    EXPECT_TRUE(one == two);
    two.mPrimary = 7;
    EXPECT_EQ(two.primaryIndex(), -1);
    EXPECT_FALSE(one == two);
    fill(one, -1, {-1});
    EXPECT_EQ(one.primaryIndex(), -1);
}

TEST(LeafSelection, FindsItsAlternatesWherever) {
    std::mt19937 random(5);
    ui::LeafSelection plain;
    ui::Shared shared(nullptr);
    for (int size = 0; size < 100; ++size) {
        shared.setLeafSelection(plain);
        for (int index = -3; index < 60; ++index)
            ASSERT_EQ(shared.leafSelection().hasAlternate(index), plain.hasAlternate(index));
        const int added = static_cast<int>(random() % 50);
        plain.mAlternates.add(added);
        ASSERT_TRUE(plain.hasAlternate(added));
    }
    ui::LeafSelection copy(shared.leafSelection());
    EXPECT_TRUE(copy == shared.leafSelection());
    copy.mAlternates.add(500);
    EXPECT_TRUE(copy.hasAlternate(500)) << "a copy may be changed";
}

TEST(Shared, AnnouncesEachChangeOnceAndResetsThePattern) {
    ui::Shared shared(nullptr);
    const QSignalSpy changes(&shared, &ui::Shared::onSelectionChanged);
    ui::LeafSelection selection;
    shared.setLeafSelection(selection);
    shared.setPatternSelection(0);
    shared.setPatternSelection(4);
    shared.setPatternSelection(4);
    fill(selection, 2, {2, 9});
    shared.setLeafSelection(selection);
    EXPECT_EQ(shared.patternSelection(), 0);
    EXPECT_TRUE(shared.leafSelection() == selection && shared.leafSelection().hasAlternate(9));
    shared.setPatternSelection(-1);
    shared.setLeafSelection(selection);
    EXPECT_EQ(shared.patternSelection(), -1);
    const QList<QVariantList> masks = {{ui::PATTERN_SEL}, {quint64(3)}, {ui::PATTERN_SEL}};
    EXPECT_EQ(changes, masks);
}

} // namespace
