#include "bench/benchimport.h"

#include "bench/benchcsv.h"
#include "bench/benchmemory.h"
#include "bench/benchpeers.h"
#include "bench/benchplaywright.h"
#include "bench/benchrows.h"
#include "bench/benchrrweb.h"
#include "import/importfiles.h"

#include <QCoreApplication>
#include <QProcess>
#include <QTemporaryDir>
#include <QTemporaryFile>

#include <cstdio>
#include <memory>
#include <optional>
#include <stdexcept>

namespace bench {

namespace {

constexpr int MEGABYTES = 100;
constexpr double BESIDE_LARGEST = 64e6; // bytes that an import may take beside its largest event

/// Made when first asked for.
template <typename File>
class Made {
public:
    using Write = File (*)(int, const std::string&);

    explicit Made(Write write)
        : mWrite(write) {}

    const File& file() {
        if (!mFile)
            mFile = mWrite(MEGABYTES, mFolder.filePath(QStringLiteral("made")).toStdString());
        return *mFile;
    }

private:
    Write mWrite;
    QTemporaryDir mFolder;
    std::optional<File> mFile;
};

struct Recordings {
    Made<RrwebFile> rrweb{writeRrweb};
    Made<CsvFile> csv{writeCsv};
    Made<PlaywrightFile> playwright{writePlaywright};
};

const QStringList OF_RRWEB;
const QStringList OF_CSV{QStringLiteral("--key"),     QStringLiteral("app,element"),
                         QStringLiteral("--gesture"), QStringLiteral("event"),
                         QStringLiteral("--map"),     QStringLiteral("*down=down,*up=up,*=skip"),
                         QStringLiteral("--x"),       QStringLiteral("x"),
                         QStringLiteral("--y"),       QStringLiteral("y")};

/// As the program does, into a temporary file. The number of events; throws when it cannot.
std::int64_t importAll(const QStringList& arguments) {
    const import::options options =
        import::parse_options(QStringList{QStringLiteral("quillon-import")} + arguments);
    QTemporaryFile output;
    output.open();
    import::KeyTable keys(options.rules);
    import::LogWriter log(output);
    import::Collector into(keys, log);
    for (const QString& path : options.files) {
        if (import::read_file(path, options, into).kind != import::outcome::Kind::Whole)
            throw std::runtime_error("cannot be imported");
        into.endRecording();
    }
    if (!log.finish() || !output.flush())
        throw std::runtime_error("cannot be written");
    return into.events();
}

void measureImport(benchmark::State& state, const std::string& path, const QStringList& how,
                   std::int64_t events) {
    for (auto _ : state) {
        if (importAll(QStringList(how) << QString::fromStdString(path)) != events)
            state.SkipWithError("finds something else");
    }
}

void measureNlohmann(benchmark::State& state, const std::string& path) {
    for (auto _ : state) {
        if (elementsWithNlohmann(path) == 0)
            state.SkipWithError("does not read");
    }
}

/// Python's own module, timed by itself without its start.
void measurePython(benchmark::State& state, const std::string& path) {
    const QString script = QStringLiteral("import csv, sys, time\n"
                                          "start = time.process_time()\n"
                                          "with open(sys.argv[1], newline='') as file:\n"
                                          "    for row in csv.reader(file):\n"
                                          "        pass\n"
                                          "print(time.process_time() - start)\n");
    for (auto _ : state) {
        QProcess python;
        python.start(QStringLiteral("python3"),
                     {QStringLiteral("-c"), script, QString::fromStdString(path)});
        python.waitForFinished(-1);
        const double seconds = python.readAllStandardOutput().toDouble();
        if (seconds <= 0)
            state.SkipWithError("does not run");
        state.counters[SECONDS] = seconds;
    }
}

void measureMemory(benchmark::State& state, const std::string& path, const QStringList& how) {
    for (auto _ : state) {
        QProcess process;
        process.start(QCoreApplication::applicationFilePath(),
                      QStringList(QStringLiteral("--import"))
                          << how << QString::fromStdString(path));
        process.waitForFinished(-1);
        const double kilobytes = process.readAllStandardOutput().toDouble();
        if (kilobytes <= 0)
            state.SkipWithError("does not import");
        state.counters[BYTES] = kilobytes * 1024;
    }
}

void addMemoryRow(const std::string& name, const QStringList& how,
                  const std::function<std::string()>& path,
                  const std::function<qint64()>& largestEvent) {
    const std::string what = "peak memory of an import: " + name;
    add(what, OURS, [=](benchmark::State& state) { measureMemory(state, path(), how); });
    add(
        what, "64 MB and the largest event",
        [=](benchmark::State& state) {
            for (auto _ : state)
                state.counters[BYTES] = BESIDE_LARGEST + static_cast<double>(largestEvent());
        },
        1);
}

} // namespace

void addImport() {
    const auto made = std::make_shared<Recordings>();
    const std::string rrweb = "import: rrweb, 100 MB";
    add(rrweb, OURS, [=](benchmark::State& state) {
        const RrwebFile& file = made->rrweb.file();
        measureImport(state, file.path, OF_RRWEB, 2 * file.presses);
    });
    add(
        rrweb, "nlohmann",
        [=](benchmark::State& state) { measureNlohmann(state, made->rrweb.file().path); }, 4);
    const std::string csv = "import: CSV, 100 MB";
    add(csv, OURS, [=](benchmark::State& state) {
        const CsvFile& file = made->csv.file();
        measureImport(state, file.path, OF_CSV, file.events);
    });
    add(
        csv, "Python's csv",
        [=](benchmark::State& state) { measurePython(state, made->csv.file().path); }, 5);
    addMemoryRow(
        "rrweb, 100 MB", OF_RRWEB, [=] { return made->rrweb.file().path; },
        [=] { return made->rrweb.file().largestEvent; });
    addMemoryRow(
        "CSV, 100 MB", OF_CSV, [=] { return made->csv.file().path; }, [] { return qint64(0); });
    addMemoryRow(
        "zip, 100 MB unpacked", {}, [=] { return made->playwright.file().path; },
        [=] { return made->playwright.file().largestEvent; });
}

int importAndReport(int count, char** arguments) {
    QCoreApplication application(count, arguments);
    importAll(QCoreApplication::arguments().mid(2));
    std::printf("%ld\n", peakKilobytes());
    return 0;
}

} // namespace bench
