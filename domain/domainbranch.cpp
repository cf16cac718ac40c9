#include "domain/domainbranch.h"

#include "domain/domaindebugline.h"
#include "domain/domainsametext.h"

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
    if (index < 0)
        return nullptr;
    ManagedListReader<Pattern*> patterns = mPatterns.reading();
    while (index-- > 0 && patterns.hasValue())
        ++patterns;
    return *patterns;
}

int Branch::patternCount(int index) const {
    const Pattern* pattern = patternAt(index);
    return pattern ? pattern->mCount : 0;
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
