#include "bench/benchrows.h"
#include "bench/benchtrace.h"
#include "domain/domaincyclebuilderiterative.h"
#include "domain/domainnest.h"
#include "domain/domaintrace.h"
#include "fuzz/plain/plaincyclebuilder.h"

#include <map>
#include <memory>
#include <numeric>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace bench {

namespace {

// A fixed list in place of all distances up to an eighth of the trace: the same work at any speed,
// whereas the program's time budget would end the long runs early.
const std::vector<int> SOME{2, 3, 4, 6, 8, 12, 16, 24, 32, 48, 64};

/// All distances of the program's own run.
std::vector<int> allOf(int events) {
    std::vector<int> distances(static_cast<std::size_t>(events / 8 - 2));
    std::iota(distances.begin(), distances.end(), 2);
    return distances;
}

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
                 const domain::Trace& trace, const std::vector<int>& distances) {
    if (!builder.begin(nest, trace))
        return;
    for (const int distance : distances)
        builder.run(distance);
}

void fill(domain::Trace& trace, const std::vector<int>& events) {
    for (const int key : events)
        trace.mIndices.add(key);
}

/// Everything new, as for the first recording of a log; making and destroying the branches does not
/// count.
void measureOurs(benchmark::State& state, const std::vector<int>& events,
                 const std::vector<int>& distances) {
    domain::Trace trace;
    fill(trace, events);
    std::unique_ptr<domain::Nest> nest;
    for (auto _ : state) {
        state.PauseTiming();
        nest = std::make_unique<domain::Nest>();
        reset(*nest);
        domain::CycleBuilderIterative builder;
        state.ResumeTiming();
        buildCycles(builder, *nest, trace, distances);
    }
}

/// With the patterns of an earlier run waiting for reuse.
void measureReused(benchmark::State& state, const std::vector<int>& events) {
    domain::Trace trace;
    fill(trace, events);
    domain::Nest nest;
    domain::CycleBuilderIterative builder;
    reset(nest);
    buildCycles(builder, nest, trace, SOME);
    for (auto _ : state) {
        state.PauseTiming();
        reset(nest);
        state.ResumeTiming();
        buildCycles(builder, nest, trace, SOME);
    }
}

template <typename Builder>
void measurePlain(benchmark::State& state, const std::vector<int>& events,
                  const std::vector<int>& distances) {
    std::unique_ptr<Builder> builder;
    for (auto _ : state) {
        state.PauseTiming();
        builder.reset();
        state.ResumeTiming();
        builder = std::make_unique<Builder>(events, std::set<int>());
        for (const int distance : distances)
            builder->pass(distance);
    }
}

/// The plain search, but a find is looked up by the hash of its sequence.
class HashedCycleBuilder : public PlainCycleBuilder {
public:
    using PlainCycleBuilder::PlainCycleBuilder;

protected:
    void merge(int branch, const std::vector<int>& sequence) override {
        const auto [known, isNew] = mCounts[branch].try_emplace(sequence, 0);
        if (!isNew)
            ++known->second;
    }

private:
    struct hash {
        std::size_t operator()(const std::vector<int>& sequence) const {
            const auto* bytes = reinterpret_cast<const char*>(sequence.data());
            return std::hash<std::string_view>()({bytes, sequence.size() * sizeof(int)});
        }
    };

    std::map<int, std::unordered_map<std::vector<int>, int, hash>> mCounts;
};

std::string nameOf(Shape shape, int size) {
    return std::string(bench::nameOf(shape)) + ", " + std::to_string(size) + " events";
}

void addTrace(Shape shape, int size) {
    const auto events = trace(shape, size, 1);
    const std::string what = "cycles: " + nameOf(shape, size);
    add(what, OURS, [events](benchmark::State& state) { measureOurs(state, events, SOME); });
    add(what, "ours, nest reused",
        [events](benchmark::State& state) { measureReused(state, events); });
    const bool hub = shape == Shape::Hub && size >= 100'000; // ten seconds
    add(
        what, "plain",
        [events](benchmark::State& state) { measurePlain<PlainCycleBuilder>(state, events, SOME); },
        hub ? 20 : 0, hub ? Length::Long : Length::Short);
}

void addAllPasses(Shape shape, double target) {
    const int size = 100'000;
    const auto events = trace(shape, size, 1);
    const auto distances = allOf(size);
    const std::string what = "cycles, all passes: " + nameOf(shape, size);
    add(what, OURS,
        [events, distances](benchmark::State& state) { measureOurs(state, events, distances); });
    add(
        what, "plain, merged by hash",
        [events, distances](benchmark::State& state) {
            measurePlain<HashedCycleBuilder>(state, events, distances);
        },
        target);
}

} // namespace

void addCycleBuilding() {
    for (const Shape shape :
         {Shape::Uniform, Shape::Skewed, Shape::Noisy, Shape::Hub, Shape::Alternating}) {
        for (const int size : {1'000, 10'000, 100'000})
            addTrace(shape, size);
    }
    addAllPasses(Shape::Hub, 0);
    for (const Shape shape : {Shape::Alternating, Shape::Periodic, Shape::Fibonacci})
        addAllPasses(shape, 5);
}

} // namespace bench
