#include "domain/domainblackboard.h"
#include "domain/domainlog.h"
#include "domain/domainnestreader.h"
#include "json/jsonparser.h"
#include "json/jsonreader.h"
#include "tests/common/describe.h"
#include "tests/memory/failingmemory.h"
#include "ui/leaves/uileafbuilder.h"
#include "ui/uiloadthread.h"

#include <QBuffer>
#include <QFile>
#include <QSemaphore>
#include <QTemporaryDir>
#include <QTest>

#include <gtest/gtest.h>

#include <exception>

namespace {

using failing_memory::Failures;

constexpr int KEYS = 12;

/// Recordings in which every key has more patterns than a list keeps without an index.
QByteArray logText() {
    QByteArray text = "[";
    for (int recording = 0; recording < 3; ++recording) {
        text += "{";
        for (int event = 0; event < 60; ++event)
            text += QByteArray(event > 0 ? "," : "") + "\"down\":[0,\"key " +
                    QByteArray::number(event * (recording + 1) * 7 % KEYS) + "\"," +
                    QByteArray::number(event) + ",1.5]";
        text += "},";
    }
    return text + "{}]";
}

class FailingMemory : public testing::Test {
protected:
    FailingMemory() {
        QFile file(mPath);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(logText());
    }

    /// Reads the log as the loader does. False when there was no memory for it.
    static bool read(const QString& path, domain::NestReader& reader, domain::Nest& nest) {
        try {
            QFile file(path);
            if (!file.open(QIODevice::ReadOnly))
                return false;
            reader.begin(nest);
            return domain::read_log(file, reader);
        } catch (const std::exception&) {
            return false;
        }
    }

    std::vector<std::string> wanted() const {
        domain::Blackboard analysis;
        domain::NestReader reader(analysis);
        domain::Nest nest;
        EXPECT_TRUE(read(mPath, reader, nest));
        return model::describe(nest);
    }

    QTemporaryDir mDir;
    const QString mPath = mDir.filePath(QStringLiteral("log"));
};

TEST_F(FailingMemory, ALogIsReadInPartAndTheNextOneWhole) {
    const std::vector<std::string> whole = wanted();
    ASSERT_EQ(whole.size(), std::size_t(KEYS));
    for (const Failures failures : {Failures::Once, Failures::FromThenOn}) {
        bool failed = true;
        for (long good = 0; failed; ++good) {
            SCOPED_TRACE(good);
            domain::Blackboard analysis;
            domain::NestReader reader(analysis);
            domain::Nest nest;
            failing_memory::begin(good, failures);
            read(mPath, reader, nest);
            failing_memory::end();
            failed = failing_memory::hasFailed();
            ui::LeafList leaves;
            ui::LeafBuilder(leaves).from(nest);

            nest.clear(); // as a request is when it is used again
            ASSERT_TRUE(read(mPath, reader, nest));
            ASSERT_EQ(model::describe(nest), whole);
        }
    }
}

TEST(ParserMemory, ItTellsWhatItLacksAndKeepsItsStack) {
    QByteArray text = QByteArray("[").repeated(10) + QByteArray("]").repeated(10);
    const auto parses = [&text](json::Parser& parser, long good) {
        QBuffer buffer(&text);
        buffer.open(QIODevice::ReadOnly);
        json::Reader deaf;
        failing_memory::begin(good, Failures::Once);
        const bool parsed = parser.parse(&buffer, &deaf);
        failing_memory::end();
        return parsed;
    };
    bool failed = true;
    for (long good = 0; failed; ++good) {
        json::Parser parser;
        const bool parsed = parses(parser, good);
        failed = failing_memory::hasFailed();
        ASSERT_EQ(parsed, !failed) << good;
        constexpr long BUFFERS = 2; // of the text
        parses(parser, 1000);
        parses(parser, BUFFERS);
        ASSERT_FALSE(failing_memory::hasFailed());
    }
}

/// The thread runs already: the toolkit cannot start one without memory.
TEST_F(FailingMemory, TheLoaderGoesOn) {
    const std::vector<std::string> whole = wanted();
    const QUrl log = QUrl::fromLocalFile(mPath);
    const failing_memory::Spared spared;
    bool failed = true;
    for (long good = 0; failed; ++good) {
        SCOPED_TRACE(good);
        ui::LoadThread loader;
        domain::Nest nest;
        QUrl url;
        const auto comes = [&] { return loader.getOutput(nest, url); };
        const auto comesWhole = [&] { return comes() && model::describe(nest) == whole; };
        ASSERT_TRUE(loader.load(log));
        ASSERT_TRUE(QTest::qWaitFor(comesWhole));
        failing_memory::begin(good, Failures::Once);
        ASSERT_TRUE(loader.load(log));
        ASSERT_TRUE(QTest::qWaitFor([&] { return failing_memory::hasFailed() || comes(); }));
        failing_memory::end();
        failed = failing_memory::hasFailed();
        ASSERT_TRUE(loader.load(log));
        ASSERT_TRUE(QTest::qWaitFor(comesWhole));
    }
}

/// The worker stands still in its signal, that is in a pass, while requests gather.
TEST_F(FailingMemory, OfTheRequestsDuringAPassTheNewestIsReadAndAllAreUsedAgain) {
    constexpr int LONGEST_WAIT = 5000; // milliseconds
    QUrl log = QUrl::fromLocalFile(mPath);
    QSemaphore announced, goesOn;
    ui::LoadThread loader;
    const auto hold = [&] {
        announced.release();
        goesOn.acquire();
    };
    QObject::connect(&loader, &ui::LoadThread::loadFinished, &loader, hold, Qt::DirectConnection);
    loader.load(log);
    ASSERT_TRUE(announced.tryAcquire(1, LONGEST_WAIT));
    EXPECT_EQ(loader.priority(), QThread::LowPriority);
    for (const QString& request : {QStringLiteral("b"), QStringLiteral("c"), QStringLiteral("d")}) {
        log.setFragment(request);
        loader.load(log);
    }
    goesOn.release();
    ASSERT_TRUE(announced.tryAcquire(1, LONGEST_WAIT));
    domain::Nest nest;
    QUrl url;
    EXPECT_TRUE(loader.getOutput(nest, url));
    EXPECT_EQ(url, log);
    int taken = 0;
    failing_memory::begin(0, Failures::FromThenOn);
    while (loader.load(log))
        ++taken;
    failing_memory::end();
    goesOn.release(2);
    EXPECT_EQ(taken, 4);
}

} // namespace
