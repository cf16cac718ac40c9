#pragma once

#include "collections/clearingfactory.h"
#include "collections/managedlist.h"
#include "collections/recyclearray.h"
#include "ui/leaves/uileaf.h"

namespace ui {

/// The leaves of the shown nest, from the one added last to the one added first; every walk over
/// the leaves has that order. Owns its leaves and recycles them. Main thread only.
///
/// Invariant: after the first look-up since the last `clear`, whoever changes a leaf's `mIndex` by
/// hand gives it one that no other leaf has; else a look-up may find the other.
class LeafList : public ManagedList<Leaf*> {
public:
    class Factory : public ClearingFactory<Leaf> {
    public:
        using ClearingFactory::ClearingFactory;
        Leaf* setObject(Leaf* to, Leaf* from) const override;
        /// Menu leaves last, by key; the others from top to bottom.
        int sortObject(Leaf* a, Leaf* b) const override;
    };

    LeafList();

    void clear() override;

    /// Puts a copy of `leaf`, its position aside, in front. Throws `std::exception` when no leaf
    /// can be made.
    void add(const Leaf& leaf);

    /// How many menu leaves were added since the last `clear`.
    int menuCount() const { return mMenuCount; }

    /// The first leaf in list order whose `mIndex` is `index`; null without one and for a negative
    /// index. Takes no walk where the indices run from 0 without gaps, as those of a nest do.
    Leaf* leafAt(int index) const;

    /// The branch of `leafAt(index)`, or null.
    const domain::Branch* branchAt(int index) const;

    /// The highest rank of the leaves' branches now, at least 0.
    int maxPatternCount() const;

    /// The largest pattern weight of the leaves' branches now, at least 0.
    int maxPatternWeight() const;

    /// Dumps the leaves on the debug stream, one a message.
    void print() const;

private:
    // With these two lists of different leaves could be as long.
    using ManagedList::moveFrontTo;
    using ManagedList::moveTo;
    using ManagedList::moveToRetired;
    using ManagedList::moveWaitingTo;
    using ManagedList::popFront;

    void indexLeaves() const;
    Leaf* walkTo(int index) const;
    int largest(int (domain::Branch::*measure)() const) const;

    int mMenuCount = 0;

    // The leaves by index, as found at a look-up; as long as the list was then. Emptied by `clear`,
    // between two of which the list only grows.
    mutable RecycleArray<Leaf*> mByIndex{1, nullptr};
};

} // namespace ui
