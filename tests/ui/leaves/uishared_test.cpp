#include "ui/leaves/uishared.h"

#include <QSignalSpy>

#include <gtest/gtest.h>

#include <random>
#include <vector>

namespace {

void select(ui::LeafSelection& selection, int primary, const std::vector<int>& alternates) {
    selection.mPrimary = primary;
    selection.mAlternates.setSize(0);
    for (const int index : alternates)
        selection.mAlternates.add(index);
}

TEST(LeafSelection, KnowsWhereThePrimaryIsAndTheOrderOfTheAlternates) {
    ui::LeafSelection one, two;
    EXPECT_EQ(one.primaryIndex(), -1);
    select(one, 5, {3, 5, 8, 5});
    EXPECT_EQ(one.primaryIndex(), 1);
    select(two, 5, {5, 3, 8, 5});
    EXPECT_FALSE(one == two);
    two = one;
    EXPECT_TRUE(one == two);
    two.mPrimary = 7;
    EXPECT_EQ(two.primaryIndex(), -1);
    EXPECT_FALSE(one == two);
    select(one, -1, {-1});
    EXPECT_EQ(one.primaryIndex(), -1);
}

TEST(LeafSelection, FindsAlternatesFrozenOrNot) {
    std::mt19937 random(5);
    ui::LeafSelection plain, frozen;
    for (int size = 0; size < 100; ++size) {
        frozen = plain;
        frozen.freeze();
        for (int index = -3; index < 60; ++index)
            ASSERT_EQ(frozen.hasAlternate(index), plain.hasAlternate(index)) << index;
        const int added = static_cast<int>(random() % 50);
        plain.mAlternates.add(added);
        ASSERT_TRUE(plain.hasAlternate(added));
    }
    frozen = plain;
    frozen.mAlternates.add(500);
    EXPECT_TRUE(frozen.hasAlternate(500)) << "an assigned selection may be changed again";
}

TEST(Shared, AnnouncesEachChangeOnceAndResetsThePattern) {
    ui::Shared shared(nullptr);
    const QSignalSpy changes(&shared, &ui::Shared::onSelectionChanged);
    ui::LeafSelection selection;
    shared.setLeafSelection(selection);
    shared.setPatternSelection(0);
    shared.setPatternSelection(4);
    shared.setPatternSelection(4);
    select(selection, 2, {2, 9});
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
