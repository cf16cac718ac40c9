#include "domain/domaincyclebuilderiterative.h"

#include <QElapsedTimer>

#include <algorithm>
#include <span>

namespace domain {

namespace {

constexpr int FIRST_DISTANCE = 2;
constexpr int LEAST_LIMIT = 5;
constexpr int BUDGET_MS = 2000;

} // namespace

void CycleBuilderIterative::Step::begin(int index) {
    mIndex = index;
    mLength = 1;
}

bool CycleBuilderIterative::begin(Nest& nest, const Trace& trace) {
    const int size = trace.mIndices.size();
    mSteps.setSize(0);
    if (!mSteps.setSize(size) || !mIndices.setTo(trace.mIndices))
        return false;
    const std::span<const int> indices(mIndices.data(), static_cast<std::size_t>(size));
    if (!mHashes.begin(indices) || !mOccurrences.begin(indices))
        return false;
    mStepCount = size;
    mFirstStep = mSteps.data();
    mNest = &nest;
    mHasNegative = false;
    for (int p = 0; p < size; ++p) {
        mFirstStep[p].begin(mIndices[p]);
        mHasNegative = mHasNegative || mIndices[p] < 0;
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
    int i = 0;
    int j = distance;
    while (j < mStepCount) {
        // The jump is by the length from before this pass, so that overlapping cycles of one
        // distance are all found.
        const int length = mFirstStep[i].mLength;
        if (mFirstStep[i].mIndex == mFirstStep[j].mIndex && isCycle(i, j)) {
            addCycle(i, j);
            mFirstStep[i].mLength = distance;
            mOccurrences.close(i);
        }
        i += length;
        j += length;
    }
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
    const std::span<const int> run(mIndices.data() + first, mIndices.data() + last + 1);
    branch->mPatterns.merge(run, mHashes.of(first, last));
}

/// Whether all entries of the run are branch indices.
bool CycleBuilderIterative::hasIndices(int first, int last) const {
    return !mHasNegative || std::all_of(mIndices.data() + first, mIndices.data() + last + 1,
                                        [](int index) { return index >= 0; });
}

} // namespace domain
