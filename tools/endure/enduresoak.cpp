// quillon-soak: uses the main window at random for a while. Reports, as it goes, the memory in use
// and the longest time for which no event was answered; fails when the toolkit complains and, after
// ten minutes or more, when memory still grows or an event once waited longer than a second.
// usage: quillon-soak EXAMPLE [SECONDS [SEED]]

#include "tests/common/processortime.h"
#include "tools/endure/endureuser.h"
#include "ui/uiwin.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QTemporaryDir>
#include <QTimer>

#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <numeric>
#include <vector>

namespace endure {

namespace {

constexpr int ROWS = 30; // of the report
constexpr int THIRD = ROWS / 3;
constexpr int ACT_EVERY = 10; // milliseconds
constexpr int BEAT_EVERY = 5;
constexpr int SAMPLE_EVERY = 100;
constexpr int HANGS_AFTER = 60; // seconds

// What is judged of a run that is long enough to tell.
constexpr int LONG_RUN = 600;        // seconds
constexpr double MOST_GROWTH = 1.15; // the pools of recycled objects fill slowly
constexpr qint64 LONGEST_GAP = 1000; // milliseconds

int complaints = 0;

void complain(QtMsgType /*type*/, const QMessageLogContext& /*context*/, const QString& message) {
    ++complaints;
    std::fprintf(stderr, "quillon-soak: message: %s\n", qPrintable(message));
}

/// Megabytes of memory that the process occupies.
double residentMemory() {
    long size = 0;
    long resident = 0;
    std::ifstream("/proc/self/statm") >> size >> resident;
    return static_cast<double>(resident * sysconf(_SC_PAGESIZE)) / 1e6;
}

class Soak {
public:
    Soak(User& user, int seconds)
        : mUser(user)
        , mSeconds(seconds) {
        every(ACT_EVERY, mActing, [this] { act(); });
        every(BEAT_EVERY, mBeating, [this] { beat(); });
        every(SAMPLE_EVERY, mSampling, [this] { sample(); });
        mTime.start();
        mSinceBeat.start();
        std::printf("%10s %10s %10s %12s %10s\n", "seconds", "MB", "most MB", "longest gap",
                    "acts");
    }

    /// 0 when nothing is wrong.
    int judge() const {
        std::printf("%d acts, longest gap %lld ms, %lld ms of them at work, after \"%s\"\n", mActs,
                    mLongestGap, mLongestWork, mLongestAct);
        int faults = complaints;
        if (mSeconds >= LONG_RUN) {
            const double before = std::accumulate(mMost.begin() + THIRD, mMost.end() - THIRD, 0.0);
            const double after = std::accumulate(mMost.end() - THIRD, mMost.end(), 0.0);
            std::printf("memory: the last third took %.3f of the middle third\n", after / before);
            faults += after > before * MOST_GROWTH;
            faults += mLongestGap > LONGEST_GAP;
        }
        return faults;
    }

private:
    template <typename Slot>
    static void every(int milliseconds, QTimer& timer, const Slot& slot) {
        QObject::connect(&timer, &QTimer::timeout, &timer, slot);
        timer.start(milliseconds);
    }

    void act() {
        ++mActs;
        mAct = mUser.act();
    }

    void beat() {
        const qint64 gap = mSinceBeat.restart();
        const qint64 work = qRound64(processor_time() * 1e3) - mWorkAtBeat;
        mWorkAtBeat += work;
        mRowGap = std::max(mRowGap, gap);
        if (gap > mLongestGap) {
            mLongestGap = gap;
            mLongestWork = work;
            mLongestAct = mAct;
        }
        alarm(HANGS_AFTER); // ends the program
    }

    void sample() {
        const double memory = residentMemory();
        mRowMost = std::max(mRowMost, memory);
        const qint64 row = static_cast<qint64>(mMost.size()) + 1;
        if (mTime.elapsed() < row * mSeconds * 1000 / ROWS)
            return;
        std::printf("%10.1f %10.1f %10.1f %9lld ms %10d\n",
                    static_cast<double>(mTime.elapsed()) / 1e3, memory, mRowMost, mRowGap, mActs);
        std::fflush(stdout);
        mMost.push_back(mRowMost);
        mRowMost = 0;
        mRowGap = 0;
        if (row == ROWS)
            QApplication::quit();
    }

    User& mUser;
    const int mSeconds;
    QTimer mActing;
    QTimer mBeating;
    QTimer mSampling;
    QElapsedTimer mTime;
    QElapsedTimer mSinceBeat;

    int mActs = 0;
    const char* mAct = "";
    qint64 mLongestGap = 0;
    qint64 mLongestWork = 0; // of the processor, in that gap
    qint64 mWorkAtBeat = 0;
    const char* mLongestAct = "";
    std::vector<double> mMost; // of each row
    double mRowMost = 0;
    qint64 mRowGap = 0;
};

int soak(const QString& example, int seconds, unsigned seed) {
    ui::Win window(nullptr);
    window.show();
    User user(window, example, seed);
    Soak soak(user, seconds);
    QApplication::exec();
    return soak.judge();
}

} // namespace

} // namespace endure

int main(int argc, char** argv) {
    const QTemporaryDir home;
    for (const char* place : {"HOME", "XDG_CONFIG_HOME", "XDG_RUNTIME_DIR"})
        qputenv(place, home.path().toLocal8Bit());
    qInstallMessageHandler(endure::complain);
    const QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false); // the window hides now and then
    QCoreApplication::setOrganizationName(QStringLiteral("Velmorix"));
    QCoreApplication::setApplicationName(QStringLiteral("Quillon"));
    const QStringList arguments = QCoreApplication::arguments();
    const int seconds = arguments.value(2, QStringLiteral("1800")).toInt();
    const unsigned seed = arguments.value(3, QStringLiteral("1")).toUInt();
    if (arguments.size() < 2 || seconds < 1) {
        std::fprintf(stderr, "usage: quillon-soak EXAMPLE [SECONDS [SEED]]\n");
        return 2;
    }
    return endure::soak(arguments[1], seconds, seed) == 0 ? EXIT_SUCCESS : EXIT_FAILURE;
}
