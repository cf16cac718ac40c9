#pragma once

#include <QBasicTimer>
#include <QElapsedTimer>
#include <QObject>

#include <array>
#include <functional>
#include <iosfwd>
#include <string>

namespace bench {

/// Measures for how long the main thread is away from its event loop: the time, by the clock and of
/// the processor, between the ticks of a timer of 1 ms. Other programs on the machine lengthen
/// the former only.
class EventGaps : public QObject {
public:
    /// Runs the event loop until `isOver` says so, asked at every tick, and prints a line: the
    /// longest gaps and how many there were of each length. `what` happens meanwhile.
    void measure(const std::string& what, const std::function<bool()>& isOver, std::ostream& out);

    static void printHead(std::ostream& out);

protected:
    void timerEvent(QTimerEvent* event) override;

private:
    static constexpr std::array<int, 6> LIMITS{4, 8, 16, 33, 66, 133}; // milliseconds

    void record();
    void print(const std::string& what, std::ostream& out) const;

    QBasicTimer mTick;
    QElapsedTimer mSinceTick;
    double mProcessorAtTick = 0;
    double mLongest = 0;
    double mLongestOfProcessor = 0;
    std::array<int, LIMITS.size() + 1> mCounts{};
};

} // namespace bench
