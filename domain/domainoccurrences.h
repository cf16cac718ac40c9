#pragma once

#include "collections/recyclearray.h"

#include <span>

namespace domain {

/// For every position of a trace, where the same index next occurs at a position that was not
/// closed yet. Positions are closed, never opened again, so skipping closed ones takes nearly
/// constant time (disjoint sets with path compression).
class Occurrences {
public:
    /// Prepares for `trace`, which is not kept; all positions are open. False when memory is
    /// exhausted.
    bool begin(std::span<const int> trace);

    /// The next position with the same index, open or not; the trace's size when there is none.
    int next(int position) const { return mNext[position]; }

    bool isOpen(int position) const { return mOpen[position] == position; }

    /// The next open position with the same index; the trace's size when there is none.
    int nextOpen(int position) const;

    void close(int position);

private:
    bool clearTable(int size);
    int& slotOf(int index, std::span<const int> trace);

    RecycleArray<int> mNext{1, nullptr};
    mutable RecycleArray<int> mOpen{1, nullptr}; ///< Itself while open, else a later occurrence.
    RecycleArray<int> mTable{1, nullptr};        ///< Scratch: first occurrences, by their hash.
};

} // namespace domain
