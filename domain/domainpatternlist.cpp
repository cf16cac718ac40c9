#include "domain/domainpatternlist.h"

#include <exception>
#include <utility>

namespace domain {

namespace {

const PatternList::Factory FACTORY(false);

/// Up to this length comparing sizes one by one beats hashing the sequence.
constexpr int LONGEST_WALKED = 8;

} // namespace

Pattern* PatternList::Factory::nullObject() const {
    return nullptr;
}

Pattern* PatternList::Factory::newObject() const {
    return new Pattern;
}

void PatternList::Factory::deleteObject(Pattern* pattern) const {
    delete pattern;
}

void PatternList::Factory::initializeObject(Pattern* pattern) const {
    if (pattern)
        pattern->clear();
}

Pattern* PatternList::Factory::setObject(Pattern* target, Pattern* source) const {
    if (source)
        *target = *source;
    return target;
}

PatternList::PatternList()
    : ManagedList(FACTORY) {}

void PatternList::clear() {
    ManagedList::clear();
    mIndex.clear();
}

bool PatternList::merge(const Pattern& pattern) {
    index();
    const std::size_t hash = hashOf(pattern);
    if (Pattern* known = find(hash, pattern)) {
        known->merge(pattern);
        return true;
    }
    try {
        Pattern* added = pushBack();
        *added = pattern;
        file(hash, added);
        return true;
    } catch (const std::exception&) {
        return false;
    }
}

void PatternList::merge(const PatternList& other) {
    for (auto it = other.begin(); it.hasValue(); ++it)
        merge(**it);
}

PatternList& PatternList::operator=(const PatternList& other) {
    if (&other == this)
        return *this;
    clear();
    for (auto it = other.begin(); it.hasValue(); ++it) {
        try {
            *pushBack() = **it;
        } catch (const std::exception&) {
            continue;
        }
    }
    return *this;
}

void PatternList::take(PatternList& other) {
    if (isEmpty()) {
        other.moveTo(*this);
        std::swap(mIndex, other.mIndex);
    }
    ManagedList<Pattern*> moving(FACTORY);
    while (!other.isEmpty()) {
        index();
        Pattern* pattern = other.front();
        const std::size_t hash = hashOf(*pattern);
        if (Pattern* known = find(hash, *pattern)) {
            known->merge(*pattern);
            other.popFront();
        } else {
            other.moveFrontTo(moving);
            moving.moveTo(*this);
            file(hash, pattern);
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
        for (auto it = begin(); it.hasValue(); ++it)
            mIndex.insert(PatternIndex::hashOf(**it), *it);
    } catch (const std::exception&) {
        mIndex.clear();
    }
}

bool PatternList::isIndexed() const {
    return mIndex.size() > 0 && mIndex.size() == size();
}

std::size_t PatternList::hashOf(const Pattern& pattern) const {
    return isIndexed() ? PatternIndex::hashOf(pattern) : 0;
}

Pattern* PatternList::find(std::size_t hash, const Pattern& pattern) const {
    if (isIndexed())
        return mIndex.find(hash, pattern);
    for (auto it = begin(); it.hasValue(); ++it) {
        if ((*it)->isSameSequence(pattern))
            return *it;
    }
    return nullptr;
}

/// Indexes the pattern that was just appended, if the others are.
void PatternList::file(std::size_t hash, Pattern* added) {
    if (mIndex.size() == 0 || mIndex.size() + 1 != size())
        return;
    try {
        mIndex.insert(hash, added);
    } catch (const std::exception&) {
        mIndex.clear();
    }
}

} // namespace domain
