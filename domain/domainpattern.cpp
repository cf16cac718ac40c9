#include "domain/domainpattern.h"

#include "domain/domaindebugline.h"

namespace domain {

void Pattern::clear() {
    mSequence.setSize(0);
    mCount = 0;
    mHash = 0;
}

Pattern& Pattern::operator=(const Pattern& other) {
    if (&other != this) {
        mSequence.setTo(other.mSequence);
        mCount = other.mCount;
    }
    return *this;
}

bool Pattern::isSameSequence(const Pattern& other) const {
    return mSequence == other.mSequence;
}

std::span<const int> Pattern::run() const {
    return {mSequence.data(), static_cast<std::size_t>(mSequence.size())};
}

void Pattern::merge(const Pattern& /*other*/) {
    ++mCount;
}

bool Pattern::isCycle() const {
    const int size = mSequence.size();
    return size >= 2 && mSequence[0] == mSequence[size - 1];
}

void Pattern::print() const {
    DebugLine().stream() << "Pattern size=" << mSequence.size();
    for (int i = 0; i < mSequence.size(); ++i)
        DebugLine().stream() << "\t" << i << "=" << mSequence[i];
}

} // namespace domain
