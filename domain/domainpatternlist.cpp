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
    mTotals = {};
    mStep = changes();
}

void PatternList::merge(const Pattern& pattern) {
    add(pattern);
}

bool PatternList::add(const Pattern& pattern) {
    catchUp();
    return add(pattern, isIndexed() ? RunHash::of(pattern.run()) : 0);
}

bool PatternList::add(const Pattern& pattern, quint32 hash) {
    catchUp();
    if (Pattern* known = find(pattern, hash)) {
        countAgain(*known);
        return true;
    }
    return append(pattern, hash);
}

void PatternList::merge(const PatternList& other) {
    for (const Pattern* pattern : other.reading())
        merge(*pattern);
}

PatternList& PatternList::operator=(const PatternList& other) {
    if (&other == this)
        return *this;
    clear();
    for (const auto* node = other.firstNode(); node; node = node->next)
        append(*node->value, other.isLent() ? 0 : node->value->mHash);
    return *this;
}

void PatternList::take(PatternList& other) {
    assert(&other != this);
    moveWaitingTo(other); // which would make new ones in the place of those that it gives away
    if (isEmpty()) {
        const bool inStep = other.isInStep();
        other.moveTo(*this);
        if (inStep) {
            std::swap(mIndex, other.mIndex);
            mTotals = other.mTotals;
            mStep = changes();
        }
    }
    while (const auto* node = other.firstNode()) {
        catchUp();
        Pattern* pattern = node->value;
        if (Pattern* known = find(*pattern, other.hashOf(*pattern))) {
            countAgain(*known);
            pattern->clear(); // gives back its part of the trace
            other.popFront();
        } else {
            const bool inStep = isInStep();
            moveFront(other, *this);
            noteLast(pattern, inStep);
        }
    }
    other.clear();
}

void PatternList::Totals::add(int count) {
    most = std::max(most, count);
    weight += count + 1;
}

/// Whether index and totals are right.
bool PatternList::isInStep() const {
    return mStep == changes() && !isLent();
}

bool PatternList::isIndexed() const {
    return mIndex.size() > 0 && isInStep();
}

PatternList::Totals PatternList::totals() const {
    if (isInStep())
        return mTotals;
    Totals totals;
    for (const Pattern* pattern : reading())
        totals.add(pattern->mCount);
    return totals;
}

/// Sees to it that index and totals are right, unless patterns are lent, and that a long list is
/// indexed, memory permitting; without it the list is walked.
void PatternList::catchUp() {
    if (isLent())
        return;
    if (!isInStep()) {
        mIndex.clear();
        mTotals = totals();
        mStep = changes();
    }
    if (size() > LONGEST_WALKED && !isIndexed())
        index();
}

/// Of patterns with the same sequence, which come from outside only, the first counts.
void PatternList::index() {
    try {
        for (const auto* node = firstNode(); node; node = node->next) {
            const quint32 hash = hashOf(*node->value);
            if (!mIndex.find(hash, *node->value))
                mIndex.insert(hash, node->value);
        }
    } catch (const std::exception&) {
        mIndex.clear();
    }
}

/// Of a pattern that this list holds.
quint32 PatternList::hashOf(Pattern& stored) const {
    if (stored.mHash == 0 || isLent())
        stored.mHash = RunHash::of(stored.run());
    return stored.mHash;
}

/// `hash`: of the pattern, only needed when the list is indexed.
Pattern* PatternList::find(const Pattern& pattern, quint32 hash) const {
    if (isIndexed())
        return mIndex.find(hash, pattern);
    for (const auto* node = firstNode(); node; node = node->next) {
        if (node->value->isSameSequence(pattern))
            return node->value;
    }
    return nullptr;
}

void PatternList::countAgain(Pattern& known) {
    ++known.mCount;
    ++mTotals.weight;
    mTotals.most = std::max(mTotals.most, known.mCount);
}

/// Null, with the list unchanged, when memory is exhausted.
Pattern* PatternList::append(const Pattern& pattern, quint32 hash) {
    try {
        const bool inStep = isInStep();
        // Filled at the front, from where it can be taken back, then moved to the end.
        Pattern* added = insertFront();
        releaseSpare(added->mSequence, pattern.mSequence.size());
        if (!added->mSequence.setTo(pattern.mSequence)) {
            popFront();
            return nullptr;
        }
        added->mCount = pattern.mCount;
        added->mHash = hash;
        moveFront(*this, *this);
        noteLast(added, inStep);
        return added;
    } catch (const std::exception&) {
        return nullptr;
    }
}

/// Notes the pattern that has just become the last one. `inStep`: index and totals were right.
void PatternList::noteLast(Pattern* added, bool inStep) {
    if (!inStep || isLent())
        return;
    mTotals.add(added->mCount);
    mStep = changes();
    if (mIndex.size() == 0)
        return;
    try {
        mIndex.insert(hashOf(*added), added);
    } catch (const std::exception&) {
        mIndex.clear();
    }
}

} // namespace domain
