#include "bench/benchmemory.h"

#include "bench/benchlogs.h"
#include "bench/benchrows.h"
#include "domain/domainblackboard.h"
#include "domain/domainlog.h"
#include "domain/domainnest.h"
#include "domain/domainnestreader.h"

#include <QCoreApplication>
#include <QFile>
#include <QProcess>

#include <cstdio>
#include <fstream>

namespace bench {

namespace {

void measureLoad(benchmark::State& state, const LogFile& log) {
    for (auto _ : state) {
        QProcess process;
        process.start(QCoreApplication::applicationFilePath(),
                      {QStringLiteral("--load"), QString::fromStdString(log.path)});
        process.waitForFinished(-1);
        const double kilobytes = process.readAllStandardOutput().toDouble();
        if (kilobytes <= 0)
            state.SkipWithError("does not load");
        state.counters[BYTES] = kilobytes * 1024;
    }
}

void measureSize(benchmark::State& state, const LogFile& log) {
    for (auto _ : state)
        state.counters[BYTES] = static_cast<double>(log.bytes);
}

} // namespace

/// Not from getrusage, which takes over the parent's.
long peakKilobytes() {
    std::ifstream status("/proc/self/status");
    std::string word;
    long peak = 0;
    while (status >> word && word != "VmHWM:") {
    }
    status >> peak;
    return peak;
}

int loadAndReport(const std::string& path) {
    QFile file(QString::fromStdString(path));
    domain::Blackboard analysis;
    domain::NestReader reader(analysis);
    domain::Nest nest;
    reader.begin(nest);
    if (!file.open(QIODevice::ReadOnly) || !domain::read_log(file, reader))
        return 1;
    std::printf("%ld\n", peakKilobytes());
    return 0;
}

void addMemory(Logs& logs) {
    // The hub has three patterns for each of its events, most of them long.
    const struct {
        LogKind kind;
        double target;
    } rows[] = {{{Shape::Sessions, 300, 100}, 4},
                {{Shape::Skewed, 1000, 100}, 4},
                {{Shape::Hub, 100'000, 1}, 10},
                {{Shape::Alternating, 100'000, 1}, 4}};

    for (const auto& [kind, target] : rows) {
        const std::string what = "peak memory of a load: " + nameOf(kind);
        add(what, OURS,
            [&logs, kind = kind](benchmark::State& state) { measureLoad(state, logs.log(kind)); });
        add(
            what, "the file's size",
            [&logs, kind = kind](benchmark::State& state) { measureSize(state, logs.log(kind)); },
            target);
    }
}

} // namespace bench
