#pragma once

#include "collections/recyclearray.h"

namespace ui {

/// Which leaves are selected, and which one of them is in focus, by `Leaf::mIndex`. The program
/// keeps the primary among the alternates; the class does not enforce it. Main thread only.
class LeafSelection {
public:
    LeafSelection() = default;

    LeafSelection(const LeafSelection& other) { *this = other; }

    /// Copies primary and alternates.
    LeafSelection& operator=(const LeafSelection& other);

    /// Same primary and the same alternates in the same order.
    bool operator==(const LeafSelection& other) const;

    bool hasAlternate(int index) const;

    /// The position, from 0, of the primary among the alternates, -1 when it is not there.
    int primaryIndex() const;

    int mPrimary = -1;                         ///< The leaf in focus, -1 for none.
    RecycleArray<int> mAlternates{1, nullptr}; ///< All selected leaves, as they were selected.

private:
    friend class Shared; // which hands its selection out for reading only

    /// Prepares for many calls of `hasAlternate`, which otherwise searches from end to end. From
    /// now on the alternates may be changed by assigning another selection only. A copy is not
    /// frozen.
    void freeze();

    bool mFrozen = false;
    RecycleArray<int> mSorted{1, nullptr}; // the alternates, while frozen
};

} // namespace ui
