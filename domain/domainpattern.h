#pragma once

#include "collections/recyclearray.h"

#include <span>

namespace domain {

/// A repeated run of events: the branch indices from one occurrence of an event to its next, both
/// ends included, and how often the same run was found again.
/// Invariant of the cycle builder's patterns: at least three entries, the first equal to the last.
class Pattern {
public:
    /// An empty sequence with count 0.
    Pattern() = default;

    /// Empties the sequence, keeping its storage, and sets the count to 0.
    void clear();

    /// Copies sequence and count. When storage is exhausted the sequence stays as it was.
    Pattern& operator=(const Pattern& other);

    /// Same entries in the same order, whatever the counts.
    bool isSameSequence(const Pattern& other) const;

    /// Whether the sequence is `run`.
    bool isSequence(std::span<const int> run) const;

    /// Counts one more find of the same sequence. The caller has compared the sequences; `other`'s
    /// own count does not matter.
    void merge(const Pattern& other);

    /// At least two entries, the first equal to the last.
    bool isCycle() const;

    /// Dumps the sequence on the debug stream, an entry a message.
    void print() const;

    /// The sequence, valid until it changes.
    std::span<const int> run() const;

    RecycleArray<int> mSequence{1, nullptr};
    int mCount = 0; ///< Finds after the first.
};

} // namespace domain
