#include "report/reportstatistics.h"

#include <gtest/gtest.h>

namespace {

using namespace report::statistics;

TEST(Statistics, NewcombesIntervalsAreThoseOfHisTable) {
    // Method 10 of table II in "Interval estimation for the difference between independent
    // proportions", Statistics in Medicine 17, 1998. His difference is the first less the second.
    const struct {
        share first;
        share second;
        interval published;
    } rows[] = {
        {{56, 70}, {48, 80}, {0.0524, 0.3339}}, {{9, 10}, {3, 10}, {0.1705, 0.8090}},
        {{6, 7}, {2, 7}, {0.0582, 0.8062}},     {{5, 56}, {0, 29}, {-0.0381, 0.1926}},
        {{0, 10}, {0, 20}, {-0.1611, 0.2775}},  {{0, 10}, {0, 10}, {-0.2775, 0.2775}},
        {{10, 10}, {0, 20}, {0.6791, 1.0000}},  {{10, 10}, {0, 10}, {0.6075, 1.0000}},
    };

    for (const auto& row : rows) {
        const interval found = newcombe(row.second, row.first);
        EXPECT_NEAR(found.low, row.published.low, 5e-5);
        EXPECT_NEAR(found.high, row.published.high, 5e-5);
    }
}

TEST(Statistics, FishersTestGivesPublishedValues) {
    const struct {
        share a;
        share b;
        double p;
    } rows[] = {
        {{3, 4}, {1, 4}, 0.485714},      // his lady tasting tea
        {{2, 17}, {10, 13}, 0.00053672}, // his convictions of twins
        {{0, 9}, {0, 4}, 1},
        {{300'000, 600'000}, {0, 600'000}, 0}, // the least weights are no numbers any more
    };

    for (const auto& row : rows) {
        EXPECT_NEAR(fisher(row.a, row.b), row.p, 1e-6);
        EXPECT_NEAR(fisher(row.b, row.a), row.p, 1e-6);
    }
}

TEST(Statistics, AdjustsAsBenjaminiAndHochbergDo) {
    // The 15 values of their paper, Journal of the Royal Statistical Society B 57, 1995: four of
    // them stay below 0.05.
    const std::vector<double> p{1.0,    0.0001, 0.0004, 0.0019, 0.0095, 0.0201, 0.0278, 0.0298,
                                0.0344, 0.0459, 0.3240, 0.4262, 0.5719, 0.6528, 0.7590};
    const std::vector<double> q = benjamini_hochberg(p);
    EXPECT_NEAR(q[1], 0.0015, 1e-9);
    EXPECT_NEAR(q[4], 0.035625, 1e-9);
    EXPECT_NEAR(q[5], 0.0603, 1e-9);
    EXPECT_NEAR(q[6], 0.0638571, 1e-6); // that of the next one, as that is less
    EXPECT_EQ(q[0], 1);
}

} // namespace
