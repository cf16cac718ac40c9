#include "domain/domaincyclebuilderiterative.h"

#include <QElapsedTimer>

#include <algorithm>
#include <limits>
#include <span>

namespace domain {

namespace {

constexpr int FIRST_DISTANCE = 2;
constexpr int LEAST_LIMIT = 5;
constexpr int BUDGET_MS = 2000;
constexpr int LONGEST_LOOK = 16; ///< Occurrences that are looked at for the next cycle of a step.

} // namespace

void CycleBuilderIterative::Step::begin(int index) {
    mIndex = index;
    mLength = 1;
}

bool CycleBuilderIterative::begin(Nest& nest, const Trace& trace) {
    const int size = trace.mIndices.size();
    const std::span<const int> indices(trace.mIndices.data(), static_cast<std::size_t>(size));
    mPattern.clear(); // it may be all that holds on to the last trace
    mSteps.setSize(0);
    if (!mSteps.setSize(size) || !mTrace.setTo(indices))
        return false;
    if (!mHashes.begin(indices) || !mOccurrences.begin(indices))
        return false;
    mStepCount = size;
    mFirstStep = mSteps.data();
    mNest = &nest;
    mNextFind = 0;
    mHasNegative = false;
    Step* step = mFirstStep;
    for (const int index : indices) {
        step++->begin(index);
        mHasNegative = mHasNegative || index < 0;
    }
    return true;
}

void CycleBuilderIterative::run() {
    const int limit = std::max(mStepCount / 8, LEAST_LIMIT);
    QElapsedTimer timer;
    timer.start();
    for (int distance = FIRST_DISTANCE; distance < limit; ++distance) {
        run(distance);
        if (timer.elapsed() > BUDGET_MS)
            return;
    }
}

void CycleBuilderIterative::run(int distance) {
    if (distance <= mWalked || distance >= mNextFind)
        walk(distance);
}

/// A pass from step to step.
void CycleBuilderIterative::walk(int distance) {
    const int next = distance + 1;
    mWalked = distance;
    mNextFind = mStepCount;
    int i = 0;
    int j = distance;
    while (j < mStepCount) {
        // The jump is by the length from before this pass, so that overlapping cycles of one
        // distance are all found.
        const int length = mFirstStep[i].mLength;
        if (isRecurrence(i, j) && isCycle(i, j)) {
            collapse(i, j);
            mNextFind = next; // the steps lead elsewhere from now on
        } else if (mNextFind > next) {
            mNextFind = std::min(mNextFind, nextCycle(i, distance) - i);
        }
        i += length;
        j += length;
    }
}

/// Where the shortest cycle from `first` ends that is longer than `distance`, if nothing else is
/// found before; perhaps too early a place. Far away when there is none.
int CycleBuilderIterative::nextCycle(int first, int distance) const {
    constexpr int NEVER = std::numeric_limits<int>::max();
    const int index = mFirstStep[first].mIndex;
    if (mFirstStep[first + 1].mIndex == index)
        return NEVER;
    int last = mOccurrences.next(first);
    for (int look = 0; look < LONGEST_LOOK; ++look) {
        if (last >= mStepCount)
            return NEVER;
        if (last > first + distance && mFirstStep[last - 1].mIndex != index)
            return last;
        if (mOccurrences.isOpen(last)) // no cycle leads past it
            return NEVER;
        last = mOccurrences.next(last);
    }
    return first + distance + 1;
}

bool CycleBuilderIterative::isRecurrence(int first, int last) const {
    return mFirstStep[first].mIndex == mFirstStep[last].mIndex;
}

/// Stores a cycle; its first step now stands for all of it.
void CycleBuilderIterative::collapse(int first, int last) {
    addCycle(first, last);
    mFirstStep[first].mLength = last - first;
    mOccurrences.close(first);
}

bool CycleBuilderIterative::isCycle(int first, int last) const {
    const int index = mFirstStep[first].mIndex;
    if (mFirstStep[last].mIndex != index || mFirstStep[first + 1].mIndex == index ||
        mFirstStep[last - 1].mIndex == index)
        return false;
    // The index may recur inside only where a cycle begins. That cycle leads to its next
    // occurrence, and what it jumps over was closed when it was found itself: so all are closed.
    return mOccurrences.nextOpen(first) >= last;
}

void CycleBuilderIterative::addCycle(int first, int last) {
    Branch* branch = mNest->branchAt(mFirstStep[first].mIndex);
    if (!branch || branch->mGesture == GESTURE_MENU || last <= first || !hasIndices(first, last))
        return;
    mPattern.mSequence.referTo(mTrace, first, last - first + 1);
    branch->mPatterns.add(mPattern, mHashes.of(first, last));
    if (mFinds)
        mFinds->push_back({first, mHashes.wholeOf(first, last)});
}

/// Whether all entries of the run are branch indices.
bool CycleBuilderIterative::hasIndices(int first, int last) const {
    return !mHasNegative || std::all_of(mTrace.data() + first, mTrace.data() + last + 1,
                                        [](int index) { return index >= 0; });
}

} // namespace domain
