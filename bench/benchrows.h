#pragma once

#include <benchmark/benchmark.h>

#include <functional>
#include <string>

namespace bench {

class Logs;

using Measure = std::function<void(benchmark::State&)>;

/// The contender that the others of its row are compared with.
inline constexpr char OURS[] = "ours";

enum class Length {
    Short, ///< The median of five repetitions.
    Long   ///< One run.
};

/// Name of the counter of a measurement of memory in bytes, in place of time.
inline constexpr char BYTES[] = "bytes";

/// Name of the counter of seconds that count in the place of this thread's processor time: those of
/// another process, or by the clock.
inline constexpr char SECONDS[] = "seconds";

/// Adds a measurement of what `contender` does to the table. Those of the same `what` follow each
/// other, `OURS` first; `what` holds no slash. `target`: how many times as fast as this contender
/// ours should be, or at most how many times its bytes ours may take; 0 for none.
void add(const std::string& what, const std::string& contender, Measure measure, double target = 0,
         Length length = Length::Short);

/// The target given to `add` with these names.
double targetOf(const std::string& what, const std::string& contender);

// The parts of the table. `logs` outlives the run.

void addParsing(Logs& logs);
void addReading(Logs& logs);
void addMemory(Logs& logs);
void addCycleBuilding();
void addImport();
void addMerging();
void addReport();

} // namespace bench
