#include "ui/leaves/uileafrank.h"

#include <gmock/gmock.h>

#include <vector>

namespace {

using testing::ElementsAre;

/// The order of the leaves whose branches have a pattern of these counts; -1 for no pattern.
std::vector<int> ranked(const std::vector<int>& counts) {
    std::vector<domain::Branch> branches(counts.size());
    ui::LeafList leaves;
    leaves.add(ui::Leaf()); // has no branch
    for (std::size_t i = 0; i < counts.size(); ++i) {
        domain::Pattern pattern;
        pattern.mCount = counts[i];
        if (counts[i] >= 0)
            branches[i].addPattern(pattern);
        ui::Leaf leaf;
        leaf.setTo(branches[i]);
        leaf.mIndex = static_cast<int>(i);
        leaves.add(leaf);
    }
    RecycleArray<int> order(1, nullptr);
    order.add(99);
    ui::sort(leaves, ui::descendingRank, order);
    return {order.data(), order.data() + order.size()};
}

TEST(LeafRank, HighestFirstAndLowestIndexAmongEquals) {
    EXPECT_THAT(ranked({2, 5, 5, -1}), ElementsAre(1, 2, 0));
    EXPECT_THAT(ranked({0, -1, 1, 0}), ElementsAre(2, 0, 3));
    EXPECT_THAT(ranked({-1, -1}), ElementsAre());
}

} // namespace
