#include "bench/benchtable.h"

#include "bench/benchrows.h"

#include <array>
#include <cstdio>
#include <iostream>

namespace bench {

namespace {

template <typename... Values>
std::string format(const char* form, Values... values) {
    std::array<char, 256> text{};
    std::snprintf(text.data(), text.size(), form, values...);
    return text.data();
}

std::string threeDigits(double value) {
    const int decimals = value < 10 ? 2 : value < 100 ? 1 : 0;
    return format("%.*f", decimals, value);
}

std::string timeOf(double seconds) {
    if (seconds < 1e-3)
        return threeDigits(seconds * 1e6) + " us";
    if (seconds < 1)
        return threeDigits(seconds * 1e3) + " ms";
    return threeDigits(seconds) + " s";
}

void printColumns(std::ostream& out, const std::string& what, const std::string& ours,
                  const std::string& other, const std::string& ratio, const std::string& target) {
    out << format("%-58s %10s   %-46s %8s   %s", what.c_str(), ours.c_str(), other.c_str(),
                  ratio.c_str(), target.c_str())
        << std::endl;
}

/// As in ">= 5", and whether it was missed.
std::string targetText(double target, double ratio, bool atMost) {
    if (target <= 0)
        return "";
    const bool reached = atMost ? ratio <= target : ratio >= target;
    return (atMost ? "<= " : ">= ") + format("%g", target) + (reached ? "" : ", missed");
}

} // namespace

void Table::ReportRuns(const std::vector<Run>& runs) {
    for (const Run& run : runs) {
        const bool median = run.run_type == Run::RT_Aggregate && run.aggregate_name == "median";
        if (median || run.run_type == Run::RT_Iteration)
            mResults[run.family_index] = resultOf(run);
    }
    std::cerr << "." << std::flush;
}

void Table::Finalize() {
    std::cerr << std::endl;
    printColumns(GetOutputStream(), "what", "ours", "peer or plain form", "ratio", "target");
    const result* ours = nullptr;
    for (const auto& [index, measured] : mResults) {
        if (ours && ours->what == measured.what)
            printLine(*ours, measured);
        else
            ours = &measured;
    }
}

Table::result Table::resultOf(const Run& run) {
    const std::string& name = run.run_name.function_name;
    const std::size_t slash = name.rfind('/');
    result made{name.substr(0, slash), name.substr(slash + 1), run.error_message};
    if (run.error_occurred)
        return made;
    const auto bytes = run.counters.find(BYTES);
    if (bytes != run.counters.end()) {
        made.memory = true;
        made.cost = bytes->second.value;
        made.figure = threeDigits(made.cost / 1e6) + " MB";
        return made;
    }
    const auto seconds = run.counters.find(SECONDS);
    made.cost = seconds != run.counters.end()
                    ? seconds->second.value
                    : run.GetAdjustedCPUTime() / benchmark::GetTimeUnitMultiplier(run.time_unit);
    const auto speed = run.counters.find("bytes_per_second");
    made.figure = speed == run.counters.end() ? timeOf(made.cost)
                                              : threeDigits(speed->second.value / 1e6) + " MB/s";
    return made;
}

void Table::printLine(const result& ours, const result& other) {
    const bool both = ours.cost > 0 && other.cost > 0;
    const double ratio = !both ? 0 : ours.memory ? ours.cost / other.cost : other.cost / ours.cost;
    printColumns(GetOutputStream(), ours.what, ours.figure, other.contender + ": " + other.figure,
                 both ? threeDigits(ratio) : "",
                 targetText(targetOf(ours.what, other.contender), ratio, ours.memory));
}

} // namespace bench
