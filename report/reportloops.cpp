#include "report/reportloops.h"

#include <algorithm>
#include <span>
#include <tuple>
#include <unordered_map>

namespace report {

namespace {

/// The steps of a loop, each once, from the beginning that all its rotations have in common.
class Loop {
public:
    explicit Loop(const domain::Pattern& pattern)
        : mSteps(pattern.run().first(pattern.run().size() - 1))
        , mBegin(leastRotation()) {}

    std::size_t size() const { return mSteps.size(); }

    /// The step at position `at`, below twice the size.
    int operator[](std::size_t at) const { return step(mBegin + at); }

    bool operator==(const Loop& other) const {
        if (size() != other.size())
            return false;
        for (std::size_t at = 0; at < size(); ++at) {
            if ((*this)[at] != other[at])
                return false;
        }
        return true;
    }

private:
    int step(std::size_t at) const {
        while (at >= size())
            at -= size();
        return mSteps[at];
    }

    /// Where the rotation begins that is least of all in the order of its steps. Two candidates
    /// race; the one that loses at some step loses with all beginnings up to there.
    std::size_t leastRotation() const {
        std::size_t a = 0;
        std::size_t b = 1;
        std::size_t same = 0;
        while (a < size() && b < size() && same < size()) {
            const int ofA = step(a + same);
            const int ofB = step(b + same);
            if (ofA == ofB) {
                ++same;
                continue;
            }
            (ofA > ofB ? a : b) += same + 1;
            b += a == b ? 1 : 0;
            same = 0;
        }
        return std::min(a, b);
    }

    std::span<const int> mSteps;
    std::size_t mBegin;
};

struct loop_hash {
    std::size_t operator()(const Loop& loop) const {
        std::size_t hash = loop.size();
        for (std::size_t at = 0; at < loop.size(); ++at)
            hash = (hash ^ static_cast<std::size_t>(loop[at])) * 0x9e3779b97f4a7c15U;
        return hash ^ hash >> 32;
    }
};

/// Where a loop was found.
struct sighting {
    found_pattern leader;
    std::vector<int> keys;
};

auto rankOf(const found_pattern& found) {
    return std::make_tuple(found.figures->recordings, found.figures->occurrences,
                           found.pattern->mCount);
}

using Sightings = std::unordered_map<Loop, sighting, loop_hash>;

Sightings collect(const std::vector<key_findings>& keys) {
    Sightings sightings;
    for (const key_findings& key : keys) {
        for (const found_pattern& found : key.patterns) {
            sighting& seen =
                sightings.try_emplace(Loop(*found.pattern), sighting{found, {}}).first->second;
            if (rankOf(found) > rankOf(seen.leader))
                seen.leader = found;
            seen.keys.push_back(key.index);
        }
    }
    return sightings;
}

/// First the key at which the leader was found; each key once, as a loop may pass it twice.
std::vector<int> keysOf(const sighting& seen) {
    std::vector<int> keys{seen.leader.pattern->mSequence[0]};
    for (const int key : seen.keys) {
        if (std::find(keys.begin(), keys.end(), key) == keys.end())
            keys.push_back(key);
    }
    return keys;
}

} // namespace

void list_loops_once(std::vector<key_findings>& keys) {
    const Sightings sightings = collect(keys);
    for (key_findings& key : keys) {
        Patterns once;
        for (const found_pattern& found : key.patterns) {
            const sighting& seen = sightings.at(Loop(*found.pattern));
            if (seen.leader.pattern == found.pattern)
                once.push_back({found.pattern, found.figures, keysOf(seen)});
        }
        key.patterns = std::move(once);
    }
}

} // namespace report
