#include "tests/common/scene.h"
#include "ui/leaves/uileafrank.h"

#include <QSignalSpy>

#include <gmock/gmock.h>

#include <vector>

namespace {

using testing::ElementsAre;

/// The order of the leaves whose branches have a pattern of these counts; -1 for no pattern.
std::vector<int> ranked(const std::vector<int>& counts) {
    model::Scene scene;
    for (const int count : counts)
        scene.add(std::vector<model::counted>(count < 0 ? 0 : 1, {{}, count}));
    scene.build();
    ui::Shared& shared = scene.mShared;
    shared.mLeaves.add(ui::Leaf()); // has no branch
    RecycleArray<int> order(1, nullptr);
    order.add(99);
    ui::sort(shared.mLeaves, ui::descendingRank, order);

    scene.select(0, {0});
    const QSignalSpy changes(&shared, &ui::Shared::onSelectionChanged);
    ui::select_by_rank(shared);
    ui::select_by_rank(shared);
    EXPECT_EQ(changes.size(), 1);
    EXPECT_TRUE(shared.leafSelection().mAlternates == order);
    EXPECT_EQ(shared.leafSelection().mPrimary, order.size() > 0 ? order[0] : -1);
    return {order.begin(), order.end()};
}

TEST(LeafRank, HighestFirstAndLowestIndexAmongEquals) {
    EXPECT_THAT(ranked({2, 5, 5, -1}), ElementsAre(1, 2, 0));
    EXPECT_THAT(ranked({0, -1, 1, 0}), ElementsAre(2, 0, 3));
    EXPECT_THAT(ranked({-1, -1}), ElementsAre());
}

} // namespace
