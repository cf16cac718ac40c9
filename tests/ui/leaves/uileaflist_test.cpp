#include "tests/common/scene.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <climits>
#include <random>
#include <vector>

namespace {

using testing::ElementsAre;

std::vector<ui::Leaf*> leavesOf(const ui::LeafList& list) {
    std::vector<ui::Leaf*> leaves;
    for (ui::Leaf* leaf : list)
        leaves.push_back(leaf);
    return leaves;
}

TEST(LeafBuilder, RebuildsFromTheSameLeavesLastBranchFirst) {
    model::Scene scene, smaller;
    ui::LeafList& leaves = scene.mShared.mLeaves;
    scene.add({}, domain::GESTURE_MENU);
    scene.add({{{1}, 6}});
    scene.add({{{0}, 3}, {{1}, 3}, {{2}, 3}});
    scene.build();
    const std::vector<ui::Leaf*> old = leavesOf(leaves);
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(leaves.leafAt(i), leaves.at(2 - i));
        EXPECT_EQ(leaves.branchAt(i), scene.mNest.branchAt(i));
        EXPECT_EQ(leaves.leafAt(i)->mWeight, leaves.branchAt(i)->patternWeight());
        leaves.leafAt(i)->mWeight = 99; // it is the branches that are asked
        leaves.leafAt(i)->mPos = leaves.leafAt(i)->mNorm = QPointF(i, 7);
    }
    EXPECT_EQ(leaves.menuCount(), 1);
    EXPECT_EQ(leaves.maxPatternCount(), 6);
    EXPECT_EQ(leaves.maxPatternWeight(), 12);

    smaller.add();
    smaller.add();
    ui::LeafBuilder(leaves).from(smaller.mNest);
    EXPECT_THAT(leavesOf(leaves), ElementsAre(old[1], old[0]));
    EXPECT_EQ(old[0]->mPos, QPointF(2, 7)) << "until it is laid out";
    EXPECT_EQ(old[0]->mNorm, QPointF(2, 7));
    EXPECT_EQ(leaves.branchAt(0), smaller.mNest.branchAt(0));
    EXPECT_EQ(leaves.branchAt(2), nullptr);
    old[0]->mIndex = 9;
    EXPECT_EQ(leaves.leafAt(9), old[0]);
    EXPECT_EQ(leaves.leafAt(0), nullptr);
    EXPECT_EQ(leaves.menuCount() + leaves.maxPatternCount() + leaves.maxPatternWeight(), 0);
}

TEST(LeafList, LookUpFindsWhatAWalkFinds) {
    constexpr int INDICES[] = {0, 1, 2, 3, 4, 5, 6, 40, -1, INT_MIN, INT_MAX};
    std::mt19937 random(7);
    ui::LeafList list;
    ui::Leaf leaf;
    for (int step = 0; step < 5'000; ++step) {
        leaf.mIndex = INDICES[random() % std::size(INDICES)];
        const auto choice = random() % 40;
        if (choice == 0)
            list.clear();
        else if (choice == 1)
            list.pushBack()->setTo(leaf);
        else
            list.add(leaf);
        const std::vector<ui::Leaf*> leaves = leavesOf(list);
        for (const int index : INDICES) {
            const auto walked = std::find_if(leaves.begin(), leaves.end(), [&](ui::Leaf* at) {
                return index >= 0 && at->mIndex == index;
            });
            ASSERT_EQ(list.leafAt(index), walked == leaves.end() ? nullptr : *walked);
        }
    }
}

TEST(LeafListFactory, OrdersLeavesByTopAndMenuLeavesBehindThemByKey) {
    const auto leaf = [](int gesture, const QString& key, qreal top) {
        ui::Leaf made;
        made.mGesture = gesture;
        made.mKey = key;
        made.mBounds = QRectF(0, top, 1, 1);
        return made;
    };
    ui::Leaf inOrder[] = {leaf(domain::GESTURE_DOWN, QStringLiteral("z"), 3),
                          leaf(domain::GESTURE_UP, QStringLiteral("y"), 4),
                          leaf(domain::GESTURE_MENU, QStringLiteral("B"), 9),
                          leaf(domain::GESTURE_MENU, QStringLiteral("a"), 1)};
    const ui::LeafList::Factory factory(false);
    for (ui::Leaf& a : inOrder) {
        EXPECT_EQ(factory.sortObject(&a, nullptr), 0);
        EXPECT_EQ(factory.sortObject(&a, &a), 0);
        for (ui::Leaf* b = &a + 1; b < std::end(inOrder); ++b) {
            EXPECT_LT(factory.sortObject(&a, b), 0);
            EXPECT_GT(factory.sortObject(b, &a), 0);
        }
    }
    EXPECT_EQ(factory.setObject(inOrder, inOrder + 2)->mKey, QStringLiteral("B"));
    EXPECT_EQ(factory.setObject(inOrder, nullptr)->mKey, QStringLiteral("B"));
}

TEST(LeafListDump, NamesEachLeafInListOrder) {
    static QStringList messages;
    ui::LeafList leaves;
    ui::Leaf leaf;
    leaf.mKey = QStringLiteral("a\\b");
    leaf.mBounds = QRectF(3, 4, 1, 1);
    leaves.add(leaf);
    const auto handler = qInstallMessageHandler(
        [](QtMsgType, const QMessageLogContext&, const QString& text) { messages.append(text); });
    leaves.print();
    qInstallMessageHandler(handler);
    EXPECT_EQ(messages, (QStringList{QStringLiteral("LeafList size= 1 "),
                                     QStringLiteral("\t 0   key= \"a\\b\" l= 3 t= 4 "
                                                    "loc= QPointF(0,0) ")}));
}

} // namespace
