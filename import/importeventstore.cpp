#include "import/importeventstore.h"

#include <queue>

#include <algorithm>
#include <tuple>

namespace import {

namespace {

constexpr std::size_t MOST_HELD = 400'000; // events
constexpr std::size_t READ_AHEAD = 2'000;  // events of a run

} // namespace

/// A sorted part of the temporary file.
class EventStore::Run {
public:
    Run(QTemporaryFile& file, qint64 from, qint64 to)
        : mFile(&file)
        , mFrom(from)
        , mTo(to) {}

    /// The event at hand; null at the end or a fault.
    const stored* peek() {
        if (mAt == mAhead.size())
            readAhead();
        return mAt < mAhead.size() ? &mAhead[mAt] : nullptr;
    }

    void next() { ++mAt; }

    bool isRead() const { return mFrom == mTo; }

private:
    void readAhead() {
        constexpr auto SIZE = static_cast<qint64>(sizeof(stored));
        const qint64 bytes = std::min(mTo - mFrom, static_cast<qint64>(READ_AHEAD) * SIZE);
        mAt = 0;
        mAhead.resize(static_cast<std::size_t>(bytes / SIZE));
        if (bytes > 0 && mFile->seek(mFrom) &&
            mFile->read(reinterpret_cast<char*>(mAhead.data()), bytes) == bytes)
            mFrom += bytes;
        else
            mAhead.clear();
    }

    QTemporaryFile* mFile;
    qint64 mFrom;
    qint64 mTo;
    std::vector<stored> mAhead;
    std::size_t mAt = 0;
};

bool EventStore::add(std::string_view recording, double order, const event& event) {
    mEvents.push_back({mRecordings.numberOf(recording), mKeys.numberOf(event.key), order,
                       event.time, event.at.value_or(place()), event.gesture, event.named,
                       event.at.has_value()});
    return mEvents.size() < MOST_HELD || spill();
}

bool EventStore::isBefore(const stored& a, const stored& b) {
    return std::tie(a.recording, a.order) < std::tie(b.recording, b.order);
}

bool EventStore::spill() {
    if (!mFile) {
        mFile = std::make_unique<QTemporaryFile>();
        if (!mFile->open())
            return false;
    }
    std::stable_sort(mEvents.begin(), mEvents.end(), isBefore);
    mRuns.push_back(mFile->pos());
    const qint64 bytes = static_cast<qint64>(mEvents.size()) * static_cast<qint64>(sizeof(stored));
    const bool isWritten =
        mFile->write(reinterpret_cast<const char*>(mEvents.data()), bytes) == bytes;
    mEvents.clear();
    return isWritten;
}

bool EventStore::tell(Collector& into) {
    if (mFile && !spill())
        return false;
    std::stable_sort(mEvents.begin(), mEvents.end(), isBefore);
    for (const stored& event : mEvents)
        tellOne(event, into);
    const bool isTold = !mFile || (mFile->flush() && tellRuns(into));
    into.endRecording();
    return isTold;
}

/// Merges the runs of the file.
bool EventStore::tellRuns(Collector& into) {
    std::vector<Run> runs;
    for (std::size_t i = 0; i < mRuns.size(); ++i)
        runs.emplace_back(*mFile, mRuns[i], i + 1 < mRuns.size() ? mRuns[i + 1] : mFile->size());
    // The first of all that come next; of equal ones that of the earlier run.
    const auto comesLater = [&](std::size_t a, std::size_t b) {
        if (isBefore(*runs[b].peek(), *runs[a].peek()))
            return true;
        return !isBefore(*runs[a].peek(), *runs[b].peek()) && a > b;
    };
    std::priority_queue<std::size_t, std::vector<std::size_t>, decltype(comesLater)> next(
        comesLater);
    for (std::size_t i = 0; i < runs.size(); ++i) {
        if (runs[i].peek())
            next.push(i);
    }
    while (!next.empty()) {
        const std::size_t run = next.top();
        next.pop();
        tellOne(*runs[run].peek(), into);
        runs[run].next();
        if (runs[run].peek())
            next.push(run);
    }
    return std::all_of(runs.begin(), runs.end(), [](const Run& run) { return run.isRead(); });
}

void EventStore::tellOne(const stored& from, Collector& into) {
    if (from.recording != mLast)
        into.beginRecording();
    mLast = from.recording;
    event event{from.gesture, mKeys[from.key], from.named, from.time, {}};
    if (from.hasPlace)
        event.at = from.at;
    into.add(event);
}

} // namespace import
