#include "bench/benchlogs.h"
#include "bench/benchrows.h"
#include "bench/benchtable.h"

#include <benchmark/benchmark.h>

int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 2;
    bench::Logs logs;
    bench::addParsing(logs);
    bench::addReading(logs);
    bench::addCycleBuilding();
    bench::addMerging();
    bench::Table table;
    benchmark::RunSpecifiedBenchmarks(&table);
}
