#include "bench/benchimport.h"
#include "bench/benchlogs.h"
#include "bench/benchmemory.h"
#include "bench/benchreport.h"
#include "bench/benchrows.h"
#include "bench/benchtable.h"

#include <QCoreApplication>

#include <benchmark/benchmark.h>

#include <string_view>

int main(int argc, char** argv) {
    if (argc == 3 && argv[1] == std::string_view("--load"))
        return bench::loadAndReport(argv[2]);
    if (argc > 2 && argv[1] == std::string_view("--import"))
        return bench::importAndReport(argc, argv);
    if (argc > 3 && argv[1] == std::string_view("--report"))
        return bench::readAndReport(argc, argv);
    const QCoreApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 2;
    bench::Logs logs;
    bench::addParsing(logs);
    bench::addReading(logs);
    bench::addMemory(logs);
    bench::addCycleBuilding();
    bench::addImport();
    bench::addMerging();
    bench::addReport();
    bench::Table table;
    benchmark::RunSpecifiedBenchmarks(&table);
}
