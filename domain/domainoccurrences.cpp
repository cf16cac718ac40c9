#include "domain/domainoccurrences.h"

#include "domain/domainfingerprint.h"

#include <algorithm>
#include <bit>
#include <limits>
#include <utility>

namespace domain {

namespace {

constexpr int NONE = -1;

} // namespace

bool Occurrences::begin(std::span<const int> trace) {
    const int size = static_cast<int>(trace.size());
    if (!mNext.setSize(size + 1) || !mOpen.setSize(size + 1) || !clearTable(size))
        return false;
    int* const next = mNext.data();
    int* const open = mOpen.data();
    next[size] = size;
    open[size] = size;
    for (int p = size - 1; p >= 0; --p) {
        int& seen = slotOf(trace[static_cast<std::size_t>(p)], trace);
        next[p] = seen == NONE ? size : seen;
        open[p] = p;
        seen = p;
    }
    return true;
}

/// At most half full, with a power of two of slots. Not the toolkit's hash table, which ends the
/// process where memory is exhausted.
bool Occurrences::clearTable(int size) {
    if (size > std::numeric_limits<int>::max() / 4)
        return false;
    const auto slots = static_cast<int>(std::bit_ceil(static_cast<unsigned>(2 * size + 1)));
    if (!mTable.setSize(slots))
        return false;
    std::fill_n(mTable.data(), slots, NONE);
    return true;
}

/// Where the first occurrence so far of `index` stands, or is to be put.
int& Occurrences::slotOf(int index, std::span<const int> trace) {
    int* const table = mTable.data();
    const auto last = static_cast<unsigned>(mTable.size() - 1);
    using fingerprint::BASE;
    using fingerprint::mixed;
    // Mixed once, the indices, which are small and dense, cluster under some bases.
    const quint64 hash = mixed(mixed(static_cast<quint32>(index) ^ BASE, BASE), BASE);
    auto at = static_cast<unsigned>(hash) & last;
    while (table[at] != NONE && trace[static_cast<std::size_t>(table[at])] != index)
        at = (at + 1) & last;
    return table[at];
}

int Occurrences::nextOpen(int position) const {
    int* const next = mOpen.data();
    const int first = mNext[position];
    int open = first;
    while (next[open] != open)
        open = next[open];
    for (int at = first; next[at] != open;)
        at = std::exchange(next[at], open);
    return open;
}

void Occurrences::close(int position) {
    if (mOpen[position] == position)
        mOpen[position] = mNext[position];
}

} // namespace domain
