#pragma once

#include "report/reportlog.h"
#include "report/reportquestion.h"

#include <QString>

#include <vector>

namespace report {

/// What is reported of a log, whatever the format: its keys, and of its patterns those that are
/// asked for. Refers to the log, which outlives it unchanged.
class Findings {
public:
    explicit Findings(const Log& log, const question& question = {});

    const Log& log() const { return mLog; }

    /// Every slot, by index.
    const std::vector<key_findings>& keys() const { return mKeys; }

    /// The keys with patterns, by their largest one in the order that is asked for, ties by index.
    std::vector<const key_findings*> ranked() const;

    /// All patterns, key by key, or in the order that is asked for.
    Patterns patterns() const;

    /// What patterns are sorted by where they are sorted.
    Measure order() const { return order_of(mQuestion); }

    /// The key with this index, empty without one.
    QString keyAt(int index) const;

    int keyCount() const { return mKeyCount; }

    /// How many patterns were found.
    int patternCount() const { return mPatternCount; }

    /// How many of them are reported.
    int shownCount() const;

    const question& asked() const { return mQuestion; }

private:
    void add(int index, const domain::Branch& branch);

    const Log& mLog;
    const question mQuestion;
    std::vector<key_findings> mKeys;
    int mKeyCount = 0;
    int mPatternCount = 0;
};

/// As in "1,240 patterns, 37 of them shown".
QString left_out(int patterns, int shown);

/// The keys of a pattern with " > " between them.
QString joined_keys(const Findings& findings, const domain::Pattern& pattern);

/// The pattern that is reported with these keys, as `joined_keys` has them; null without one.
/// Belongs to `findings`.
const found_pattern* find_pattern(const Findings& findings, const QString& keys);

} // namespace report
