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

/// Adds a measurement of what `contender` does to the table. Those of the same `what` follow each
/// other, `OURS` first; `what` holds no slash.
void add(const std::string& what, const std::string& contender, Measure measure,
         Length length = Length::Short);

// The parts of the table. `logs` outlives the run.

void addParsing(Logs& logs);
void addReading(Logs& logs);
void addCycleBuilding();
void addMerging();

} // namespace bench
