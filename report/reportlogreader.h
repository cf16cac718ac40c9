#pragma once

#include "domain/domainnestreader.h"

#include <vector>

namespace report {

/// Reads a log as the window does, and keeps account of its brackets: the parser accepts any, and
/// tells its reader of each that it opens and closes.
class LogReader : public domain::NestReader {
public:
    using NestReader::NestReader;

    void startObject(json::Stack& stack, const QString& key) override;
    void endObject(json::Stack& stack) override;
    void startArray(json::Stack& stack, const QString& key) override;
    void endArray(json::Stack& stack) override;

    /// The number among all recordings, from 1, of that with this number among those that have
    /// events.
    int recordingOf(int analysed) const {
        return mAnalysed[static_cast<std::size_t>(analysed - 1)];
    }

    /// Objects that were closed by a brace of their own.
    int recordings() const { return mRecordings; }

    /// Objects and arrays that stand in no other.
    int documents() const { return mDocuments; }

    bool isOpen() const { return !mOpen.empty(); }

    /// An object is open, at whatever depth.
    bool isInRecording() const { return mOpenObjects > 0; }

    /// A bracket was closed by one of the other kind.
    bool hasMismatch() const { return mHasMismatch; }

    /// A closing bracket found none to close.
    bool hasStray() const { return mHasStray; }

    /// The most events between the beginnings of two objects.
    int longestRun() const { return mLongestRun; }

private:
    void open(bool object);
    void close(bool object);

    std::vector<bool> mOpen; ///< Of each open bracket, outermost first, whether it is an object.
    qint64 mOpenObjects = 0;
    int mRecordings = 0;
    int mDocuments = 0;
    int mEventsBefore = 0;      ///< Those of the objects before.
    int mEventsAnalysed = 0;    ///< Those that no recording has any more, once it began or ended.
    std::vector<int> mAnalysed; ///< The numbers of the recordings that have events.
    int mLongestRun = 0;
    bool mHasMismatch = false;
    bool mHasStray = false;
};

} // namespace report
