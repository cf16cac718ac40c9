#include "ui/leaves/uileaflayout.h"

#include <gtest/gtest.h>

#include <limits>
#include <vector>

namespace {

constexpr double INF = std::numeric_limits<double>::infinity();
constexpr double NOT = std::numeric_limits<double>::quiet_NaN();
constexpr double MAX = std::numeric_limits<double>::max();

// Neither size is one of single precision, in which the layout takes it.
const QRectF STRIP(22, 11, 300.1, 1), BODY(10, 20, 200.1, 100.1);
constexpr double STRIP_WIDTH = 300.1F, WIDTH = 200.1F, HEIGHT = 100.1F;

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
    layout.zoom(STRIP, BODY);
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
            EXPECT_DOUBLE_EQ(leaf->mPos.x(), 10 + WIDTH * row.norms[i].x());
            EXPECT_DOUBLE_EQ(leaf->mPos.y(), 20 + HEIGHT * row.norms[i].y());
        }
        ui::LeafLayout(leaves).zoom(STRIP, QRectF(10, 20, 0, 9));
        for (const ui::Leaf* leaf : leaves)
            EXPECT_EQ(leaf->mPos.x(), 10) << "no width";
    }
}

TEST(LeafLayout, MenuLeavesSpreadAlongTheStripInListOrder) {
    const std::vector<std::vector<double>> rows = {{}, {0.5}, {0, 1}, {0, 0.5, 1}};
    for (const bool alone : {false, true})
        for (const std::vector<double>& places : rows) {
            ui::LeafList leaves;
            if (!alone)
                place(leaves, domain::GESTURE_UP, {event(1, 1)});
            place(leaves, domain::GESTURE_MENU, std::vector<QRectF>(places.size(), event(50, 60)));
            std::size_t i = 0;
            for (const ui::Leaf* leaf : leaves) {
                if (leaf->isMenu()) {
                    EXPECT_EQ(leaf->mNorm, QPointF(double(i), 0));
                    EXPECT_EQ(leaf->mPos, QPointF(22 + STRIP_WIDTH * places[i++], 11));
                } else {
                    EXPECT_EQ(leaf->mNorm, QPointF(0.5, 0.5)) << "menu leaves widen the extent";
                }
            }
        }
}

} // namespace
