#include "bench/benchrows.h"
#include "bench/benchtrace.h"
#include "domain/domaincyclebuilderiterative.h"
#include "domain/domainnest.h"
#include "domain/domaintrace.h"
#include "fuzz/plain/plaincyclebuilder.h"

#include <memory>
#include <vector>

namespace bench {

namespace {

// A fixed list in place of all distances up to an eighth of the trace: the same work at any speed,
// whereas the program's time budget would end the long runs early.
constexpr int DISTANCES[] = {2, 3, 4, 6, 8, 12, 16, 24, 32, 48, 64};

/// Makes `nest` hold one "down" branch for every key and no pattern.
void reset(domain::Nest& nest) {
    domain::Branch branch;
    branch.mGesture = domain::GESTURE_DOWN;
    nest.clear();
    for (int key = 0; key < KEYS; ++key) {
        branch.mKey = QString::number(key);
        nest.set(key, branch);
    }
}

void buildCycles(domain::CycleBuilderIterative& builder, domain::Nest& nest,
                 const domain::Trace& trace) {
    if (!builder.begin(nest, trace))
        return;
    for (const int distance : DISTANCES)
        builder.run(distance);
}

void fill(domain::Trace& trace, const std::vector<int>& events) {
    for (const int key : events)
        trace.mIndices.add(key);
}

/// Everything new, as for the first recording of a log; making and destroying the branches does not
/// count.
void measureOurs(benchmark::State& state, const std::vector<int>& events) {
    domain::Trace trace;
    fill(trace, events);
    std::unique_ptr<domain::Nest> nest;
    for (auto _ : state) {
        state.PauseTiming();
        nest = std::make_unique<domain::Nest>();
        reset(*nest);
        domain::CycleBuilderIterative builder;
        state.ResumeTiming();
        buildCycles(builder, *nest, trace);
    }
}

/// With the patterns of an earlier run waiting for reuse.
void measureReused(benchmark::State& state, const std::vector<int>& events) {
    domain::Trace trace;
    fill(trace, events);
    domain::Nest nest;
    domain::CycleBuilderIterative builder;
    reset(nest);
    buildCycles(builder, nest, trace);
    for (auto _ : state) {
        state.PauseTiming();
        reset(nest);
        state.ResumeTiming();
        buildCycles(builder, nest, trace);
    }
}

void measurePlain(benchmark::State& state, const std::vector<int>& events) {
    std::unique_ptr<PlainCycleBuilder> builder;
    for (auto _ : state) {
        state.PauseTiming();
        builder.reset();
        state.ResumeTiming();
        builder = std::make_unique<PlainCycleBuilder>(events, std::set<int>());
        for (const int distance : DISTANCES)
            builder->pass(distance);
    }
}

void addTrace(Shape shape, int size) {
    const auto events = trace(shape, size, 1);
    const std::string what =
        "cycles: " + std::string(nameOf(shape)) + ", " + std::to_string(size) + " events";
    add(what, OURS, [events](benchmark::State& state) { measureOurs(state, events); });
    add(what, "ours, nest reused",
        [events](benchmark::State& state) { measureReused(state, events); });
    const bool slow = shape == Shape::Hub && size >= 100'000; // ten seconds
    add(
        what, "plain", [events](benchmark::State& state) { measurePlain(state, events); },
        slow ? Length::Long : Length::Short);
}

} // namespace

void addCycleBuilding() {
    for (const Shape shape :
         {Shape::Uniform, Shape::Skewed, Shape::Periodic, Shape::Hub, Shape::Alternating}) {
        for (const int size : {1'000, 10'000, 100'000})
            addTrace(shape, size);
    }
}

} // namespace bench
