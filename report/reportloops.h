#pragma once

#include "report/reportfound.h"

#include <vector>

namespace report {

/// Leaves of the patterns that are the same loop, equal but for where they begin, the one that was
/// found in most recordings; of several the one with most occurrences, then with the highest count,
/// then the first. It gets the keys of all of them.
void list_loops_once(std::vector<key_findings>& keys);

} // namespace report
