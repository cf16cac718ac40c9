#include "domain/domainanalysisthread.h"

#include <utility>

namespace domain {

void merge_recording(Analysis& analysis, Nest& nest, const Trace& trace, Nest& target) {
    analysis.on(nest, trace);
    for (const int i : nest.usedSlots()) {
        Branch* branch = nest.branchAt(i);
        if (!branch || branch->mGesture == GESTURE_NONE)
            continue;
        target.take(i, *branch);
        branch->mGesture = GESTURE_NONE;
    }
    nest.clear();
}

AnalysisThread::AnalysisThread(Analysis& analysis, Nest& target)
    : mAnalysis(analysis)
    , mTarget(target)
    , mThread([this] { run(); }) {}

AnalysisThread::~AnalysisThread() {
    {
        const std::lock_guard lock(mLock);
        mQuit = true;
    }
    mChanged.notify_one();
    mThread.join();
}

void AnalysisThread::add(Nest& nest, const Trace& trace, int slotCount) {
    const int events = trace.mIndices.size();
    std::unique_lock lock(mLock);
    if (!hasRoomFor(events))
        mChanged.wait(lock, [&] { return isReaderToGoOn(); });
    rethrow();
    recording& next = mRecordings[mAdded % MOST_WAITING];
    lock.unlock();
    next.nest.swap(nest);
    next.trace = trace;
    next.slotCount = slotCount;
    lock.lock();
    ++mAdded;
    mEvents += events;
    const bool mayWait = mAdded - mDone == 1;
    lock.unlock();
    if (mayWait)
        mChanged.notify_one();
}

void AnalysisThread::finish() {
    std::unique_lock lock(mLock);
    mChanged.wait(lock, [&] { return mDone == mAdded; });
    rethrow();
}

void AnalysisThread::makeSlots(int slotCount) {
    while (mTarget.size() < slotCount && mTarget.addSlot()) {
    }
}

bool AnalysisThread::hasRoomFor(int events) const {
    return mDone == mAdded || (mAdded - mDone < MOST_WAITING && mEvents < MOST_EVENTS - events);
}

/// Once the reader has to wait, half of the work is to be done first: each waiting costs time.
bool AnalysisThread::isReaderToGoOn() const {
    return mDone == mAdded || (mAdded - mDone <= MOST_WAITING / 2 && mEvents <= MOST_EVENTS / 2);
}

void AnalysisThread::run() {
    while (waitForRecording()) {
        recording& next = mRecordings[mDone % MOST_WAITING]; // only this thread changes mDone
        const int events = next.trace.mIndices.size();
        std::exception_ptr failure;
        try {
            merge(next);
        } catch (...) {
            failure = std::current_exception();
        }
        setDone(events, failure);
    }
}

/// False when there are no more.
bool AnalysisThread::waitForRecording() {
    std::unique_lock lock(mLock);
    mChanged.wait(lock, [&] { return mDone != mAdded || mQuit; });
    return mDone != mAdded;
}

/// After a failure the rest is dropped, as it would not have been read.
void AnalysisThread::merge(recording& next) {
    if (mFailure)
        return;
    makeSlots(next.slotCount);
    merge_recording(mAnalysis, next.nest, next.trace, mTarget);
}

void AnalysisThread::setDone(int events, std::exception_ptr failure) {
    bool goesOn = false;
    {
        const std::lock_guard lock(mLock);
        ++mDone;
        mEvents -= events;
        if (failure)
            mFailure = std::move(failure);
        goesOn = isReaderToGoOn();
    }
    if (goesOn)
        mChanged.notify_one();
}

void AnalysisThread::rethrow() {
    if (mFailure)
        std::rethrow_exception(mFailure);
}

} // namespace domain
