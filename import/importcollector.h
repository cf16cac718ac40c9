#pragma once

#include "import/importevent.h"
#include "import/importkeytable.h"
#include "import/importlogwriter.h"
#include "import/importtally.h"

#include <cstdint>
#include <string_view>

namespace import {

/// How recordings and places come into the log.
struct collecting {
    /// One recording of all, with a press `(start)` in front of each.
    bool join = false;
    /// Keys without positions, or at 0, 0, get a cell of a grid each.
    bool grid = false;
};

/// Where the readers of all formats bring their events, one after the other: puts each through the
/// key rules, gives it a place if it is to have one, writes it and counts.
class Collector {
public:
    /// `keys` and `log` are not owned and outlive the collector.
    Collector(KeyTable& keys, LogWriter& log)
        : mKeys(keys)
        , mLog(log) {}

    /// Applies from the next recording on.
    void setCollecting(const collecting& how) { mHow = how; }

    /// What was begun before is ended.
    void beginRecording();
    void endRecording();

    /// An event whose key is empty, or longer than any name, is reported.
    void add(const event& event);

    /// A press where the source knows no release: both, at one place.
    void addPress(event event);

    /// Counts what is no press, release or choice, by its kind.
    void skip(std::string_view kind, std::int64_t times = 1) { mSkipped.count(kind, times); }

    /// Counts what should have become an event and could not, by the reason.
    void report(std::string_view reason, std::int64_t times = 1) { mReported.count(reason, times); }

    std::int64_t recordings() const { return mRecordings; }

    std::int64_t emptyRecordings() const { return mEmptyRecordings; }

    std::int64_t events() const { return mEvents; }

    const Tally& skipped() const { return mSkipped; }

    const Tally& reported() const { return mReported; }

private:
    void addStart(double time);
    void write(event event, key_entry& key);

    KeyTable& mKeys;
    LogWriter& mLog;
    collecting mHow;
    bool mIsOpen = false;
    bool mHasEvents = false;
    int mCells = 0;
    std::int64_t mRecordings = 0;
    std::int64_t mEmptyRecordings = 0;
    std::int64_t mEvents = 0;
    Tally mSkipped;
    Tally mReported;
};

} // namespace import
