#include "domain/domainrunhash.h"

#include "domain/domainfingerprint.h"

namespace domain {

using fingerprint::appended;
using fingerprint::product;
using fingerprint::reduced;

std::size_t RunHash::of(std::span<const int> run) {
    quint64 hash = 0;
    for (const int index : run)
        hash = appended(hash, static_cast<quint32>(index));
    return hash;
}

bool RunHash::begin(std::span<const int> trace) {
    const int size = static_cast<int>(trace.size());
    if (!mPrefixes.setSize(size + 1) || !extendPowers(size + 1))
        return false;
    mPrefixes[0] = 0;
    for (int k = 0; k < size; ++k)
        mPrefixes[k + 1] =
            appended(mPrefixes[k], static_cast<quint32>(trace[static_cast<std::size_t>(k)]));
    return true;
}

std::size_t RunHash::of(int first, int last) const {
    const quint64 before = product(mPrefixes[first], mPowers[last - first + 1]);
    return reduced(mPrefixes[last + 1] + fingerprint::PRIME - before);
}

bool RunHash::extendPowers(int size) {
    const int known = mPowers.size();
    if (known >= size)
        return true;
    if (!mPowers.setSize(size))
        return false;
    for (int k = known; k < size; ++k)
        mPowers[k] = k == 0 ? 1 : product(mPowers[k - 1], fingerprint::BASE);
    return true;
}

} // namespace domain
