#include "domain/domainpatternlist.h"

#include "domain/domainrunhash.h"

#include <algorithm>
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
    return add(pattern.run(), hashOf(pattern), pattern.mCount);
}

bool PatternList::add(std::span<const int> run, std::size_t hash) {
    index();
    return add(run, hash, 0);
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
        append(pattern->run(), pattern->mCount);
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
    ManagedList<Pattern*> moving(PATTERN_FACTORY);
    while (!other.isEmpty()) {
        index();
        Pattern* pattern = other.front();
        const std::size_t hash = hashOf(*pattern);
        if (Pattern* known = find(pattern->run(), hash)) {
            known->merge(*pattern);
            other.popFront();
        } else {
            const bool indexed = isIndexed();
            other.moveFrontTo(moving);
            moving.moveTo(*this);
            if (indexed)
                addToIndex(hash, pattern);
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
            mIndex.insert(RunHash::of(pattern->run()), pattern);
        mIndexed = changes();
    } catch (const std::exception&) {
        mIndex.clear();
    }
}

bool PatternList::isIndexed() const {
    return mIndex.size() > 0 && mIndexed == changes();
}

/// 0 while the list is walked and no hash is needed.
std::size_t PatternList::hashOf(const Pattern& pattern) const {
    return isIndexed() ? RunHash::of(pattern.run()) : 0;
}

Pattern* PatternList::find(std::span<const int> run, std::size_t hash) const {
    if (isIndexed())
        return mIndex.find(hash, run);
    for (Pattern* pattern : *this) {
        if (pattern->isSequence(run))
            return pattern;
    }
    return nullptr;
}

bool PatternList::add(std::span<const int> run, std::size_t hash, int count) {
    if (Pattern* known = find(run, hash)) {
        ++known->mCount;
        return true;
    }
    const bool indexed = isIndexed();
    Pattern* added = append(run, count);
    if (added && indexed)
        addToIndex(hash, added);
    return added;
}

/// Null, with the list unchanged, when memory is exhausted.
Pattern* PatternList::append(std::span<const int> run, int count) {
    try {
        // Filled at the front, from where it can be taken back, then moved to the end.
        Pattern* added = pushFront();
        const int size = static_cast<int>(run.size());
        releaseSpare(added->mSequence, size);
        if (!added->mSequence.setSize(size)) {
            popFront();
            return nullptr;
        }
        std::copy(run.begin(), run.end(), added->mSequence.data());
        added->mCount = count;
        ManagedList<Pattern*> moving(PATTERN_FACTORY);
        moveFrontTo(moving);
        moving.moveTo(*this);
        return added;
    } catch (const std::exception&) {
        return nullptr;
    }
}

/// Indexes the pattern that was just appended to an indexed list.
void PatternList::addToIndex(std::size_t hash, Pattern* added) {
    try {
        mIndex.insert(hash, added);
        mIndexed = changes();
    } catch (const std::exception&) {
        mIndex.clear();
    }
}

} // namespace domain
