#pragma once

#include <QDeadlineTimer>

namespace ui {

/// The time that work done bit by bit has until other work has its turn. What it has done since it
/// last asked is told in nanoseconds, roughly; the clock is looked at only when that has added up.
/// Once over a slice stays over.
class Slice {
public:
    explicit Slice(const QDeadlineTimer& until)
        : mUntil(until) {}

    /// One that is never over.
    static Slice endless() { return Slice(QDeadlineTimer(QDeadlineTimer::Forever)); }

    bool isOver(int nanoseconds);

private:
    QDeadlineTimer mUntil;
    int mUnseen = 0; // nanoseconds of work since the last look at the clock
    bool mIsOver = false;
};

/// What drawing anything counts as: reason enough to look at the clock.
constexpr int DRAWING_TIME = 20'000;

} // namespace ui
