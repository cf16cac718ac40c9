#include "bench/benchrows.h"

#include <map>
#include <utility>

namespace bench {

namespace {

constexpr int REPETITIONS = 5;

/// Debian's Qt 6.4 hashes strings with 256-bit registers and leaves their upper halves in use; all
/// code after that runs slower, up to half as fast, until they are released. A contender bears that
/// for its own hashing only.
void releaseVectorRegisters() {
#ifdef __x86_64__
    if (__builtin_cpu_supports("avx"))
        __asm__ volatile("vzeroupper");
#endif
}

std::string nameOf(const std::string& what, const std::string& contender) {
    return what + "/" + contender;
}

std::map<std::string, double>& targets() {
    static std::map<std::string, double> all;
    return all;
}

} // namespace

void add(const std::string& what, const std::string& contender, Measure measure, double target,
         Length length) {
    const std::string name = nameOf(what, contender);
    targets()[name] = target;
    auto* added = benchmark::RegisterBenchmark(
        name.c_str(), [measure = std::move(measure)](benchmark::State& state) {
            releaseVectorRegisters();
            measure(state);
        });
    if (length == Length::Long)
        added->Iterations(1);
    else
        added->Repetitions(REPETITIONS)->ReportAggregatesOnly();
}

double targetOf(const std::string& what, const std::string& contender) {
    return targets()[nameOf(what, contender)];
}

} // namespace bench
