#include "domain/domaincyclebuilderiterative.h"

#include <QElapsedTimer>

#include <algorithm>

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
    if (!mSteps.setSize(size))
        return false;
    mStepCount = size;
    mFirstStep = mSteps.data();
    mNest = &nest;
    for (int p = 0; p < size; ++p)
        mFirstStep[p].begin(trace.mIndices[p]);
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
        }
        i += length;
        j += length;
    }
}

bool CycleBuilderIterative::isCycle(int first, int last) const {
    const Step* steps = mFirstStep;
    const int index = steps[first].mIndex;
    if (steps[last].mIndex != index || steps[first + 1].mIndex == index ||
        steps[last - 1].mIndex == index)
        return false;
    int k = first + 1;
    while (k < last) {
        if (steps[k].mIndex != index)
            ++k;
        else if (steps[k].mLength > 1)
            k += steps[k].mLength;
        else
            return false;
    }
    return true;
}

void CycleBuilderIterative::addCycle(int first, int last) {
    Branch* branch = mNest->branchAt(mFirstStep[first].mIndex);
    if (branch && branch->mGesture != GESTURE_MENU && copyRun(first, last))
        branch->addPattern(mPattern);
}

/// Fills the scratch pattern. False when a step has no branch index or memory is exhausted.
bool CycleBuilderIterative::copyRun(int first, int last) {
    const int size = last - first + 1;
    mPattern.clear();
    if (!mPattern.mSequence.setSize(size))
        return false;
    int* entry = mPattern.mSequence.data();
    for (const Step* step = mFirstStep + first; step <= mFirstStep + last; ++step) {
        if (step->mIndex < 0)
            return false;
        *entry++ = step->mIndex;
    }
    return size >= 2;
}

} // namespace domain
