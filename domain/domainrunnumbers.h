#pragma once

#include <QtGlobal>

#include <cstddef>
#include <vector>

namespace domain {

/// Numbers hashes from 0 in the order in which they first come: an open-addressed table, grown by
/// doubling at half full. Half the time of the standard library's, which allocates each entry.
class RunNumbers {
public:
    /// The number of `hash`, which is new when it is what `size` was. Throws `std::bad_alloc`, with
    /// nothing changed.
    int of(quint64 hash);

    int size() const { return mSize; }

private:
    struct slot {
        quint64 hash = 0;
        int number = -1; ///< Negative in a free slot.
    };

    void grow();
    static slot& slotOf(std::vector<slot>& slots, quint64 hash);

    std::vector<slot> mSlots; ///< Empty or a power of two of them.
    int mSize = 0;
};

} // namespace domain
