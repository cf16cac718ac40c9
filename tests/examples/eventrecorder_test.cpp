#include "domain/domainblackboard.h"
#include "domain/domainlog.h"
#include "domain/domainnestreader.h"
#include "examples/recorder/eventrecorder.h"

#include <QDialog>
#include <QLabel>
#include <QTemporaryDir>
#include <QTest>

#include <gmock/gmock.h>
#include <sys/resource.h>

#include <csignal>

namespace {

using testing::ElementsAre;

/// The keys and places of a log's events in order, as the program reads them.
class Events : public domain::Analysis {
public:
    explicit Events(const QString& path) {
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        domain::NestReader reader(*this);
        domain::Nest nest;
        reader.begin(nest);
        mComplete = domain::read_log(file, reader);
        mCount = reader.eventCount();
    }

    void on(domain::Nest& nest, const domain::Trace& trace) override {
        for (int i = 0; i < trace.mIndices.size(); ++i)
            mKeys.push_back(nest.branchAt(trace.at(i))->mKey.toStdString());
    }

    std::vector<std::string> mKeys;
    int mCount = 0;
    bool mComplete = false;
};

TEST(EventRecorder, MakesKeysOfWhateverNamesThereAre) {
    const QTemporaryDir folder;
    const QString log = folder.filePath(QStringLiteral("log.json"));
    const EventRecorder recorder(log);
    QWidget window;
    auto* named = new QLabel(&window);
    auto* unnamed = new QLabel(named);
    auto* dialog = new QDialog(&window);
    QTest::mouseClick(unnamed, Qt::LeftButton);
    window.setObjectName(QStringLiteral("main"));
    named->setObjectName(QStringLiteral("say \"a:b\\c\"\n%1"));
    dialog->setObjectName(QStringLiteral("dialog"));
    QTest::mouseClick(unnamed, Qt::LeftButton);
    QTest::mouseDClick(dialog, Qt::LeftButton);
    const Events events(log);
    EXPECT_THAT(events.mKeys, ElementsAre("unnamed", "main:say _a_b_c__%1", "main:dialog"));
    EXPECT_EQ(events.mCount, 5); // of a second press, the test sends no release
}

/// A file system that takes part of a write leaves what a kill in the middle of it leaves.
TEST(EventRecorder, EveryMomentOfAWriteLeavesALogOfAllEventsBefore) {
    const QTemporaryDir folder;
    const QString log = folder.filePath(QStringLiteral("log.json"));
    QWidget window;
    rlimit unlimited{};
    ASSERT_EQ(getrlimit(RLIMIT_FSIZE, &unlimited), 0);
    std::signal(SIGXFSZ, SIG_IGN);
    const EventRecorder recorder(log);
    for (int i = 0; i < 3; ++i) {
        const qint64 size = QFileInfo(log).size();
        for (qint64 cut = 1; cut < 30; ++cut) {
            const rlimit limited{static_cast<rlim_t>(size + cut), unlimited.rlim_max};
            ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &limited), 0);
            QTest::mousePress(&window, Qt::LeftButton);
            ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &unlimited), 0);
            ASSERT_EQ(QFileInfo(log).size(), size + cut);
            const Events events(log);
            EXPECT_EQ(events.mKeys.size(), i) << "cut " << cut;
        }
        QTest::mousePress(&window, Qt::LeftButton);
        EXPECT_TRUE(Events(log).mComplete);
    }
}

TEST(EventRecorder, LeavesALogAloneThatExists) {
    const QTemporaryDir folder;
    const QString log = folder.filePath(QStringLiteral("log.json"));
    QWidget window;
    {
        const EventRecorder recorder(log);
        QTest::mouseClick(&window, Qt::LeftButton);
    }
    const EventRecorder second(log);
    QTest::mouseClick(&window, Qt::LeftButton);
    EXPECT_EQ(Events(log).mCount, 2);
}

} // namespace
