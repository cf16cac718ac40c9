#include "bench/benchlogs.h"
#include "bench/benchpeers.h"
#include "bench/benchrows.h"
#include "domain/domainanalysis.h"
#include "domain/domainlog.h"
#include "domain/domainnest.h"
#include "domain/domainnestreader.h"
#include "json/jsonnumber.h"
#include "json/jsonparser.h"
#include "json/jsonreader.h"

#include <QFile>
#include <QJsonDocument>

namespace bench {

namespace {

bool readWithOurs(const std::string& path, IgnoredLog&) {
    QFile file(QString::fromStdString(path));
    json::Reader reader;
    return file.open(QIODevice::ReadOnly) && json::Parser().parse(&file, &reader);
}

bool readWithQt(const std::string& path, IgnoredLog&) {
    QFile file(QString::fromStdString(path));
    return file.open(QIODevice::ReadOnly) && !QJsonDocument::fromJson(file.readAll()).isNull();
}

void addIgnoring(Logs& logs, const LogKind& kind, const std::string& contender,
                 bool (*read)(const std::string&, IgnoredLog&), double target = 0) {
    add(
        "parse: " + nameOf(kind), contender,
        [&logs, kind, read](benchmark::State& state) {
            const LogFile& log = logs.log(kind);
            for (auto _ : state) {
                IgnoredLog ignored;
                if (!read(log.path, ignored))
                    state.SkipWithError("fails");
            }
            state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations()) * log.bytes);
        },
        target);
}

bool tallyOurs(const LogFile& log, Tally& tally) {
    QFile file(QString::fromStdString(log.path));
    domain::Analysis none;
    domain::NestReader reader(none);
    domain::Nest nest;
    reader.begin(nest);
    const bool done = file.open(QIODevice::ReadOnly) && domain::read_log(file, reader);
    tally = {nest.size(), reader.recordingCount(), reader.eventCount()};
    return done;
}

template <bool (*Read)(const std::string&, PlainLog&)>
bool tallyPlain(const LogFile& log, Tally& tally) {
    PlainLog plain;
    const bool done = Read(log.path, plain);
    tally = plain.tally();
    return done;
}

/// A document keeps one member of each name, so it holds no log's events: they are not looked for.
bool tallyQt(const LogFile& log, Tally& tally) {
    IgnoredLog ignored;
    tally = log.tally;
    return readWithQt(log.path, ignored);
}

void addEvents(Logs& logs, const LogKind& kind, const std::string& contender,
               bool (*read)(const LogFile&, Tally&), double target = 0) {
    add(
        "file to events: " + nameOf(kind), contender,
        [&logs, kind, read](benchmark::State& state) {
            const LogFile& log = logs.log(kind);
            for (auto _ : state) {
                Tally tally;
                if (!read(log, tally) || tally != log.tally)
                    state.SkipWithError("reads something else");
            }
            state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations()) * log.bytes);
        },
        target);
}

/// Some of the bare values that a short way through the parser does not take.
void addNumber(const std::string& text) {
    constexpr qsizetype READABLE = 8; // from a number's begin on
    const QString decoded = QString::fromStdString(text);
    const std::string padded = text + std::string(READABLE, ' ');
    add("number: " + text, OURS, [text, padded](benchmark::State& state) {
        double number = 0;
        for (auto _ : state) {
            const char* begin = padded.data();
            benchmark::DoNotOptimize(begin);
            benchmark::DoNotOptimize(json::to_number(begin, begin + text.size(), number));
        }
    });
    add("number: " + text, "QString::toDouble", [decoded](benchmark::State& state) {
        for (auto _ : state)
            benchmark::DoNotOptimize(decoded.toDouble());
    });
}

} // namespace

void addParsing(Logs& logs) {
    const LogKind kinds[] = {{Shape::Sessions, 300, 1},
                             {Shape::Sessions, 300, 10},
                             {Shape::Sessions, 300, 100},
                             {Shape::Sessions, 8, 10},
                             {Shape::Alternating, 1000, 10}};
    for (const LogKind& kind : kinds) {
        addIgnoring(logs, kind, OURS, readWithOurs);
        addIgnoring(logs, kind, "RapidJSON", readWithRapidJson, 2);
        addIgnoring(logs, kind, "nlohmann", readWithNlohmann);
        addIgnoring(logs, kind, "QJsonDocument", readWithQt);
        addEvents(logs, kind, OURS, tallyOurs);
        addEvents(logs, kind, "RapidJSON", tallyPlain<readWithRapidJson>, 1.5);
        addEvents(logs, kind, "nlohmann", tallyPlain<readWithNlohmann>, 5);
        addEvents(logs, kind, "QJsonDocument, the document alone", tallyQt, 5);
    }
    for (const char* number : {"345.3333435058594", "1.5e-3", "true", "null"})
        addNumber(number);
}

} // namespace bench
