#include "bench/benchlogs.h"
#include "bench/benchrows.h"
#include "domain/domainanalysis.h"
#include "domain/domainblackboard.h"
#include "domain/domainlog.h"
#include "domain/domainnest.h"
#include "domain/domainnestreader.h"
#include "domain/domainsurvey.h"

#include <QElapsedTimer>
#include <QFile>

#include <type_traits>

namespace bench {

namespace {

constexpr char SPEED[] = "bytes_per_second";

/// As the program loads a log, the nest that it fills included: by the clock, as the analysis may
/// have a thread of its own.
template <typename Stage>
void measureReading(benchmark::State& state, const LogFile& log) {
    QElapsedTimer clock;
    clock.start();
    for (auto _ : state) {
        QFile file(QString::fromStdString(log.path));
        Stage analysis;
        domain::NestReader reader(analysis);
        domain::Nest nest;
        reader.begin(nest);
        if (!file.open(QIODevice::ReadOnly) || !domain::read_log(file, reader) ||
            reader.eventCount() != log.tally.events)
            state.SkipWithError("reads something else");
        if constexpr (std::is_same_v<Stage, domain::Survey>)
            benchmark::DoNotOptimize(analysis.figures(nest));
    }
    const double taken = static_cast<double>(clock.nsecsElapsed()) / 1e9;
    const double seconds = taken / static_cast<double>(state.iterations());
    state.counters[SECONDS] = seconds;
    state.counters[SPEED] = static_cast<double>(log.bytes) / seconds;
}

void addLoad(Logs& logs, const LogKind& kind, double target) {
    const std::string what = "file to nest: " + nameOf(kind);
    add(what, OURS, [&logs, kind](benchmark::State& state) {
        measureReading<domain::Blackboard>(state, logs.log(kind));
    });
    add(
        what, "without analysis",
        [&logs, kind](benchmark::State& state) {
            measureReading<domain::Analysis>(state, logs.log(kind));
        },
        target);
}

/// What quillon-report takes besides, for how often and where.
void addFigures(Logs& logs, const LogKind& kind, double target) {
    const std::string what = "figures: " + nameOf(kind);
    add(what, OURS, [&logs, kind](benchmark::State& state) {
        measureReading<domain::Survey>(state, logs.log(kind));
    });
    add(
        what, "without figures",
        [&logs, kind](benchmark::State& state) {
            measureReading<domain::Blackboard>(state, logs.log(kind));
        },
        target);
}

/// A load beside that of half as many recordings.
void addGrowth(Logs& logs, int recordings) {
    const LogKind whole{Shape::Sessions, 300, 0, recordings};
    const LogKind half{Shape::Sessions, 300, 0, recordings / 2};
    const std::string what = "growth: " + nameOf(whole);
    for (const LogKind& kind : {whole, half}) {
        add(
            what, kind == whole ? OURS : std::to_string(half.recordings) + " of them",
            [&logs, kind](benchmark::State& state) {
                const LogFile& log = logs.log(kind);
                measureReading<domain::Blackboard>(state, log);
                state.counters.erase(SPEED); // the time counts
            },
            1 / 2.2);
    }
}

} // namespace

void addReading(Logs& logs) {
    // Recordings are short enough for the time budget of their analysis to play no part.
    addLoad(logs, {Shape::Sessions, 300, 0, 1000}, 0.9); // on two processors
    addLoad(logs, {Shape::Hub, 1000, 10}, 0.5);
    const LogKind kinds[] = {{Shape::Sessions, 300, 1}, {Shape::Sessions, 300, 10},
                             {Shape::Sessions, 8, 10},  {Shape::Uniform, 1000, 10},
                             {Shape::Skewed, 1000, 10}, {Shape::Alternating, 1000, 10}};
    for (const LogKind& kind : kinds)
        addLoad(logs, kind, 0);
    addFigures(logs, {Shape::Sessions, 300, 0, 1000}, 1 / 1.15);
    addFigures(logs, {Shape::Skewed, 1000, 10}, 1 / 1.15);
    for (const int recordings : {2000, 4000, 8000})
        addGrowth(logs, recordings);
}

} // namespace bench
