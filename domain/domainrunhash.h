#pragma once

#include "collections/recyclearray.h"

#include <QtGlobal>

#include <span>

namespace domain {

/// Fingerprints of the runs of one trace, each in constant time however long it is.
class RunHash {
public:
    /// The hash of a run by itself, equal to that of the same run in a trace, never 0. Linear.
    static quint32 of(std::span<const int> run);

    /// Prepares for the runs of `trace`, which is not kept. False when memory is exhausted.
    bool begin(std::span<const int> trace);

    /// All 61 bits of what the hash of such a run is made of. Enough to tell runs apart without
    /// comparing them: that two of a million different runs of a thousand steps have the same is
    /// less likely than one in thousands, whatever the log.
    quint64 wholeOf(int first, int last) const;

    /// The hash of the run from position `first` to `last`, both included.
    quint32 of(int first, int last) const;

private:
    bool extendPowers(int size);

    RecycleArray<quint64> mPrefixes{1, nullptr}; ///< Slot k: the hash of the first k entries.
    RecycleArray<quint64> mPowers{1, nullptr};   ///< Of the base; kept from trace to trace.
};

} // namespace domain
