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
    QUrl write(const QString& name) {
        QFile file(mDir.filePath(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write("{\"down\":[0,\"" + name.toUtf8() + "\",1,1]}");
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

    QTemporaryDir mDir;
    domain::Nest mNest;
    QObject mListener;
    int mHeard = 0;
};

TEST_F(LoadThreadTest, DeliversTheNewestLogOnce) {
    ui::LoadThread loader;
    listenTo(loader);
    EXPECT_TRUE(loader.load(write(QStringLiteral("older"))));
    ASSERT_TRUE(heard(1));
    EXPECT_TRUE(loader.load(write(QStringLiteral("newer"))));
    ASSERT_TRUE(heard(2));
    EXPECT_EQ(collect(loader), QStringLiteral("newer"));

    QUrl untouched(QStringLiteral("x:y"));
    EXPECT_FALSE(loader.getOutput(mNest, untouched));
    EXPECT_EQ(untouched, QUrl(QStringLiteral("x:y")));
    EXPECT_EQ(mNest.size(), 1);
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
    ASSERT_TRUE(heard(1));
    EXPECT_EQ(collect(loader), QStringLiteral("good"));
    EXPECT_EQ(mHeard, 1);
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
