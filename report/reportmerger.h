#pragma once

#include "report/reportlog.h"

#include <cstddef>
#include <unordered_map>
#include <vector>

namespace report {

/// Puts logs together: what comes out is what would have been found if all their recordings stood
/// in one log, in the order in which the logs were added. Throws `std::bad_alloc`.
///
/// A pattern's count is that of the first recording that has it, and one for each later one, so
/// each log that brings it again adds its recordings of it.
class Merger {
public:
    /// `whole` is as it was made, and outlives the merger.
    explicit Merger(Log& whole)
        : mWhole(whole) {}

    /// The patterns of `part` move, as they may be most of the memory: it is of no use any more.
    void add(Log& part);

    /// Completes the whole, which is named after the logs.
    void finish();

private:
    struct run_hash {
        std::size_t operator()(const domain::Pattern* pattern) const;
    };

    struct same_run {
        bool operator()(const domain::Pattern* a, const domain::Pattern* b) const {
            return a->isSameSequence(*b);
        }
    };

    void addTotals(const Log& part);
    void addKeys(const Log& part);
    void addEvents(int index, const domain::Branch& branch, const domain::key_figures& figures);
    void addFront(domain::PatternList& patterns, const domain::pattern_figures& figures);
    void renameIn(domain::Nest& nest) const;

    Log& mWhole;
    QStringList mNames;
    std::unordered_map<QString, int> mIndices;      ///< Of the whole's keys.
    std::vector<int> mPlaces;                       ///< Indices in the whole, by those in the part.
    bool mHasSameIndices = false;                   ///< They are equal.
    int mRecordingsBefore = 0;                      ///< Those of the parts before.
    domain::PatternList mMoving;                    ///< A pattern on its way.
    std::vector<domain::anchored_figures> mFigures; ///< In the order in which they were stored.

    /// The whole's patterns, by their sequences, with their positions in `mFigures`.
    std::unordered_map<domain::Pattern*, std::size_t, run_hash, same_run> mKnown;
};

} // namespace report
