#include "report/reportlogreader.h"

#include <algorithm>

namespace report {

void LogReader::startObject(json::Stack& stack, const QString& key) {
    mEventsBefore = mEventsAnalysed = eventCount();
    open(true);
    NestReader::startObject(stack, key);
}

void LogReader::endObject(json::Stack& stack) {
    NestReader::endObject(stack);
    if (eventCount() > mEventsAnalysed)
        mAnalysed.push_back(recordingCount());
    mEventsAnalysed = eventCount();
    close(true);
}

void LogReader::startArray(json::Stack& stack, const QString& key) {
    open(false);
    NestReader::startArray(stack, key);
}

void LogReader::endArray(json::Stack& stack) {
    NestReader::endArray(stack);
    mLongestRun = std::max(mLongestRun, eventCount() - mEventsBefore);
    close(false);
}

void LogReader::open(bool object) {
    mDocuments += mOpen.empty() ? 1 : 0;
    mOpenObjects += object ? 1 : 0;
    mOpen.push_back(object);
}

/// A bracket of a kind closes the innermost one, whatever kind that is of, and goes on to the next
/// one until it has closed one of its own.
void LogReader::close(bool object) {
    if (mOpen.empty()) {
        mHasStray = true;
        return;
    }
    const bool wasObject = mOpen.back();
    mOpen.pop_back();
    mOpenObjects -= wasObject ? 1 : 0;
    mRecordings += object && wasObject ? 1 : 0;
    mHasMismatch |= object != wasObject;
}

} // namespace report
