#pragma once

#include <vector>

namespace bench {

/// How the events of a recording follow each other.
enum class Shape {
    Uniform,     ///< Any key as likely as any other.
    Skewed,      ///< Zipf's law: the k-th key comes a k-th as often as the first.
    Noisy,       ///< The same 24 keys over and over, one event in 16 replaced by a random one.
    Periodic,    ///< The same 24 keys over and over.
    Hub,         ///< Key 0 at every other event, random keys between.
    Alternating, ///< Two keys in turn.
    Fibonacci,   ///< The Fibonacci word of two keys: repetitions of every length, never a period.
    Sessions     ///< Eight routines of 3 to 9 keys in random order, with stray events between them.
};

/// Number of distinct keys that a trace may hold.
constexpr int KEYS = 200;

/// As in "skewed".
const char* nameOf(Shape shape);

/// `size` branch indices below `KEYS`; the same arguments give the same trace.
std::vector<int> trace(Shape shape, int size, unsigned seed);

} // namespace bench
