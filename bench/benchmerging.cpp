#include "bench/benchrows.h"
#include "domain/domainpattern.h"
#include "domain/domainpatternlist.h"

#include <algorithm>
#include <cstddef>
#include <map>
#include <memory>
#include <numeric>
#include <random>
#include <utility>
#include <vector>

namespace bench {

namespace {

using Sequence = std::vector<int>;
using Sequences = std::vector<Sequence>;

/// `count` sequences in random order, `distinct` different ones among them, of 3 to 34 entries, all
/// from branch 0 to branch 0 as on one branch of a nest.
Sequences makeSequences(std::size_t count, std::size_t distinct) {
    std::mt19937 rng(1);
    Sequences sequences(count);
    for (std::size_t i = 0; i < count; ++i) {
        if (i >= distinct) {
            sequences[i] = sequences[i % distinct];
            continue;
        }
        sequences[i].resize(3 + rng() % 32);
        for (int& index : sequences[i])
            index = 1 + static_cast<int>(rng() % 1'000'000); // next to no two the same by chance
        sequences[i].front() = sequences[i].back() = 0;
    }
    std::shuffle(sequences.begin(), sequences.end(), rng);
    return sequences;
}

using Patterns = std::unique_ptr<domain::Pattern[]>;

Patterns makePatterns(const Sequences& sequences) {
    auto patterns = std::make_unique<domain::Pattern[]>(sequences.size());
    for (std::size_t i = 0; i < sequences.size(); ++i) {
        for (const int index : sequences[i])
            patterns[i].mSequence.add(index);
    }
    return patterns;
}

void mergeAll(domain::PatternList& list, const Patterns& patterns, std::size_t count) {
    for (std::size_t i = 0; i < count; ++i)
        list.merge(patterns[i]);
    benchmark::DoNotOptimize(list.size());
}

/// Into a new list, which is destroyed again; so do the others.
void measureOurs(benchmark::State& state, const Sequences& sequences) {
    const Patterns patterns = makePatterns(sequences);
    for (auto _ : state) {
        domain::PatternList list;
        mergeAll(list, patterns, sequences.size());
    }
}

/// Into a cleared list, whose patterns wait for reuse.
void measureRefilled(benchmark::State& state, const Sequences& sequences) {
    const Patterns patterns = makePatterns(sequences);
    domain::PatternList list;
    mergeAll(list, patterns, sequences.size());
    for (auto _ : state) {
        list.clear();
        mergeAll(list, patterns, sequences.size());
    }
}

void measureLinear(benchmark::State& state, const Sequences& sequences) {
    for (auto _ : state) {
        std::vector<std::pair<Sequence, int>> list;
        for (const Sequence& sequence : sequences) {
            const auto known = std::find_if(list.begin(), list.end(), [&](const auto& entry) {
                return entry.first == sequence;
            });
            if (known == list.end())
                list.emplace_back(sequence, 0);
            else
                ++known->second;
        }
        benchmark::DoNotOptimize(list.data());
    }
}

void measureMap(benchmark::State& state, const Sequences& sequences) {
    for (auto _ : state) {
        std::map<Sequence, int> map;
        for (const Sequence& sequence : sequences)
            ++map[sequence];
        benchmark::DoNotOptimize(map.size());
    }
}

void addMerge(const std::string& what, const Sequences& sequences, Length linear) {
    add(what, OURS, [sequences](benchmark::State& state) { measureOurs(state, sequences); });
    add(what, "ours, list refilled",
        [sequences](benchmark::State& state) { measureRefilled(state, sequences); });
    add(
        what, "linear search",
        [sequences](benchmark::State& state) { measureLinear(state, sequences); }, 0, linear);
    add(what, "std::map", [sequences](benchmark::State& state) { measureMap(state, sequences); });
}

/// All patterns of a hub of 100,000 events and more are on a few branches; here as many on each.
constexpr std::size_t LISTS = 200;
constexpr std::size_t RANKED = 585'000 / LISTS;

using Lists = std::vector<std::unique_ptr<domain::PatternList>>;

Lists makeLists() {
    const Sequences sequences = makeSequences(RANKED, RANKED);
    const Patterns patterns = makePatterns(sequences);
    Lists lists;
    for (std::size_t i = 0; i < LISTS; ++i) {
        lists.push_back(std::make_unique<domain::PatternList>());
        mergeAll(*lists.back(), patterns, sequences.size());
    }
    return lists;
}

void measureRanks(benchmark::State& state) {
    const Lists lists = makeLists();
    for (auto _ : state) {
        for (const auto& list : lists)
            benchmark::DoNotOptimize(list->maxCount() + list->weight());
    }
}

void measureWalkedRanks(benchmark::State& state) {
    const Lists lists = makeLists();
    for (auto _ : state) {
        for (const auto& list : lists) {
            int most = 0;
            int weight = 0;
            for (const domain::Pattern* pattern : list->reading()) {
                most = std::max(most, pattern->mCount);
                weight += pattern->mCount + 1;
            }
            benchmark::DoNotOptimize(most + weight);
        }
    }
}

} // namespace

void addMerging() {
    for (const std::size_t count : {100, 1'000, 10'000, 100'000}) {
        const std::string what = "merge: " + std::to_string(count);
        const Length linear = count < 100'000 ? Length::Short : Length::Long;
        addMerge(what + " distinct", makeSequences(count, count), linear);
        addMerge(what + ", each 10 times", makeSequences(count, count / 10), Length::Short);
    }
    add("ranks and weights: 585000 patterns", OURS, measureRanks);
    add("ranks and weights: 585000 patterns", "a walk", measureWalkedRanks, 25);
}

} // namespace bench
