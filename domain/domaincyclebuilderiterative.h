#pragma once

#include "collections/recyclearray.h"
#include "domain/domainfind.h"
#include "domain/domainnest.h"
#include "domain/domainoccurrences.h"
#include "domain/domainrunhash.h"
#include "domain/domaintrace.h"

#include <vector>

namespace domain {

/// Finds the repeated runs of a trace: every run of events that leaves a branch and comes back to
/// it without passing through it in between, except through runs already found. Passes over growing
/// distances collapse each run found into one step, so that longer runs can hold shorter ones. Each
/// run is stored as a pattern on the branch where it starts and ends; menu branches store none.
///
/// Reused for every recording: call `begin` and, when it succeeded, `run()`. One thread.
class CycleBuilderIterative {
public:
    /// One trace position.
    struct Step {
        int mIndex = 0;  ///< The branch.
        int mLength = 1; ///< Trace positions that it stands for: 1, or the distance of its cycle.

        /// A step of length 1 at branch `index`.
        void begin(int index);
    };

    CycleBuilderIterative() = default;

    /// From now on each find is appended to `finds` as well, which is not owned; null for none.
    void noteFinds(std::vector<find>* finds) { mFinds = finds; }

    /// Prepares a run over `trace` whose patterns go to `nest`, which outlives the run. False when
    /// memory is exhausted.
    bool begin(Nest& nest, const Trace& trace);

    /// All passes, for distances from 2 to an eighth of the trace and at least to 4. None starts
    /// once 2000 ms have passed; the first always runs.
    void run();

    /// The pass for runs whose ends lie `distance` trace positions apart.
    void run(int distance);

    /// Whether the run between the trace positions `first` < `last` is a cycle.
    bool isCycle(int first, int last) const;

    /// Stores the run between two trace positions, both included, as a pattern of its branch.
    void addCycle(int first, int last);

private:
    void walk(int distance);
    int nextCycle(int first, int distance) const;
    bool isRecurrence(int first, int last) const;
    void collapse(int first, int last);
    bool hasIndices(int first, int last) const;

    Nest* mNest = nullptr;
    std::vector<find>* mFinds = nullptr;
    RecycleArray<Step> mSteps{1, nullptr};
    Pattern mPattern;          ///< Scratch: the run just found.
    SharedValues<int> mTrace;  ///< What the patterns found are pieces of.
    RunHash mHashes;           ///< Names a run without walking it.
    Occurrences mOccurrences;  ///< Collapsed steps are closed.
    bool mHasNegative = false; ///< The trace holds what is no branch index.

    // A walk that finds nothing leaves the longer distances the same way through the trace. What
    // they can find on it is known, so nothing is walked for the distances between these two.
    int mWalked = 0;   ///< The distance of the latest walk.
    int mNextFind = 0; ///< The least distance at which another walk may find something.

    // The steps' number and storage, taken in begin(), for the passes.
    int mStepCount = 0;
    Step* mFirstStep = nullptr;
};

} // namespace domain
