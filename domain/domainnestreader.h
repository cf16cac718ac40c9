#pragma once

#include "domain/domainanalysisthread.h"
#include "domain/domainbranch.h"
#include "domain/domainkeytable.h"
#include "domain/domainnest.h"
#include "domain/domaintrace.h"
#include "json/jsonreader.h"

#include <QString>

#include <limits>
#include <memory>
#include <vector>

namespace domain {

/// Turns a trace log into a nest, as the parser reads it. Every JSON object is a recording and
/// every array member of it named "down", "up" or "menu" an event:
/// [anything, key, x, y]. A recording's events are collected in a nest and a trace of its own,
/// examined by the analysis stage at the object's end, and merged into the target by branch index.
/// Each distinct key gets the target's next free index at its first appearance.
///
/// A recording that is never closed leaves only its reserved slots in the target, and an object
/// nested in another one discards the outer object's events before it. What the reader cannot use
/// it drops in silence. One reader serves many parses, on one thread at a time.
class NestReader : public json::Reader {
public:
    /// `analysis` is not owned and not used before the first recording ends.
    explicit NestReader(Analysis& analysis);

    /// Prepares for a parse into `target`, which is not owned; the keys that it holds keep their
    /// indices. Always true.
    bool begin(Nest& target);

    void startObject(json::Stack& stack, const QString& key) override;
    void endObject(json::Stack& stack) override;
    void startArray(json::Stack& stack, const QString& key) override;
    void endArray(json::Stack& stack) override;
    void jsonString(json::Stack& stack, const QString& key, const QString& value) override;
    void jsonFloat(json::Stack& stack, const QString& key, double value) override;

    /// From `from` events on, recordings are analysed on another thread, while the next ones are
    /// read, if the analysis allows it; `finish` has to be called before the target is looked at.
    /// What waits from before is finished first.
    void analyseBeside(int from);

    /// For `analyseBeside`: all on the thread that reads, as it is without it.
    static constexpr int NEVER = std::numeric_limits<int>::max();

    /// Waits until all recordings that have ended are in the target. Throws what the analysis of
    /// one threw, as a callback would have.
    void finish();

    /// Recordings ended and events read since `begin`, "up" events included.
    int recordingCount() const { return mRecordingCount; }

    int eventCount() const { return mEventCount; }

    /// The keys of the target's slots, those of slots that are only reserved as well. Throws
    /// `std::bad_alloc`.
    std::vector<QString> keys() const;

    /// What an object of the log does, for logs of another form: after `begin`, each recording
    /// begins, is given its events with `addBranch` and ends.
    void beginRecording();

    void endRecording();

    /// Adds an event to the recording; one without gesture or key is dropped.
    void addBranch(const Branch& event);

    /// Analyses the recording and merges its branches into the target.
    void addNest();

private:
    int indexOf(const QString& key);
    bool addSlot();
    bool goesBeside();

    Nest* mTarget = nullptr;
    Analysis& mAnalysis;
    Nest mNest;     ///< The recording's branches, at their final indices.
    Trace mTrace;   ///< The recording's events without "up".
    Branch mBranch; ///< The event being read; may have the key of the one before.
    bool mHasKey = false;
    KeyTable mKeys; ///< Branch indices of the target's keys.
    int mRecordingCount = 0;
    int mEventCount = 0;
    int mBesideFrom = NEVER;
    int mSlots = 0;                          ///< Of the target, while that is another thread's.
    std::unique_ptr<AnalysisThread> mBeside; ///< Has the target and the analysis.
};

} // namespace domain
