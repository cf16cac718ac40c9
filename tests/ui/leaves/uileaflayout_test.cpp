#include "ui/leaves/uileaflayout.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <vector>

namespace {

constexpr double INF = std::numeric_limits<double>::infinity();
constexpr double NOT = std::numeric_limits<double>::quiet_NaN();
constexpr double MAX = std::numeric_limits<double>::max();

QRectF event(double x, double y) {
    return {x, y, 1, 1};
}

/// Lays out one leaf for each of `bounds`, the last one first in the list.
void place(ui::LeafList& leaves, int gesture, const std::vector<QRectF>& bounds) {
    ui::Leaf leaf;
    leaf.mGesture = gesture;
    for (const QRectF& rect : bounds) {
        leaf.mBounds = rect;
        leaves.add(leaf);
    }
    ui::LeafLayout layout(leaves);
    layout.layout();
    layout.zoom(QRectF(22, 11, 300, 1), QRectF(10, 20, 200, 100));
}

TEST(LeafLayout, PlacesLeavesWithinTheUnionOfTheirBounds) {
    const struct {
        const char* rule;
        std::vector<QRectF> bounds;
        std::vector<QPointF> norms;
    } rows[] = {
        {"a single event", {event(7, -3)}, {{0.5, 0.5}}},
        {"a row", {event(0, 0), event(9, 0)}, {{0, 0.5}, {0.9, 0.5}}},
        {"just over an event", {{0, 0, 1.25, 1}, event(0.25, 0)}, {{0, 0.5}, {0.2, 0.5}}},
        {"without (0, 0)", {event(100, 40), event(103, 43)}, {{0, 0}, {0.75, 0.75}}},
        {"no event", {event(100, 0), {}, event(149, 0)}, {{0, 0.5}, {-2, 0.5}, {0.98, 0.5}}},
        {"far",
         {event(-MAX / 4, 0), event(MAX / 4, 3), event(0, 1)},
         {{0, 0}, {1, .75}, {.5, .25}}},
        {"infinite", {event(0, 0), event(INF, 1), event(3, -INF)}, {{.5, .5}, {.5, .5}, {.5, .5}}},
        {"not all", {event(0, 0), event(NOT, 1), event(9, 3)}, {{0, 0}, {0.5, 0.25}, {0.9, 0.75}}},
        {"endless", {event(0, 0), {0, 0, INF, 1}, event(0, 3)}, {{.5, 0}, {.5, 0}, {.5, .75}}},
        {"too wide", {event(-MAX, 9), event(MAX, 3), event(0, 0)}, {{.5, .5}, {1, .75}, {0, 0}}},
    };

    for (const auto& row : rows) {
        ui::LeafList leaves;
        place(leaves, domain::GESTURE_DOWN, row.bounds);
        std::size_t i = row.bounds.size();
        for (const ui::Leaf* leaf : leaves) {
            SCOPED_TRACE(testing::Message() << row.rule << ", leaf " << --i);
            EXPECT_DOUBLE_EQ(leaf->mNorm.x(), row.norms[i].x());
            EXPECT_DOUBLE_EQ(leaf->mNorm.y(), row.norms[i].y());
            EXPECT_DOUBLE_EQ(leaf->mPos.x(), 10 + 200 * row.norms[i].x());
            EXPECT_DOUBLE_EQ(leaf->mPos.y(), 20 + 100 * row.norms[i].y());
        }
    }
}

TEST(LeafLayout, MenuLeavesSpreadAlongTheStripInListOrder) {
    const std::vector<std::vector<double>> rows = {{}, {172}, {22, 322}, {22, 172, 322}};
    for (const std::vector<double>& places : rows) {
        ui::LeafList leaves;
        place(leaves, domain::GESTURE_UP, {event(1, 1)});
        place(leaves, domain::GESTURE_MENU, std::vector<QRectF>(places.size(), event(50, INF)));
        auto it = leaves.begin();
        for (const double x : places) {
            EXPECT_EQ((*it)->mPos, QPointF(x, 11));
            ++it;
        }
        EXPECT_EQ((*it)->mPos, QPointF(110, 70)) << "menu leaves are no part of the extent";
    }
}

TEST(LeafLayout, EveryPositionIsFinite) {
    const double hostile[] = {0, -1e300, MAX, -MAX, 3.4e38, INF, -INF, NOT, 1e-320};
    for (const double x : hostile)
        for (const double y : hostile)
            for (const double size : {0., 1., 2., 1e300, INF}) {
                ui::LeafList leaves;
                place(leaves, domain::GESTURE_DOWN, {{}, {x, y, size, size}, {y, x, size, 1}});
                for (const ui::Leaf* leaf : leaves)
                    ASSERT_TRUE(
                        std::isfinite(leaf->mPos.manhattanLength() + leaf->mNorm.manhattanLength()))
                        << x << ", " << y << ", " << size;
            }
}

} // namespace
