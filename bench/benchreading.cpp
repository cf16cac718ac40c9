#include "bench/benchlogs.h"
#include "bench/benchrows.h"
#include "domain/domainanalysis.h"
#include "domain/domainblackboard.h"
#include "domain/domainnest.h"
#include "domain/domainnestreader.h"
#include "json/jsonparser.h"

#include <QFile>

namespace bench {

namespace {

/// As the program loads a log, the nest that it fills included.
template <typename Stage>
void measureReading(benchmark::State& state, const LogFile& log) {
    for (auto _ : state) {
        QFile file(QString::fromStdString(log.path));
        Stage analysis;
        domain::NestReader reader(analysis);
        domain::Nest nest;
        reader.begin(nest);
        if (!file.open(QIODevice::ReadOnly) || !json::Parser().parse(&file, &reader) ||
            reader.eventCount() != log.tally.events)
            state.SkipWithError("reads something else");
    }
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations()) * log.bytes);
}

} // namespace

void addReading(Logs& logs) {
    // Recordings are short enough for the time budget of their analysis to play no part.
    const LogKind kinds[] = {{Shape::Sessions, 300, 1}, {Shape::Sessions, 300, 10},
                             {Shape::Sessions, 8, 10},  {Shape::Uniform, 1000, 10},
                             {Shape::Skewed, 1000, 10}, {Shape::Alternating, 1000, 10},
                             {Shape::Hub, 1000, 10}};
    for (const LogKind& kind : kinds) {
        const std::string what = "file to nest: " + nameOf(kind);
        add(what, OURS, [&logs, kind](benchmark::State& state) {
            measureReading<domain::Blackboard>(state, logs.log(kind));
        });
        add(what, "without analysis", [&logs, kind](benchmark::State& state) {
            measureReading<domain::Analysis>(state, logs.log(kind));
        });
    }
}

} // namespace bench
