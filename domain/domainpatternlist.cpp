#include "domain/domainpatternlist.h"

#include "domain/domainrunhash.h"

#include <cassert>
#include <exception>
#include <utility>

namespace domain {

namespace {

const PatternList::Factory PATTERN_FACTORY(false);

/// Up to this length comparing sizes one by one beats hashing the sequence.
constexpr int LONGEST_WALKED = 8;

/// A recycled sequence keeps storage of so many entries, and of so many times those it is to hold.
constexpr int KEPT = 64;
constexpr int KEPT_TIMES = 4;

/// Without this every pattern would end up with the storage of the longest run it ever held.
void releaseSpare(RecycleArray<int>& sequence, int size) {
    if (sequence.capacity() <= KEPT || sequence.capacity() / KEPT_TIMES <= size)
        return;
    RecycleArray<int> none(1, nullptr);
    sequence.swap(none);
}

/// Moves the first element of a list to the end of one, perhaps the same.
void moveFront(ManagedList<Pattern*>& from, ManagedList<Pattern*>& to) {
    ManagedList<Pattern*> moving(PATTERN_FACTORY);
    from.moveFrontTo(moving);
    moving.moveTo(to);
}

} // namespace

Pattern* PatternList::Factory::setObject(Pattern* target, Pattern* source) const {
    if (source)
        *target = *source;
    return target;
}

PatternList::PatternList()
    : ManagedList(PATTERN_FACTORY) {}

void PatternList::clear() {
    ManagedList::clear();
    mIndex.clear();
}

void PatternList::merge(const Pattern& pattern) {
    add(pattern);
}

bool PatternList::add(const Pattern& pattern) {
    index();
    return add(pattern, isIndexed() ? RunHash::of(pattern.run()) : 0);
}

bool PatternList::add(const Pattern& pattern, quint32 hash) {
    index();
    if (Pattern* known = find(pattern, hash)) {
        ++known->mCount;
        return true;
    }
    const bool indexed = isIndexed();
    Pattern* added = append(pattern, hash);
    if (added && indexed)
        addToIndex(added);
    return added;
}

void PatternList::merge(const PatternList& other) {
    for (const Pattern* pattern : other)
        merge(*pattern);
}

PatternList& PatternList::operator=(const PatternList& other) {
    if (&other == this)
        return *this;
    clear();
    for (const Pattern* pattern : other)
        append(*pattern, pattern->mHash);
    return *this;
}

void PatternList::take(PatternList& other) {
    assert(&other != this);
    moveWaitingTo(other); // which would make new ones in the place of those that it gives away
    if (isEmpty()) {
        const bool indexed = other.isIndexed();
        other.moveTo(*this);
        if (indexed) {
            std::swap(mIndex, other.mIndex);
            mIndexed = changes();
        }
    }
    while (!other.isEmpty()) {
        index();
        Pattern* pattern = other.front();
        if (Pattern* known = find(*pattern, hashOf(*pattern))) {
            known->merge(*pattern);
            pattern->clear(); // gives back its part of the trace
            other.popFront();
        } else {
            const bool indexed = isIndexed();
            moveFront(other, *this);
            if (indexed)
                addToIndex(pattern);
        }
    }
    other.clear();
}

/// Sees to it that a long list is indexed, memory permitting; without it the list is walked.
void PatternList::index() {
    if (size() <= LONGEST_WALKED || isIndexed())
        return;
    mIndex.clear();
    try {
        for (Pattern* pattern : *this)
            mIndex.insert(hashOf(*pattern), pattern);
        mIndexed = changes();
    } catch (const std::exception&) {
        mIndex.clear();
    }
}

bool PatternList::isIndexed() const {
    return mIndex.size() > 0 && mIndexed == changes();
}

/// Of a pattern that a list holds; known from now on.
quint32 PatternList::hashOf(Pattern& stored) {
    if (stored.mHash == 0)
        stored.mHash = RunHash::of(stored.run());
    return stored.mHash;
}

/// `hash`: of the pattern, only needed when the list is indexed.
Pattern* PatternList::find(const Pattern& pattern, quint32 hash) const {
    if (isIndexed())
        return mIndex.find(hash, pattern);
    for (Pattern* stored : *this) {
        if (stored->isSameSequence(pattern))
            return stored;
    }
    return nullptr;
}

/// Null, with the list unchanged, when memory is exhausted.
Pattern* PatternList::append(const Pattern& pattern, quint32 hash) {
    try {
        // Filled at the front, from where it can be taken back, then moved to the end.
        Pattern* added = pushFront();
        releaseSpare(added->mSequence, pattern.mSequence.size());
        if (!added->mSequence.setTo(pattern.mSequence)) {
            popFront();
            return nullptr;
        }
        added->mCount = pattern.mCount;
        added->mHash = hash;
        moveFront(*this, *this);
        return added;
    } catch (const std::exception&) {
        return nullptr;
    }
}

/// Indexes the pattern that was just appended to an indexed list.
void PatternList::addToIndex(Pattern* added) {
    try {
        mIndex.insert(hashOf(*added), added);
        mIndexed = changes();
    } catch (const std::exception&) {
        mIndex.clear();
    }
}

} // namespace domain
