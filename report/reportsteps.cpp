#include "report/reportsteps.h"

#include <algorithm>
#include <numeric>
#include <span>
#include <tuple>

namespace report {

namespace {

const domain::place& placeOf(const found_pattern& found) {
    return found.figures->places.front();
}

/// The patterns' positions, by where they were found.
std::vector<std::size_t> byPlace(const Patterns& patterns) {
    std::vector<std::size_t> order(patterns.size());
    std::iota(order.begin(), order.end(), 0);
    std::stable_sort(order.begin(), order.end(), [&](std::size_t a, std::size_t b) {
        const domain::place& one = placeOf(patterns[a]);
        const domain::place& other = placeOf(patterns[b]);
        return std::tie(one.recording, one.event) < std::tie(other.recording, other.event);
    });
    return order;
}

} // namespace

Steps::Steps(const Patterns& patterns)
    : first(patterns.size()) {
    domain::place begin; // of the last piece
    std::size_t at = 0;  // where it stands
    for (const std::size_t i : byPlace(patterns)) {
        const domain::place& place = placeOf(patterns[i]);
        const std::span<const int> run = patterns[i].pattern->run();
        std::size_t within = static_cast<std::size_t>(place.event - begin.event);
        if (place.recording != begin.recording || within >= all.size() - at) {
            begin = place;
            at = all.size();
            within = 0;
        }
        first[i] = static_cast<int>(at + within);
        const std::size_t known = std::min(all.size() - at - within, run.size());
        all.insert(all.end(), run.begin() + static_cast<std::ptrdiff_t>(known), run.end());
    }
}

} // namespace report
