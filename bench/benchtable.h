#pragma once

#include <benchmark/benchmark.h>

#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace bench {

/// Collects the medians of a run and prints them as one table when it ends: a line for every
/// contender but ours, ours beside it, how many times as fast ours is, by processor time, or how
/// many times the memory it takes, and what that ratio should be.
class Table : public benchmark::BenchmarkReporter {
public:
    bool ReportContext(const Context&) override { return true; }

    void ReportRuns(const std::vector<Run>& runs) override;
    void Finalize() override;

private:
    struct result {
        std::string what;
        std::string contender;
        std::string figure;  ///< A speed, a time, a size, or why there is none.
        double cost = 0;     ///< Seconds an iteration, or bytes; 0 when there is no figure.
        bool memory = false; ///< The cost is bytes.
    };

    static result resultOf(const Run& run);
    void printLine(const result& ours, const result& other);

    std::map<std::int64_t, result> mResults; ///< In the order in which they were added.
};

} // namespace bench
