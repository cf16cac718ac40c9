#include "math/mathdefs.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>
#include <utility>

namespace {

constexpr double INF = std::numeric_limits<double>::infinity();
constexpr double NOT_A_NUMBER = std::numeric_limits<double>::quiet_NaN();
constexpr double TINY = std::numeric_limits<double>::denorm_min();
constexpr double HUGE_PX = std::numeric_limits<double>::max();

TEST(Mathdefs, DegreeGrowsClockwiseFromTheRight) {
    struct {
        double dx, dy, degree;
    } const rows[] = {{0, 0, 0},
                      {1, 0, 0},
                      {1, 1, 45},
                      {0, 1, 90},
                      {-1, 1, 135},
                      {-1, 0, 180},
                      {-1, -1, 225},
                      {0, -1, 270},
                      {1, -1, 315},
                      {3, -0.0, 0},
                      {8, -TINY, 0},
                      {-8, -TINY, 180},
                      {TINY, HUGE_PX, 90},
                      {-TINY, -HUGE_PX, 270},
                      {HUGE_PX, -HUGE_PX, 315}};

    for (const auto& row : rows) {
        SCOPED_TRACE(testing::Message() << row.dx << ", " << row.dy);
        const double degree = math::degree(row.dx, row.dy);
        EXPECT_LT(degree, 360);
        EXPECT_NEAR(std::remainder(degree - row.degree, 360), 0, 1e-6);
    }
}

TEST(Mathdefs, DegreeIsTheArcTangentOfAnyFiniteVector) {
    std::mt19937 random(301);
    std::uniform_real_distribution<double> exponent(-150, 150);
    const auto component = [&] { return (random() % 2 ? 1 : -1) * std::pow(10, exponent(random)); };
    for (int i = 0; i < 10'000; ++i) {
        const double dx = component(), dy = component();
        const double degree = math::degree(dx, dy);
        ASSERT_TRUE(degree >= 0 && degree < 360) << dx << ", " << dy;
        const double exact = std::atan2(dy, dx) * math::RTOD;
        ASSERT_NEAR(std::remainder(degree - exact, 360), 0, 1e-6) << dx << ", " << dy;
    }
}

TEST(MathdefsDeathTest, DegreeOfNoNumberNamesItsCondition) {
    EXPECT_DEATH(math::degree(NOT_A_NUMBER, 1),
                 "Quillon/math/mathdefs.*degree.*degree >= 0 && degree < 361");
}

TEST(Mathdefs, PointOnASlopeMovesTowardLargerY) {
    const double root = std::sqrt(2.0);

    struct {
        double slope, dist, x, y;
    } const rows[] = {{1, root, 6, 6},    {1, -root, 4, 4},   {-1, root, 4, 6}, {0, 3, 8, 5},
                      {0, -3, 2, 5},      {-0.0, -3, 2, 5},   {0.75, 5, 9, 8},  {INF, -3, 5, 2},
                      {1e-200, -3, 2, 5}, {-1e-200, 3, 2, 5}, {-1e200, 3, 5, 8}};

    for (const auto& row : rows) {
        SCOPED_TRACE(testing::Message() << "slope " << row.slope << " dist " << row.dist);
        double x = 0, y = 0;
        math::new_pt_on_line(5, 5, row.slope, row.dist, x, y);
        EXPECT_NEAR(x, row.x, 1e-12);
        EXPECT_NEAR(y, row.y, 1e-12);
    }
}

TEST(Mathdefs, PointsBetweenTwoStartFromTheFirst) {
    double x = 0, y = 0;
    math::new_pt_on_line(1, 2, 4, 6, 10, x, y);
    EXPECT_EQ(std::pair(x, y), std::pair(7.0, 10.0));
    math::new_pt_on_line(1, 2, 4, 6, -5, x, y);
    EXPECT_EQ(std::pair(x, y), std::pair(-2.0, -2.0));
    math::interp(4, 6, 2, 16, 0.25, x, y);
    EXPECT_EQ(std::pair(x, y), std::pair(3.5, 8.5));
}

TEST(Mathdefs, CircleEdgeTurnsByTheShortConstant) {
    double x = 0, y = 0;
    math::circle_edge(0, 0, 90, 10, x, y);
    EXPECT_DOUBLE_EQ(x, std::cos(1.570770) * 10);
    EXPECT_DOUBLE_EQ(y, std::sin(1.570770) * 10);
}

} // namespace
