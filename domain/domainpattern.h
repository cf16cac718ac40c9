#pragma once

#include "collections/recyclearray.h"

#include <QtGlobal>

#include <span>

namespace domain {

/// A repeated run of events: the branch indices from one occurrence of an event to its next, both
/// ends included, and how often the same run was found again.
/// Invariant of the cycle builder's patterns: at least three entries, the first equal to the last.
/// Their sequences are pieces of the trace in which they were found, which all of them share.
class Pattern {
public:
    /// An empty sequence with count 0.
    Pattern() = default;

    /// Empties the sequence, keeping storage of its own, and sets the count to 0.
    void clear();

    /// Copies sequence and count; a piece of a trace stays one. When storage is exhausted the
    /// sequence stays as it was.
    Pattern& operator=(const Pattern& other);

    /// Same entries in the same order, whatever the counts.
    bool isSameSequence(const Pattern& other) const;

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

private:
    friend class PatternList;
    quint32 mHash = 0; ///< Of the sequence while a list holds the pattern; 0 if it is not known.
};

} // namespace domain
