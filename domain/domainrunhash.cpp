#include "domain/domainrunhash.h"

#include "domain/domainfingerprint.h"

#include <algorithm>

namespace domain {

using fingerprint::appended;
using fingerprint::product;
using fingerprint::reduced;

namespace {

/// Half the bits tell runs apart well enough: whoever finds a hash compares the runs.
quint32 halfOf(quint64 hash) {
    return std::max(static_cast<quint32>(fingerprint::mixed(hash, fingerprint::BASE)), 1U);
}

} // namespace

quint32 RunHash::of(std::span<const int> run) {
    quint64 hash = 0;
    for (const int index : run)
        hash = appended(hash, static_cast<quint32>(index));
    return halfOf(hash);
}

bool RunHash::begin(std::span<const int> trace) {
    const int size = static_cast<int>(trace.size());
    if (!mPrefixes.setSize(size + 1) || !extendPowers(size + 1))
        return false;
    quint64* prefix = mPrefixes.data();
    *prefix = 0;
    for (const int index : trace) {
        prefix[1] = appended(*prefix, static_cast<quint32>(index));
        ++prefix;
    }
    return true;
}

quint64 RunHash::wholeOf(int first, int last) const {
    const quint64 before = product(mPrefixes[first], mPowers[last - first + 1]);
    return reduced(mPrefixes[last + 1] + fingerprint::PRIME - before);
}

quint32 RunHash::of(int first, int last) const {
    return halfOf(wholeOf(first, last));
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
