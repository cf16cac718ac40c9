#pragma once

#include "report/reportfound.h"

#include <vector>

namespace report {

/// The sequences of patterns, compactly: those that were found in the same part of a recording are
/// one piece of it, as patterns overlap a lot.
struct Steps {
    /// Takes the patterns where each was found first.
    explicit Steps(const Patterns& patterns);

    std::vector<int> all;   ///< Key indices: the pieces, one behind the other.
    std::vector<int> first; ///< Of each pattern, where in `all` its sequence begins.
};

} // namespace report
