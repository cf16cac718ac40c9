#include "ui/uiloadthread.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <gtest/gtest.h>
#include <sys/stat.h>

namespace {

/// A folder with logs that name themselves: the log `name` holds one key, its name.
class LoadThreadTest : public testing::Test {
protected:
    QUrl write(const QString& name, int recordings = 1) {
        QFile file(mDir.filePath(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        const QByteArray recording = "{\"down\":[0,\"" + name.toUtf8() + "\",1,1]},\n";
        file.write("[" + recording.repeated(recordings) + "{}]");
        return QUrl::fromLocalFile(file.fileName());
    }

    /// Collects what the signal announced; the key of its first branch, empty when there is none.
    QString collect(ui::LoadThread& loader) {
        QUrl url;
        if (!loader.getOutput(mNest, url))
            return {};
        EXPECT_EQ(url.fileName(), mNest.branchAt(0)->mKey);
        return mNest.branchAt(0)->mKey;
    }

    /// Counts the signals as the window hears them: queued, on this thread.
    void listenTo(ui::LoadThread& loader) {
        mHeard = 0;
        QObject::connect(&loader, &ui::LoadThread::loadFinished, &mListener, [this] { ++mHeard; });
    }

    /// Whether the signal was heard for the `nth` time, within some seconds.
    bool heard(int nth) const {
        return QTest::qWaitFor([&] { return mHeard >= nth; });
    }

    /// Whether the log named `name` comes, within some seconds.
    bool comes(ui::LoadThread& loader, const QString& name) {
        return QTest::qWaitFor([&] { return collect(loader) == name; });
    }

    QTemporaryDir mDir;
    domain::Nest mNest;
    QObject mListener;
    int mHeard = 0;
};

TEST_F(LoadThreadTest, DeliversALogOnce) {
    ui::LoadThread loader;
    listenTo(loader);
    EXPECT_TRUE(loader.load(write(QStringLiteral("a"))));
    ASSERT_TRUE(heard(1));
    EXPECT_EQ(collect(loader), QStringLiteral("a"));

    QUrl untouched(QStringLiteral("x:y"));
    EXPECT_FALSE(loader.getOutput(mNest, untouched));
    EXPECT_EQ(untouched, QUrl(QStringLiteral("x:y")));
    EXPECT_EQ(mNest.size(), 1);
}

TEST_F(LoadThreadTest, ReadsOnlyTheNewestOfTheWaitingRequests) {
    ui::LoadThread loader;
    listenTo(loader);
    const QList<QUrl> logs{write(QStringLiteral("long"), 200000), write(QStringLiteral("b")),
                           write(QStringLiteral("c")), write(QStringLiteral("d"))};
    for (const QUrl& log : logs) // the first, unless superseded too, keeps the worker busy
        loader.load(log);
    ASSERT_TRUE(comes(loader, QStringLiteral("d")));
    QTest::qWait(50);
    EXPECT_GE(mHeard, 1);
    EXPECT_LE(mHeard, 2); // b and c are never announced
}

TEST_F(LoadThreadTest, DropsWhatItCannotOpenAndGoesOn) {
    ui::LoadThread loader;
    listenTo(loader);
    const QString pipe = mDir.filePath(QStringLiteral("pipe"));
    ASSERT_EQ(mkfifo(qPrintable(pipe), 0600), 0); // nobody writes to it
    const QList<QUrl> unreadable{QUrl::fromLocalFile(pipe), QUrl(),
                                 QUrl(QStringLiteral("http://example.invalid/a")),
                                 QUrl::fromLocalFile(mDir.filePath(QStringLiteral("none"))),
                                 QUrl::fromLocalFile(mDir.path())};
    for (const QUrl& url : unreadable) {
        EXPECT_TRUE(loader.load(url));
        QTest::qWait(20);
        EXPECT_EQ(mHeard, 0) << url.toString().toStdString();
    }
    loader.load(write(QStringLiteral("good")));
    EXPECT_TRUE(comes(loader, QStringLiteral("good")));
}

TEST_F(LoadThreadTest, KeepsTheNewerOfTwoResultsNotCollected) {
    ui::LoadThread loader;
    listenTo(loader);
    loader.load(write(QStringLiteral("older")));
    ASSERT_TRUE(heard(1));
    loader.load(write(QStringLiteral("newer")));
    ASSERT_TRUE(heard(2));
    EXPECT_EQ(collect(loader), QStringLiteral("newer"));
    EXPECT_EQ(collect(loader), QString());
}

TEST_F(LoadThreadTest, MergesIntoACopyOfANest) {
    domain::Branch known;
    known.mKey = QStringLiteral("into");
    known.mGesture = domain::GESTURE_DOWN;
    domain::Nest nest;
    nest.set(0, known);
    ui::LoadThread loader;
    listenTo(loader);
    EXPECT_TRUE(loader.merge(write(QStringLiteral("from")), nest));
    ASSERT_TRUE(heard(1));
    QUrl url;
    ASSERT_TRUE(loader.getOutput(mNest, url));
    ASSERT_EQ(mNest.size(), 2);
    EXPECT_EQ(mNest.branchAt(0)->mKey, QStringLiteral("into"));
    EXPECT_EQ(mNest.branchAt(1)->mKey, QStringLiteral("from"));
    EXPECT_EQ(nest.size(), 1);
}

TEST(LoadIoListDeathTest, RequestsAreNotCopied) {
    const ui::LoadIoList::Factory factory(false);
    EXPECT_DEATH(factory.setObject(nullptr, nullptr),
                 "Quillon/ui/uiloadthreadio.cpp:42: .*setObject.*`false'");
}

} // namespace
