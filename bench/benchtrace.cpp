#include "bench/benchtrace.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>
#include <random>

namespace bench {

namespace {

constexpr int PERIOD = 24;
constexpr std::size_t ROUTINES = 8;
constexpr int SHORTEST_ROUTINE = 3;
constexpr int LONGEST_ROUTINE = 9;

// The distributions of the standard library differ from one to the next; the generator does not.
int below(int limit, std::mt19937& rng) {
    return static_cast<int>(rng() % static_cast<unsigned>(limit));
}

int uniformKey(std::mt19937& rng) {
    return below(KEYS, rng);
}

std::array<double, KEYS> zipfSums() {
    std::array<double, KEYS> sums{};
    double sum = 0;
    for (std::size_t key = 0; key < sums.size(); ++key)
        sums[key] = sum += 1.0 / static_cast<double>(key + 1);
    return sums;
}

int skewedKey(std::mt19937& rng) {
    static const std::array<double, KEYS> SUMS = zipfSums();
    const double at = SUMS.back() * static_cast<double>(rng()) / 4294967296.0;
    return static_cast<int>(std::upper_bound(SUMS.begin(), SUMS.end(), at) - SUMS.begin());
}

/// By the golden ratio, which gives the letters of the word without making the word.
int fibonacciKey(int position) {
    const auto floors = [](int n) { return std::floor((n + 1) / std::numbers::phi); };
    return floors(position + 1) > floors(position) ? 0 : 1;
}

int keyAt(Shape shape, int position, std::mt19937& rng) {
    switch (shape) {
    case Shape::Skewed:
        return skewedKey(rng);
    case Shape::Noisy:
        return below(16, rng) == 0 ? uniformKey(rng) : position % PERIOD;
    case Shape::Periodic:
        return position % PERIOD;
    case Shape::Hub:
        return position % 2 == 0 ? 0 : uniformKey(rng);
    case Shape::Alternating:
        return position % 2;
    case Shape::Fibonacci:
        return fibonacciKey(position);
    case Shape::Uniform:
    case Shape::Sessions:
        break;
    }
    return uniformKey(rng);
}

using Routines = std::array<std::vector<int>, ROUTINES>;

/// Every routine comes back to the key that it began with.
Routines routines() {
    std::mt19937 rng(8);
    Routines all;
    for (std::vector<int>& routine : all) {
        routine.resize(static_cast<std::size_t>(
            SHORTEST_ROUTINE + below(LONGEST_ROUTINE - SHORTEST_ROUTINE + 1, rng)));
        for (int& key : routine)
            key = uniformKey(rng);
        routine.back() = routine.front();
    }
    return all;
}

std::vector<int> sessions(std::size_t size, std::mt19937& rng) {
    static const Routines ALL = routines();
    std::vector<int> events;
    while (events.size() < size) {
        const std::vector<int>& routine = ALL[rng() % ALL.size()];
        events.insert(events.end(), routine.begin(), routine.end());
        if (below(2, rng) == 0)
            events.push_back(uniformKey(rng));
    }
    events.resize(size);
    return events;
}

} // namespace

const char* nameOf(Shape shape) {
    switch (shape) {
    case Shape::Uniform:
        return "uniform";
    case Shape::Skewed:
        return "skewed";
    case Shape::Noisy:
        return "noisy";
    case Shape::Periodic:
        return "periodic";
    case Shape::Hub:
        return "hub";
    case Shape::Alternating:
        return "alternating";
    case Shape::Fibonacci:
        return "Fibonacci";
    case Shape::Sessions:
        return "sessions";
    }
    return "";
}

std::vector<int> trace(Shape shape, int size, unsigned seed) {
    std::mt19937 rng(seed);
    if (shape == Shape::Sessions)
        return sessions(static_cast<std::size_t>(size), rng);
    std::vector<int> events;
    for (int position = 0; position < size; ++position)
        events.push_back(keyAt(shape, position, rng));
    return events;
}

} // namespace bench
