#pragma once

#include "report/reportlog.h"

#include <QString>

#include <vector>

namespace report {

using Patterns = std::vector<const domain::Pattern*>;

/// What is reported of one key, which is one slot of the nest.
struct key_findings {
    int index;
    const domain::Branch* branch; ///< Never null; invalid for a slot without a key.
    Patterns patterns;            ///< In the order in which they were found.
};

/// What is reported of a log, whatever the format: its keys, its patterns and how many there are of
/// each. Refers to the log, which outlives it unchanged.
class Findings {
public:
    explicit Findings(const Log& log);

    const Log& log() const { return mLog; }

    /// Every slot, by index.
    const std::vector<key_findings>& keys() const { return mKeys; }

    /// The keys with patterns, highest rank first, ties by index.
    std::vector<const key_findings*> ranked() const;

    /// The key with this index, empty without one.
    QString keyAt(int index) const;

    int keyCount() const { return mKeyCount; }

    int patternCount() const { return mPatternCount; }

private:
    void add(int index, const domain::Branch& branch);

    const Log& mLog;
    std::vector<key_findings> mKeys;
    int mKeyCount = 0;
    int mPatternCount = 0;
};

/// `patterns`, most frequent first, ties as they stand.
Patterns most_frequent_first(Patterns patterns);

} // namespace report
