#include "domain/domainbranch.h"

#include "domain/domaindebugline.h"
#include "domain/domainsametext.h"

#include <algorithm>

namespace domain {

void Branch::clear() {
    mGesture = GESTURE_NONE;
    if (!mKey.isNull())
        mKey = QString();
    mBounds = QRectF();
    if (hasPatterns())
        mPatterns.clear();
}

Branch& Branch::operator=(const Branch& other) {
    if (&other != this) {
        copyEvents(other);
        mPatterns = other.mPatterns;
    }
    return *this;
}

bool Branch::merge(const Branch& other) {
    if (!isValid()) {
        *this = other;
        return true;
    }
    if (!mergeEvents(other))
        return false;
    mPatterns.merge(other.mPatterns);
    return true;
}

bool Branch::take(Branch& other) {
    if (!isValid()) {
        copyEvents(other);
        mPatterns.clear();
    } else if (!mergeEvents(other)) {
        return false;
    }
    mPatterns.take(other.mPatterns);
    return true;
}

bool Branch::addPattern(const Pattern& pattern) {
    return mPatterns.add(pattern);
}

const Pattern* Branch::patternAt(int index) const {
    return index >= 0 && index < patternSize() ? mPatterns.at(index) : nullptr;
}

int Branch::patternCount(int index) const {
    const Pattern* pattern = patternAt(index);
    return pattern ? pattern->mCount : 0;
}

int Branch::maxPatternCount() const {
    int max = 0;
    for (const Pattern* pattern : mPatterns)
        max = std::max(max, pattern->mCount);
    return max;
}

int Branch::patternWeight() const {
    int weight = 0;
    for (const Pattern* pattern : mPatterns)
        weight += pattern->mCount + 1;
    return weight;
}

void Branch::printTo(QDebug& dbg) const {
    dbg << "key=";
    write_key(dbg, mKey);
    dbg << " gesture=" << mGesture;
}

void Branch::copyEvents(const Branch& other) {
    mGesture = other.mGesture;
    mKey = other.mKey;
    mBounds = other.mBounds;
}

bool Branch::mergeEvents(const Branch& other) {
    if (!is_same_text(mKey, other.mKey))
        return false;
    mBounds |= other.mBounds;
    return true;
}

} // namespace domain
