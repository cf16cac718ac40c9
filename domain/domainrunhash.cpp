#include "domain/domainrunhash.h"

namespace domain {

namespace {

constexpr quint64 PRIME = (quint64(1) << 61) - 1;
constexpr quint64 BASE = 0x1a3f7c5d9e2b6481; // any number below the prime, far from both its ends

quint64 reduced(quint64 value) {
    const quint64 folded = (value & PRIME) + (value >> 61);
    return folded >= PRIME ? folded - PRIME : folded;
}

quint64 product(quint64 a, quint64 b) {
    __extension__ using wide = unsigned __int128;
    const wide exact = static_cast<wide>(a) * b;
    return reduced(static_cast<quint64>(exact & PRIME) + static_cast<quint64>(exact >> 61));
}

/// The hash of a run of hash `hash` with `index` appended.
quint64 appended(quint64 hash, int index) {
    // Plus one, so that leading zeros count.
    return reduced(product(hash, BASE) + static_cast<quint32>(index) + 1);
}

} // namespace

std::size_t RunHash::of(std::span<const int> run) {
    quint64 hash = 0;
    for (const int index : run)
        hash = appended(hash, index);
    return hash;
}

bool RunHash::begin(std::span<const int> trace) {
    const int size = static_cast<int>(trace.size());
    if (!mPrefixes.setSize(size + 1) || !extendPowers(size + 1))
        return false;
    mPrefixes[0] = 0;
    for (int k = 0; k < size; ++k)
        mPrefixes[k + 1] = appended(mPrefixes[k], trace[static_cast<std::size_t>(k)]);
    return true;
}

std::size_t RunHash::of(int first, int last) const {
    const quint64 before = product(mPrefixes[first], mPowers[last - first + 1]);
    return reduced(mPrefixes[last + 1] + PRIME - before);
}

bool RunHash::extendPowers(int size) {
    const int known = mPowers.size();
    if (known >= size)
        return true;
    if (!mPowers.setSize(size))
        return false;
    for (int k = known; k < size; ++k)
        mPowers[k] = k == 0 ? 1 : product(mPowers[k - 1], BASE);
    return true;
}

} // namespace domain
