#pragma once

#include "domain/domainbranch.h"
#include "domain/domainfigures.h"

#include <QString>

#include <vector>

namespace report {

/// A pattern with its figures; both belong to the log.
struct found_pattern {
    const domain::Pattern* pattern;
    const domain::pattern_figures* figures;
    std::vector<int> keys; ///< Where a loop that is listed once was found, first this key.
};

using Patterns = std::vector<found_pattern>;

/// What is reported of one key, which is one slot of the nest.
struct key_findings {
    int index;
    const domain::Branch* branch; ///< Never null; invalid for a slot without a key.
    const domain::key_figures* figures;
    Patterns patterns; ///< In the order in which they were found, or that was asked for.
};

/// What patterns are sorted by, the largest first.
enum class Measure { Count, Occurrences, Recordings, Length };

int measured(const found_pattern& found, Measure measure);

/// `patterns` by a measure, ties as they stand.
Patterns sorted(Patterns patterns, Measure measure);

} // namespace report
