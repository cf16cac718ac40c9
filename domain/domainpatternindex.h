#pragma once

#include "domain/domainpattern.h"

#include <vector>

namespace domain {

/// Finds a pattern by its sequence in constant time: an open-addressed hash table of patterns that
/// it does not own, grown by doubling at three quarters full. Clearing it keeps its storage unless
/// that has become far too large. A pattern's sequence must not change while the index holds it.
class PatternIndex {
public:
    int size() const { return mSize; }

    void clear();

    /// The indexed pattern with the sequence of `pattern`, or null.
    Pattern* find(quint32 hash, const Pattern& pattern) const;

    /// `hash`: of the pattern's sequence, as of those it is to be found by. Throws
    /// `std::bad_alloc`, with the index unchanged, when the table cannot grow.
    void insert(quint32 hash, Pattern* pattern);

private:
    struct slot {
        quint32 hash = 0;
        Pattern* pattern = nullptr;
    };

    void grow();
    static void place(std::vector<slot>& table, const slot& entry);

    std::vector<slot> mSlots; ///< Empty or a power of two of them.
    int mSize = 0;
};

} // namespace domain
