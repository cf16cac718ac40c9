#include "domain/domainpatternlist.h"

#include <exception>

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
    if (size() > LONGEST_WALKED) {
        if (!isIndexed())
            index();
        if (isIndexed())
            return mergeIndexed(pattern);
    }
    if (Pattern* known = findByWalking(pattern)) {
        known->merge(pattern);
        return true;
    }
    return append(pattern);
}

void PatternList::merge(const PatternList& other) {
    for (auto it = other.begin(); it.hasValue(); ++it)
        merge(**it);
}

PatternList& PatternList::operator=(const PatternList& other) {
    if (&other == this)
        return *this;
    clear();
    for (auto it = other.begin(); it.hasValue(); ++it)
        append(**it);
    return *this;
}

bool PatternList::isIndexed() const {
    return mIndex.size() == size();
}

void PatternList::index() {
    mIndex.clear();
    try {
        for (auto it = begin(); it.hasValue(); ++it)
            mIndex.insert(PatternIndex::hashOf(**it), *it);
    } catch (const std::exception&) {
        mIndex.clear(); // no memory for it: the list is walked instead
    }
}

Pattern* PatternList::findByWalking(const Pattern& pattern) const {
    for (auto it = begin(); it.hasValue(); ++it) {
        if ((*it)->isSameSequence(pattern))
            return *it;
    }
    return nullptr;
}

bool PatternList::append(const Pattern& pattern) {
    try {
        *pushBack() = pattern;
        return true;
    } catch (const std::exception&) {
        return false;
    }
}

bool PatternList::mergeIndexed(const Pattern& pattern) {
    const std::size_t hash = PatternIndex::hashOf(pattern);
    if (Pattern* known = mIndex.find(hash, pattern)) {
        known->merge(pattern);
        return true;
    }
    try {
        Pattern* added = pushBack();
        *added = pattern;
        mIndex.insert(hash, added);
        return true;
    } catch (const std::exception&) {
        return false;
    }
}

} // namespace domain
