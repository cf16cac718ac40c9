// quillon-load-storm: makes loaders, storms them with requests, collects results at random moments
// and ends the loaders in every phase of their work. Meant for the thread sanitizer's build.
// usage: quillon-load-storm [REQUESTS [SEED]]

#include "tools/endure/endurelogs.h"
#include "ui/uiloadthread.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QTemporaryDir>

#include <array>
#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <stdexcept>

namespace endure {

namespace {

constexpr int LONGEST_WAIT = 60'000; // milliseconds
constexpr int LONGEST_PAUSE = 3'000; // microseconds

/// What a loader is at when it is ended.
enum End { Unused, Starting, Reading, Superseding, Announced, Asleep, ENDS };

constexpr std::array<const char*, ENDS> END_NAMES{
    "unused", "starting", "reading", "with requests waiting", "not collected", "asleep"};

/// One loader after the other, from the main thread as the window would. Every request has a serial
/// number in its URL's fragment; results must come in their order and hold the log they name.
class Storm {
public:
    explicit Storm(unsigned seed)
        : mRandom(seed) {
        for (int i = 0; i < 6; ++i)
            mLogs.append(newLog(QString(QChar(u'a' + i)), {7, 2, 10 * i}));
        mLong = newLog(QStringLiteral("long"), {40, 8, 150});
        mMissing = QUrl::fromLocalFile(mFolder.filePath(QStringLiteral("missing")));
    }

    void run(int requests) {
        for (int life = 0; mRequests < requests; ++life)
            liveUntil(static_cast<End>(life % ENDS));
    }

    void print() const {
        std::printf("%d requests, %d collected; loaders ended", mRequests, mCollected);
        for (std::size_t end = 0; end < ENDS; ++end)
            std::printf("%s %d %s", end == 0 ? "" : ",", mEnds.at(end), END_NAMES.at(end));
        std::printf("; %d announced a result while they ended\n", mAnnouncedAtEnd);
    }

private:
    QUrl newLog(const QString& name, const log_kind& kind) {
        return write(QDir(mFolder.path()), name, log_text(name.toUtf8() + ":", kind, mRandom));
    }

    void liveUntil(End end) {
        mAnnounced = 0;
        {
            ui::LoadThread loader;
            QObject::connect(
                &loader, &ui::LoadThread::loadFinished, &loader, [this] { ++mAnnounced; },
                Qt::DirectConnection); // on the worker
            mLastSerial = mSerial;
            if (end != Unused && end != Starting)
                storm(loader);
            bringTo(end, loader);
            mAnnouncedBefore = mAnnounced;
        }
        mAnnouncedAtEnd += mAnnounced - mAnnouncedBefore;
        ++mEnds.at(end);
        mNest.clear();
    }

    void storm(ui::LoadThread& loader) {
        for (int i = below(40, mRandom); i > 0; --i) {
            request(loader, anyLog());
            if (below(3, mRandom) == 0)
                pause();
            if (below(4, mRandom) == 0)
                collect(loader);
        }
    }

    void bringTo(End end, ui::LoadThread& loader) {
        if (end == Unused)
            return;
        const int announced = mAnnounced;
        request(loader, end == Reading ? mLong : mLogs[below(6, mRandom)]);
        if (end == Reading)
            pause();
        if (end == Superseding) {
            for (int i = 0; i < 3; ++i)
                request(loader, mLong);
        }
        if (end == Announced)
            waitUntil([&] { return mAnnounced > announced; });
        if (end == Asleep) {
            waitUntil([&] { return collect(loader) == mSerial; });
            QThread::usleep(500);
        }
    }

    QUrl anyLog() {
        const int choice = below(10, mRandom);
        if (choice < 6)
            return mLogs[choice];
        return choice < 9 ? mLong : mMissing;
    }

    void request(ui::LoadThread& loader, QUrl log) {
        ++mRequests;
        log.setFragment(QString::number(++mSerial));
        const bool queued = below(5, mRandom) == 0 ? loader.merge(log, mNest) : loader.load(log);
        require(queued, "a request was refused");
    }

    /// The serial number of the newest result; that of the last one when there is none.
    int collect(ui::LoadThread& loader) {
        QUrl url;
        if (!loader.getOutput(mNest, url))
            return mLastSerial;
        ++mCollected;
        const int serial = url.fragment().toInt();
        require(serial > mLastSerial && serial <= mSerial, "results came in a wrong order");
        require(holds(url.fileName() + u':') || url.fileName() == u"a", "a result of another log");
        mLastSerial = serial;
        return serial;
    }

    bool holds(const QString& prefix) const {
        for (int i = 0; i < mNest.size(); ++i) {
            if (mNest.branchAt(i)->mKey.startsWith(prefix))
                return true;
        }
        return false;
    }

    template <typename Condition>
    static void waitUntil(const Condition& condition) {
        QElapsedTimer waited;
        waited.start();
        while (!condition()) {
            require(waited.elapsed() < LONGEST_WAIT, "a request was lost");
            QThread::usleep(100);
        }
    }

    void pause() { QThread::usleep(mRandom() % LONGEST_PAUSE); }

    static void require(bool holds, const char* otherwise) {
        if (!holds)
            throw std::runtime_error(otherwise);
    }

    Random mRandom;
    QTemporaryDir mFolder;
    QList<QUrl> mLogs; // the first of them holds no events
    QUrl mLong;
    QUrl mMissing;

    domain::Nest mNest;
    std::atomic<int> mAnnounced = 0; // by this loader
    int mSerial = 0;
    int mLastSerial = 0; // collected

    int mRequests = 0;
    int mCollected = 0;
    int mAnnouncedBefore = 0;
    int mAnnouncedAtEnd = 0;
    std::array<int, ENDS> mEnds{};
};

} // namespace

} // namespace endure

int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    const int requests = argc > 1 ? std::atoi(argv[1]) : 10'000;
    const unsigned seed = argc > 2 ? static_cast<unsigned>(std::atoi(argv[2])) : 1;
    try {
        endure::Storm storm(seed);
        storm.run(requests);
        storm.print();
    } catch (const std::exception& fault) {
        std::fprintf(stderr, "quillon-load-storm: seed %u: %s\n", seed, fault.what());
        return EXIT_FAILURE;
    }
    return EXIT_SUCCESS;
}
