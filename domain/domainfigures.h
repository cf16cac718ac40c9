#pragma once

#include <array>
#include <vector>

namespace domain {

class Nest;

/// Where a run was found. Numbers count from 1; 0 stands for no place.
struct place {
    int recording = 0; ///< Among all recordings, in the order in which they end.
    int event = 0;     ///< The run's first one, among the recording's presses and menu choices.

    bool operator==(const place& other) const = default;
};

/// How often and where a pattern was found.
struct pattern_figures {
    int occurrences = 0;         ///< Finds in all recordings.
    int recordings = 0;          ///< Those in which it was found.
    std::array<place, 3> places; ///< The first ones.

    bool operator==(const pattern_figures& other) const = default;
};

/// How often a key was pressed or chosen.
struct key_figures {
    int events = 0;
    int recordings = 0; ///< Those in which it was.

    bool operator==(const key_figures& other) const = default;
};

/// Figures of a pattern that belongs to the branch `anchor`.
struct anchored_figures {
    pattern_figures figures;
    int anchor = 0;
    int latest = 0; ///< The recording that counted last, for whoever counts.
};

/// What a nest does not tell of the log that it holds.
struct Figures {
    std::vector<key_figures> keys;         ///< By branch index.
    std::vector<pattern_figures> patterns; ///< Those of each branch in turn, in its list's order.
};

/// The figures of the nest's patterns as `Figures` has them, of those in the order in which the
/// patterns were stored. Throws `std::bad_alloc`, also when a branch has another number of patterns
/// than were stored there: memory did not suffice for them.
std::vector<pattern_figures> in_nest_order(const std::vector<anchored_figures>& stored,
                                           const Nest& nest);

} // namespace domain
