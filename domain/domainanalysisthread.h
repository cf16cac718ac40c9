#pragma once

#include "domain/domainanalysis.h"
#include "domain/domainnest.h"
#include "domain/domaintrace.h"

#include <array>
#include <condition_variable>
#include <exception>
#include <mutex>
#include <thread>

namespace domain {

/// Has `analysis` examine a recording, whose branches then move into `target`; `nest` is empty
/// afterwards.
void merge_recording(Analysis& analysis, Nest& nest, const Trace& trace, Nest& target);

/// Analyses and merges recordings, in their order, on a thread of its own, while the next ones are
/// read. All operations are for the thread that reads; analysis and target are the other's from the
/// first recording until `finish` or the destructor, which waits too.
class AnalysisThread {
public:
    /// Neither is owned. Throws `std::system_error` when no thread can be started.
    AnalysisThread(Analysis& analysis, Nest& target);

    AnalysisThread(const AnalysisThread&) = delete;
    AnalysisThread& operator=(const AnalysisThread&) = delete;
    ~AnalysisThread();

    /// Takes the branches of `nest`, which is empty afterwards, and a copy of the trace. The target
    /// has at least `slotCount` slots before they are merged. Waits while much is waiting. Throws
    /// what the analysis of an earlier recording has thrown; this one is lost then.
    void add(Nest& nest, const Trace& trace, int slotCount);

    /// Waits until all is merged. Throws as `add`.
    void finish();

    /// Gives the target at least `slotCount` slots, once all is merged.
    void makeSlots(int slotCount);

private:
    struct recording {
        Nest nest;
        Trace trace;
        int slotCount = 0;
    };

    // Short recordings wait in some number, so that one long analysis does not stop the reading;
    // of long ones only a few do.
    static constexpr unsigned MOST_WAITING = 16;
    static constexpr int MOST_EVENTS = 1 << 16;

    bool hasRoomFor(int events) const;
    bool isReaderToGoOn() const;
    void run();
    bool waitForRecording();
    void merge(recording& next);
    void setDone(int events, std::exception_ptr failure);
    void rethrow();

    Analysis& mAnalysis;
    Nest& mTarget;

    // Those from mDone to mAdded, by their numbers modulo the size, are the thread's; the others
    // the reader's.
    std::array<recording, MOST_WAITING> mRecordings;

    std::mutex mLock; // guards what follows
    std::condition_variable mChanged;
    unsigned mAdded = 0;
    unsigned mDone = 0;
    int mEvents = 0; ///< Of the recordings that wait.
    bool mQuit = false;
    std::exception_ptr mFailure;

    std::thread mThread;
};

} // namespace domain
