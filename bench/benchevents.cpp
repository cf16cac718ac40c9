#include "bench/benchevents.h"

#include "tests/common/processortime.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QTimerEvent>

#include <algorithm>
#include <cstdio>
#include <ostream>

namespace bench {

namespace {

/// Of this thread.
double processorMilliseconds() {
    return processor_time() * 1e3;
}

std::string column(const char* form, double value) {
    std::array<char, 32> text{};
    std::snprintf(text.data(), text.size(), form, value);
    return text.data();
}

std::string padded(const std::string& what) {
    std::array<char, 64> text{};
    std::snprintf(text.data(), text.size(), "%-40s", what.c_str());
    return text.data();
}

} // namespace

void EventGaps::measure(const std::string& what, const std::function<bool()>& isOver,
                        std::ostream& out) {
    mLongest = mLongestOfProcessor = 0;
    mCounts = {};
    mProcessorAtTick = processorMilliseconds();
    mSinceTick.start();
    mTick.start(1, Qt::PreciseTimer, this);
    do
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    while (!isOver());
    mTick.stop();
    record();
    print(what, out);
}

void EventGaps::timerEvent(QTimerEvent* /*event*/) {
    record();
}

void EventGaps::record() {
    const double gap = static_cast<double>(mSinceTick.nsecsElapsed()) / 1e6;
    const double now = processorMilliseconds();
    mLongest = std::max(mLongest, gap);
    mLongestOfProcessor = std::max(mLongestOfProcessor, now - mProcessorAtTick);
    ++mCounts.at(std::lower_bound(LIMITS.begin(), LIMITS.end(), gap) - LIMITS.begin());
    mSinceTick.start();
    mProcessorAtTick = now;
}

void EventGaps::printHead(std::ostream& out) {
    out << padded("longest gap of the event loop, ms") << "   clock processor  ";
    for (const int limit : LIMITS)
        out << column("  <=%3.0f", limit);
    out << "  longer" << std::endl;
}

void EventGaps::print(const std::string& what, std::ostream& out) const {
    out << padded(what) << column("%8.1f", mLongest) << column("%10.1f", mLongestOfProcessor)
        << "  ";
    for (const int count : mCounts)
        out << column("%7.0f", count);
    out << std::endl;
}

} // namespace bench
