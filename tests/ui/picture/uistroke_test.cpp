#include "ui/picture/uistroke.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace {

constexpr double RADIUS = 8;
constexpr double NEAR = 0.01; // of the curves, whose angles are rounded to six digits
constexpr double INF = std::numeric_limits<double>::infinity();

double length(const QPointF& vector) {
    return std::hypot(vector.x(), vector.y());
}

/// To the left of a traveller in direction `vector`, as seen on the screen.
QPointF leftOf(const QPointF& vector) {
    return {vector.y(), -vector.x()};
}

void expectNear(const QPointF& point, const QPointF& expected, double tolerance) {
    EXPECT_NEAR(point.x(), expected.x(), tolerance);
    EXPECT_NEAR(point.y(), expected.y(), tolerance);
}

bool isFinite(const QPainterPath& path) {
    const QRectF box = path.controlPointRect();
    return std::isfinite(box.left() + box.top() + box.right() + box.bottom());
}

TEST(Stroke, KeepsLeftOfTheWayInEveryDirection) {
    const QPointF from(300, 200);
    for (int degrees = 0; degrees < 360; degrees += 15) {
        SCOPED_TRACE(degrees);
        const QPointF way(std::cos(degrees * M_PI / 180), std::sin(degrees * M_PI / 180));
        const QPointF left = leftOf(way);
        const QPointF to = from + 100 * way;
        const auto curve = ui::stroke_between(from, to, RADIUS);
        ASSERT_TRUE(curve);
        const double off = RADIUS / std::sqrt(2.0);
        const QPointF start = from + off * (way + left), end = to + off * (left - way);
        const double chord = 100 - 2 * off;
        expectNear(curve->start, start, NEAR);
        expectNear(curve->end, end, NEAR);
        expectNear(curve->control1, start + chord * (0.25 * way + 0.3 * left), NEAR);
        expectNear(curve->control2, start + chord * (0.45 * way + 0.3 * left), NEAR);

        const auto back = ui::stroke_between(to, from, RADIUS);
        const QPointF middle = (from + to) / 2;
        EXPECT_GT(QPointF::dotProduct(curve->path().pointAtPercent(0.5) - middle, left), 20);
        EXPECT_LT(QPointF::dotProduct(back->path().pointAtPercent(0.5) - middle, left), -20);

        const QPainterPath head = ui::arrow_head(curve->path(), to, RADIUS);
        ASSERT_EQ(head.elementCount(), 4);
        const QPointF tip = head.elementAt(0), one = head.elementAt(1), two = head.elementAt(2);
        const QPointF tangent = curve->control2 - curve->end;
        EXPECT_NEAR(length(tip - to), RADIUS, NEAR) << "the tip touches the circle";
        EXPECT_NEAR(length(one - two), RADIUS, NEAR);
        expectNear((one + two) / 2, tip + tangent * (RADIUS / length(tangent)), 0.2);
    }
}

TEST(Stroke, HeadsOfStraightCurvesLieOnTheAxes) {
    const struct {
        const char* rule;
        QPointF from, target;
        QPointF base;
    } rows[] = {
        {"right", {0, 50}, {108, 50}, {92, 50}},   {"left", {200, 50}, {92, 50}, {108, 50}},
        {"down", {100, 0}, {100, 58}, {100, 42}},  {"up", {100, 90}, {100, 42}, {100, 58}},
        {"beside", {0, 50}, {100, 58}, {108, 50}},
    };

    for (const auto& row : rows) {
        SCOPED_TRACE(row.rule);
        const QPointF tip(100, 50), step = (tip - row.from) / 3;
        QPainterPath curve(row.from);
        curve.cubicTo(row.from + step, tip - step, tip);
        const QPainterPath head = ui::arrow_head(curve, row.target, RADIUS);
        const QPointF one = head.elementAt(1), two = head.elementAt(2);
        expectNear((one + two) / 2, row.base, 1e-9);
        EXPECT_NEAR(QPointF::dotProduct(one - two, step), 0, 1e-9);
        EXPECT_NEAR(length(one - two), RADIUS, 1e-9);
        EXPECT_EQ(QPointF(head.elementAt(0)), tip);
    }
}

TEST(Stroke, IsFiniteOrNone) {
    const struct {
        QPointF to;
        bool drawn;
    } rows[] = {
        {{0, 0}, false},       {{RADIUS * std::sqrt(2.0), 0}, true},
        {{1e-320, 100}, true}, {{100, -1e-320}, true},
        {{1e6, -1e6}, true},   {{1e6 + 1, 0}, false},
        {{0, -1e300}, false},  {{INF, 0}, false},
        {{0, -INF}, false},    {{std::nan(""), 0}, false},
    };

    for (const auto& row : rows) {
        SCOPED_TRACE(testing::Message() << row.to.x() << ", " << row.to.y());
        const auto curve = ui::stroke_between(QPointF(0, 0), row.to, RADIUS);
        EXPECT_EQ(curve.has_value(), row.drawn);
        EXPECT_EQ(ui::stroke_between(row.to, QPointF(0, 0), RADIUS).has_value(), row.drawn);
        EXPECT_TRUE(!curve || (isFinite(curve->path()) &&
                               isFinite(ui::arrow_head(curve->path(), row.to, RADIUS))));
    }
}

} // namespace
