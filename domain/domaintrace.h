#pragma once

#include "collections/recyclearray.h"

namespace domain {

/// The branch indices of one recording's events in the order they happened.
class Trace {
public:
    Trace() = default;

    /// The index at position `index`, or -1 outside the trace.
    int at(int index) const;

    Trace& operator=(const Trace& other);

    RecycleArray<int> mIndices{256, nullptr};
};

} // namespace domain
