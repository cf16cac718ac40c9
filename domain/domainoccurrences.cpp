#include "domain/domainoccurrences.h"

#include <utility>

namespace domain {

bool Occurrences::begin(std::span<const int> trace) {
    const int size = static_cast<int>(trace.size());
    if (!mNext.setSize(size + 1) || !mOpen.setSize(size + 1))
        return false;
    mSeen.clear();
    mNext[size] = size;
    mOpen[size] = size;
    for (int p = size - 1; p >= 0; --p) {
        int& seen = mSeen[trace[static_cast<std::size_t>(p)]];
        mNext[p] = seen > 0 ? seen : size; // 0: a new entry, as what is seen from before is later
        mOpen[p] = p;
        seen = p;
    }
    return true;
}

int Occurrences::nextOpen(int position) const {
    const int first = mNext[position];
    int open = first;
    while (mOpen[open] != open)
        open = mOpen[open];
    for (int at = first; mOpen[at] != open;)
        at = std::exchange(mOpen[at], open);
    return open;
}

void Occurrences::close(int position) {
    if (mOpen[position] == position)
        mOpen[position] = mNext[position];
}

} // namespace domain
