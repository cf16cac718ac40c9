#include "tests/common/describe.h"
#include "ui/leaves/uileafbuilder.h"
#include "ui/picture/uislice.h"
#include "ui/picture/uistrokes.h"

#include <gtest/gtest.h>

#include <array>
#include <map>
#include <random>
#include <set>

namespace {

/// Enough strokes that many of them share whatever they are looked up by.
class StrokesTest : public testing::Test {
protected:
    StrokesTest() {
        for (int i = 0; i < LEAVES; ++i) {
            domain::Branch branch;
            model::fill(branch, QString::number(i));
            for (int left = below(20); left > 0; --left) {
                domain::Pattern pattern;
                model::fill(pattern, sequence(left == 1 && i % 50 == 0 ? 5000 : below(30)));
                branch.addPattern(pattern);
            }
            mNest.set(i, branch);
        }
        ui::LeafBuilder(mLeaves).from(mNest);
        for (ui::Leaf* leaf : mLeaves)
            leaf->mPos = QPointF(below(20), below(20));
        mLeaves.leafAt(7)->mPos.setX(std::numeric_limits<double>::infinity());
    }

    int below(int end) { return static_cast<int>(mRandom() % static_cast<unsigned>(end)); }

    /// Some of its entries name no leaf.
    std::vector<int> sequence(int size) {
        std::vector<int> sequence;
        while (size-- > 0)
            sequence.push_back(below(LEAVES + 2) - 1);
        return sequence;
    }

    /// Calls `visit` for every stroke of a pattern between two leaves.
    template <typename Visit>
    void walk(const domain::Pattern& pattern, Visit visit) {
        for (int i = 1; i < pattern.mSequence.size(); ++i) {
            const ui::Leaf* from = mLeaves.leafAt(pattern.mSequence[i - 1]);
            const ui::Leaf* to = mLeaves.leafAt(pattern.mSequence[i]);
            if (from && to && from != to)
                visit(*from, *to);
        }
    }

    static constexpr int LEAVES = 300;

    std::mt19937 mRandom{3};
    domain::Nest mNest;
    ui::LeafList mLeaves;
};

TEST_F(StrokesTest, AreThoseOfAPlainWalkEachCurveOnce) {
    using Points = std::array<double, 4>;
    const auto points = [](const ui::Leaf& from, const ui::Leaf& to) {
        return Points{from.mPos.x(), from.mPos.y(), to.mPos.x(), to.mPos.y()};
    };
    std::map<std::pair<const ui::Leaf*, const ui::Leaf*>, std::set<const domain::Pattern*>> pairs;
    std::map<Points, int> positions;
    std::vector<std::set<const domain::Pattern*>> users;
    for (const ui::Leaf* leaf : mLeaves)
        for (const domain::Pattern* pattern : leaf->mBranch->mPatterns)
            walk(*pattern, [&](const ui::Leaf& from, const ui::Leaf& to) {
                pairs[{&from, &to}].insert(pattern);
                if (from.mIndex == 7 || to.mIndex == 7)
                    return;
                const int next = static_cast<int>(positions.size());
                const auto [found, isNew] = positions.try_emplace(points(from, to), next);
                if (isNew)
                    users.emplace_back();
                users[found->second].insert(pattern);
            });

    ui::StrokeTable table(mLeaves);
    ui::Slice over{QDeadlineTimer(0)};
    while (!table.advance(over))
        over = ui::Slice(QDeadlineTimer(0));
    EXPECT_EQ(table.entries().size(), pairs.size());
    for (const ui::StrokeTable::entry& entry : table.entries()) {
        const auto& pairUsers = pairs[{entry.from, entry.to}];
        ASSERT_EQ(entry.onlyUser, pairUsers.size() == 1 ? *pairUsers.begin() : nullptr);
    }

    ui::Strokes strokes(mLeaves, 8);
    while (!strokes.place(over))
        over = ui::Slice(QDeadlineTimer(0));
    ASSERT_EQ(strokes.size(), positions.size());
    for (const ui::Leaf* leaf : mLeaves)
        for (const domain::Pattern* pattern : leaf->mBranch->mPatterns) {
            QList<int> own;
            std::set<int> seen;
            walk(*pattern, [&](const ui::Leaf& from, const ui::Leaf& to) {
                const auto found = positions.find(points(from, to));
                if (found == positions.end() || !seen.insert(found->second).second)
                    return;
                own.append(found->second);
                ASSERT_EQ(strokes.isOnlyIn(own.last(), pattern), users[own.last()].size() == 1);
                ASSERT_EQ(strokes.target(own.last()), to.mPos);
                ASSERT_EQ(strokes.curve(own.last()).end,
                          ui::stroke_between(from.mPos, to.mPos, 8)->end);
            });
            ASSERT_EQ(strokes.of(*pattern), own);
        }
}

} // namespace
