#include "report/reportfound.h"

#include <algorithm>

namespace report {

int measured(const found_pattern& found, Measure measure) {
    switch (measure) {
    case Measure::Occurrences:
        return found.figures->occurrences;
    case Measure::Recordings:
        return found.figures->recordings;
    case Measure::Length:
        return found.pattern->mSequence.size();
    default:
        return found.pattern->mCount;
    }
}

Patterns sorted(Patterns patterns, Measure measure) {
    std::stable_sort(patterns.begin(), patterns.end(),
                     [=](const found_pattern& a, const found_pattern& b) {
                         return measured(a, measure) > measured(b, measure);
                     });
    return patterns;
}

} // namespace report
