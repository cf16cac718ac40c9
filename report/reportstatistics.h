#pragma once

#include <vector>

/// How far two shares of recordings differ, and whether chance alone would do that. The formulae
/// and where they come from stand in docs/reporting.md.
namespace report::statistics {

/// So many of so many.
struct share {
    int hits = 0;
    int of = 0; ///< At least 1.

    double value() const { return static_cast<double>(hits) / of; }
};

struct interval {
    double low = 0;
    double high = 0;
};

/// Wilson's score interval of a share, of 95 %.
interval wilson(const share& share);

/// Newcombe's interval of the difference `b` - `a`, of 95 %, made of both shares' score intervals.
interval newcombe(const share& a, const share& b);

/// The p of Fisher's exact test, two-sided: the probability of all tables with the same sums that
/// are at most as likely as this one.
double fisher(const share& a, const share& b);

/// The p adjusted after Benjamini and Hochberg, in the order of those given: below q, at most that
/// share of what is called different is expected to be chance.
std::vector<double> benjamini_hochberg(const std::vector<double>& p);

} // namespace report::statistics
