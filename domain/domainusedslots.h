#pragma once

#include "collections/recyclearray.h"

#include <utility>

namespace domain {

/// A set of slot numbers, from 0, in the order in which they were added. Emptying it costs what it
/// holds, not what it could hold.
class UsedSlots {
public:
    /// Makes room for the slots below `count`. False when memory is exhausted.
    bool makeRoom(int count) {
        const int room = mIsUsed.size();
        const int used = mUsed.size();
        if (count <= room)
            return true;
        if (!mUsed.setSize(count))
            return false;
        mUsed.setSize(used);
        if (!mIsUsed.setSize(count))
            return false;
        for (int slot = room; slot < count; ++slot)
            mIsUsed[slot] = 0;
        return true;
    }

    /// Adds a slot that there is room for, unless it is there.
    void add(int slot) {
        if (!std::exchange(mIsUsed[slot], 1))
            mUsed.add(slot);
    }

    void clear() {
        for (const int slot : mUsed)
            mIsUsed[slot] = 0;
        mUsed.setSize(0);
    }

    const RecycleArray<int>& all() const { return mUsed; }

    void swap(UsedSlots& other) {
        mUsed.swap(other.mUsed);
        mIsUsed.swap(other.mIsUsed);
    }

private:
    static constexpr int STEP = 1024; // slots come one by one

    RecycleArray<int> mUsed{STEP, nullptr};
    RecycleArray<char> mIsUsed{STEP, nullptr}; ///< By slot.
};

} // namespace domain
