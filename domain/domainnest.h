#pragma once

#include "collections/clearingfactory.h"
#include "collections/recyclearray.h"
#include "domain/domainbranch.h"
#include "domain/domainusedslots.h"

namespace domain {

/// The branches of a trace log by their index, which is their identity throughout the program. A
/// slot with an invalid branch is a free index. The nest owns its branches, recycles them, and
/// deletes them only when it is destroyed. Used by one thread at a time.
class Nest {
public:
    class Factory : public ClearingFactory<Branch> {
    public:
        using ClearingFactory::ClearingFactory;
        Branch* setObject(Branch* target, Branch* source) const override;
    };

    Nest();

    int size() const { return mSize; }

    /// The branch in slot `index`, null outside the nest and where none could be made. As it may be
    /// changed, asking a nest that is not const counts the slot as used.
    Branch* branchAt(int index);
    const Branch* branchAt(int index) const;

    /// Appends a free slot. False when there is no memory for it or its branch.
    bool addSlot();

    /// Makes slot `index` a copy of `branch`, growing the nest by free slots up to it. False for a
    /// negative index or when memory is exhausted.
    bool set(int index, const Branch& branch);

    /// Folds `branch` into a valid branch in slot `index`, otherwise sets the slot. False when the
    /// keys differ or `set` fails.
    bool merge(int index, const Branch& branch);

    /// As `merge`, but `branch`'s patterns move here instead of being copied: they may be most of
    /// the memory.
    bool take(int index, Branch& branch);

    /// Makes this nest a copy of `other`, as far as memory allows; false when it does not.
    bool setTo(const Nest& other);

    /// Exchanges the branches, without a copy.
    void swap(Nest& other);

    /// Merges slot by slot; false when any slot failed.
    bool merge(const Nest& other);

    /// Drops all slots; the branches are kept for reuse. They are not changed any more from
    /// outside.
    void clear();

    /// The slots, in no order, that may hold something: all others hold invalid branches. A short
    /// recording thus costs what it holds, however many keys the log has. Not for an empty nest.
    const RecycleArray<int>& usedSlots() const { return mUsed.all(); }

    /// Dumps the branches on the debug stream, one a message.
    void print() const;

private:
    Branch* slotAt(int index);
    bool growTo(int count);
    void resetKept();

    ManagedArray<Branch*> mBranches; ///< Never shrinks.
    UsedSlots mUsed;
    int mSize = 0;           ///< Slots that are not dropped.
    bool mKeepsLast = false; ///< Used slots are those from before a clear, not reset yet.
    bool mHasGaps = false;   ///< Slots lack a branch, for want of memory; filled after a clear.
};

} // namespace domain
