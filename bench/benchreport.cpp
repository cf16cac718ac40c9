#include "bench/benchreport.h"

#include "bench/benchlogs.h"
#include "bench/benchmemory.h"
#include "bench/benchrows.h"
#include "report/reportpartial.h"
#include "report/reportreading.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include <cstdio>
#include <memory>
#include <stdexcept>

namespace bench {

namespace {

constexpr int PARTS = 32;
constexpr int SHORTEST = 100; // recordings, which differ in length so that no two logs are the same

/// Logs of 1 MB, their partials, and all of them as one log. Made when first asked for.
class Parts {
public:
    const QStringList& logs() { return made().mLogs; }

    const QStringList& partials() { return made().mPartials; }

    QStringList whole() { return {made().path(QStringLiteral("whole"))}; }

private:
    QString path(const QString& name) const { return mFolder.filePath(name); }

    Parts& made() {
        if (!mLogs.isEmpty())
            return *this;
        QFile whole(path(QStringLiteral("whole")));
        if (!whole.open(QIODevice::WriteOnly))
            throw std::runtime_error("cannot be written");
        whole.write("[");
        for (int i = 0; i < PARTS; ++i)
            make(i, whole);
        whole.write("]");
        return *this;
    }

    void make(int number, QFile& whole) {
        const QString log = path(QStringLiteral("log%1").arg(number));
        writeLog({Shape::Skewed, SHORTEST + number, 1}, log.toStdString());
        QFile file(log);
        file.open(QIODevice::ReadOnly);
        whole.write(file.readAll());
        const QString partial = path(QStringLiteral("partial%1").arg(number));
        std::FILE* stream = std::fopen(partial.toLocal8Bit().constData(), "wb");
        report::Log read;
        report::Output output(stream);
        if (!stream || !report::read_log(log, read).isEmpty())
            throw std::runtime_error("cannot be read");
        report::PartialWriter(output, {}).write(report::Findings(read));
        std::fclose(stream);
        mLogs += log;
        mPartials += partial;
    }

    QTemporaryDir mFolder;
    QStringList mLogs;
    QStringList mPartials;
};

/// What a process of its own took, with another program before it, as in "taskset -c 0".
void measureProcess(benchmark::State& state, const char* counter, QStringList before,
                    const QString& how, const QStringList& files) {
    const bool isMemory = std::string(counter) == BYTES;
    const QStringList command = before << QCoreApplication::applicationFilePath()
                                       << QStringLiteral("--report") << how << files;
    for (auto _ : state) {
        QProcess process;
        process.start(command.first(), command.sliced(1));
        process.waitForFinished(-1);
        const QList<QByteArray> figures = process.readAllStandardOutput().split(' ');
        if (figures.size() != 2)
            state.SkipWithError("does not read");
        else
            state.counters[counter] =
                isMemory ? figures[0].toDouble() * 1024 : figures[1].toDouble();
    }
}

} // namespace

int readAndReport(int count, char** arguments) {
    const QCoreApplication application(count, arguments);
    const QStringList files = QCoreApplication::arguments().sliced(3);
    const QString how = QCoreApplication::arguments()[2];
    QElapsedTimer timer;
    timer.start();
    report::Reading reading = report::Reading::Apart;
    if (how != u"apart")
        reading = how == u"merged" ? report::Reading::Merged : report::Reading::Together;
    if (report::read_logs(files, reading, [](report::Log&) {}) != report::ALL_REPORTED)
        return 1;
    std::printf("%ld %f", peakKilobytes(), static_cast<double>(timer.nsecsElapsed()) / 1e9);
    return 0;
}

void addReport() {
    const auto parts = std::make_shared<Parts>();
    const QString apart = QStringLiteral("apart");
    const QString together = QStringLiteral("together");
    const QString merged = QStringLiteral("merged");
    const QStringList oneCore{QStringLiteral("taskset"), QStringLiteral("-c"), QStringLiteral("0")};
    const std::string logs = std::to_string(PARTS) + " logs of 1 MB";
    const std::string time = "together by the clock: " + logs;
    add(time, OURS, [=](benchmark::State& state) {
        measureProcess(state, SECONDS, {}, together, parts->logs());
    });
    add(
        time, "on one core",
        [=](benchmark::State& state) {
            measureProcess(state, SECONDS, oneCore, together, parts->logs());
        },
        1 / 0.6);
    const std::string merge = "merge by the clock: partials of " + logs;
    add(merge, OURS, [=](benchmark::State& state) {
        measureProcess(state, SECONDS, {}, merged, parts->partials());
    });
    add(
        merge, "one log of that size",
        [=](benchmark::State& state) { measureProcess(state, SECONDS, {}, apart, parts->whole()); },
        0.5);
    const std::string memory = "peak memory together: " + logs;
    add(memory, OURS, [=](benchmark::State& state) {
        measureProcess(state, BYTES, {}, together, parts->logs());
    });
    add(
        memory, "one log of that size",
        [=](benchmark::State& state) { measureProcess(state, BYTES, {}, apart, parts->whole()); },
        1.5);
}

} // namespace bench
