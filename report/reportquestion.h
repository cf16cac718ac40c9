#pragma once

#include "report/reportfound.h"

#include <QRegularExpression>

#include <limits>
#include <optional>
#include <vector>

namespace report {

struct Log;

/// Which patterns of a log are asked for. As it is made, all.
struct question {
    int minCount = 0;
    int minOccurrences = 0;
    double minRecordings = 0;
    bool ofAll = false; ///< `minRecordings` are percents of the log's recordings.
    int minLength = 0;
    int maxLength = std::numeric_limits<int>::max();
    std::vector<QRegularExpression> through; ///< A pattern has a key for each of them.
    bool loopsOnce = false; ///< Of sequences that are equal up to rotation only one.
    std::optional<Measure> sort;
    int top = 0; ///< So many by the order of `sort`, or else by count; 0 for all.
};

/// Whether anything is asked, or left out.
bool is_asked(const question& question);

/// Whether an order is asked for, by itself or to take the first.
bool is_sorted(const question& question);

/// What patterns are sorted by, which is their count unless something else is asked for.
Measure order_of(const question& question);

/// Leaves of the keys' patterns, all those of a log, what `question` asks for. They are filtered
/// first, then loops are listed once, then they are sorted, and then the first are taken. Without
/// an order in the question they stay as they stand.
void choose(const question& question, const Log& log, std::vector<key_findings>& keys);

} // namespace report
