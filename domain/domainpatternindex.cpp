#include "domain/domainpatternindex.h"

#include <algorithm>
#include <cstddef>

namespace domain {

namespace {

constexpr std::size_t FIRST_SLOTS = 32;
constexpr std::size_t SPARSE = 8;

} // namespace

void PatternIndex::clear() {
    if (mSize == 0)
        return;
    // A table far larger than what it holds would cost its size at every clearing from now on.
    if (static_cast<std::size_t>(mSize) * SPARSE < mSlots.size())
        std::vector<slot>().swap(mSlots);
    else
        std::fill(mSlots.begin(), mSlots.end(), slot());
    mSize = 0;
}

Pattern* PatternIndex::find(quint32 hash, const Pattern& pattern) const {
    if (mSize == 0)
        return nullptr;
    const std::size_t mask = mSlots.size() - 1;
    for (std::size_t at = hash & mask; mSlots[at].pattern; at = (at + 1) & mask) {
        const slot& candidate = mSlots[at];
        if (candidate.hash == hash && candidate.pattern->isSameSequence(pattern))
            return candidate.pattern;
    }
    return nullptr;
}

void PatternIndex::insert(quint32 hash, Pattern* pattern) {
    if (static_cast<std::size_t>(mSize) * 4 >= mSlots.size() * 3)
        grow();
    place(mSlots, {hash, pattern});
    ++mSize;
}

void PatternIndex::grow() {
    std::vector<slot> table(std::max(FIRST_SLOTS, mSlots.size() * 2));
    for (const slot& entry : mSlots) {
        if (entry.pattern)
            place(table, entry);
    }
    mSlots.swap(table);
}

void PatternIndex::place(std::vector<slot>& table, const slot& entry) {
    const std::size_t mask = table.size() - 1;
    std::size_t at = entry.hash & mask;
    while (table[at].pattern)
        at = (at + 1) & mask;
    table[at] = entry;
}

} // namespace domain
