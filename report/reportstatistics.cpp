#include "report/reportstatistics.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <numeric>

namespace report::statistics {

namespace {

constexpr double Z = 1.959963984540054; // of the normal distribution, 97.5 %

/// Tables as likely as this one differ in rounding.
constexpr double AS_LIKELY = 1 + 1e-7;

double squared(double value) {
    return value * value;
}

/// The numbers of hits that the first share can have, given the sums of a table, and how likely
/// each is.
class Tables {
public:
    Tables(int of, int all, int hits)
        : mOf(of)
        , mAll(all)
        , mHits(hits)
        , mFirst(std::max(0, hits - (all - of))) {
        const int last = std::min(hits, of);
        mWeights.resize(static_cast<std::size_t>(last) + 1 - static_cast<std::size_t>(mFirst));
        // From the likeliest one on, so that what is too small for a number does not matter.
        const double likeliest = (hits + 1.0) * (of + 1.0) / (all + 2.0);
        const int middle = std::clamp(static_cast<int>(likeliest), mFirst, last);
        weight(middle) = 1;
        for (int x = middle; x < last; ++x)
            weight(x + 1) = weight(x) * step(x);
        for (int x = middle; x > mFirst; --x)
            weight(x - 1) = weight(x) / step(x - 1);
    }

    double atMostAsLikelyAs(int x) {
        double sum = 0;
        for (const double other : mWeights)
            sum += other <= weight(x) * AS_LIKELY ? other : 0;
        return std::min(1.0, sum / std::accumulate(mWeights.begin(), mWeights.end(), 0.0));
    }

private:
    double& weight(int x) { return mWeights[static_cast<std::size_t>(x - mFirst)]; }

    /// How many times as likely `x` + 1 is.
    double step(int x) const {
        return static_cast<double>(mHits - x) * (mOf - x) /
               ((x + 1.0) * (mAll - mOf - mHits + x + 1.0));
    }

    int mOf;
    int mAll;
    int mHits;
    int mFirst;
    std::vector<double> mWeights;
};

} // namespace

interval wilson(const share& share) {
    const double n = share.of;
    const double p = share.value();
    const double middle = 2 * share.hits + squared(Z);
    const double reach = Z * std::sqrt(squared(Z) + 4 * n * p * (1 - p));
    const double whole = 2 * (n + squared(Z));
    return {(middle - reach) / whole, (middle + reach) / whole};
}

interval newcombe(const share& a, const share& b) {
    const interval ofA = wilson(a);
    const interval ofB = wilson(b);
    const double difference = b.value() - a.value();
    const double below = std::hypot(b.value() - ofB.low, ofA.high - a.value());
    const double above = std::hypot(ofB.high - b.value(), a.value() - ofA.low);
    return {difference - below, difference + above};
}

double fisher(const share& a, const share& b) {
    return Tables(a.of, a.of + b.of, a.hits + b.hits).atMostAsLikelyAs(a.hits);
}

std::vector<double> benjamini_hochberg(const std::vector<double>& p) {
    std::vector<std::size_t> largestFirst(p.size());
    std::iota(largestFirst.begin(), largestFirst.end(), std::size_t(0));
    std::sort(largestFirst.begin(), largestFirst.end(),
              [&](std::size_t a, std::size_t b) { return p[a] > p[b]; });
    std::vector<double> adjusted(p.size());
    const auto all = static_cast<double>(p.size());
    double least = 1;
    double rank = all;
    for (const std::size_t i : largestFirst) {
        least = std::min(least, p[i] * all / rank--);
        adjusted[i] = least;
    }
    return adjusted;
}

} // namespace report::statistics
