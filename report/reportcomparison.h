#pragma once

#include "report/reportfindings.h"
#include "report/reportstatistics.h"

#include <QString>
#include <QStringList>

#include <array>
#include <vector>

namespace report {

/// A group of recordings, as named on the command line: "BEFORE=a.json,b.json".
struct group {
    QString name;
    QStringList logs;
    int recordings = 0; ///< Once its logs are read.
};

using Groups = std::array<group, 2>;

/// In how many recordings of a log each of its patterns was found, key by key.
using RecordingsOf = std::vector<std::vector<int>>;

RecordingsOf recordings_of(const Log& log);

/// A pattern in two groups.
struct compared_pattern {
    found_pattern found; ///< In both groups together.
    std::array<statistics::share, 2> shares;
    statistics::interval interval; ///< Of the difference.
    double p = 1;
    double q = 1; ///< The p adjusted for as many tests as there are patterns.

    /// The second share less the first.
    double difference() const { return shares[1].value() - shares[0].value(); }
};

/// What differs between two groups of recordings: the patterns that are asked for, those with the
/// strongest evidence first.
class Comparison {
public:
    /// `findings`: of both groups put together, the first one first. `groups`: both with
    /// recordings. `inFirst`: of the first group by itself. `top`: how many patterns stay; 0 for
    /// all. The first two outlive the comparison.
    Comparison(const Findings& findings, const Groups& groups, const RecordingsOf& inFirst,
               int top);

    const Findings& findings() const { return mFindings; }

    const Groups& groups() const { return mGroups; }

    const std::vector<compared_pattern>& patterns() const { return mPatterns; }

    /// Only so many were asked for.
    bool isTop() const { return mIsTop; }

    /// As in "1,240 patterns, 37 of them shown".
    QString leftOut() const;

    /// What keeps the comparison from telling much.
    QStringList warnings() const;

private:
    compared_pattern compared(const found_pattern& found, int inFirst) const;
    void adjust();

    const Findings& mFindings;
    const Groups& mGroups;
    const bool mIsTop;
    std::vector<compared_pattern> mPatterns;
};

} // namespace report
