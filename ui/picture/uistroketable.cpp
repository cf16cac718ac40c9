#include "ui/picture/uistroketable.h"

#include "ui/picture/uislice.h"

#include <algorithm>

namespace ui {

namespace {

constexpr int SETTLED_BITS = 16;
constexpr int ENTRIES_AT_ONCE = 4096;
constexpr int ENTRY_TIME = 5; // nanoseconds

quint64 key(int from, int to) {
    return static_cast<quint64>(static_cast<quint32>(from)) << 32 | static_cast<quint32>(to);
}

/// Multiplicative hashing (Knuth, The Art of Computer Programming, volume 3, 6.4).
std::size_t slotOf(quint64 key) {
    return key * 0x9E37'79B9'7F4A'7C15 >> (64 - SETTLED_BITS);
}

} // namespace

void StrokeTable::clear() {
    mEntries.clear();
    mPositions.clear();
    mSettled.clear();
    mLeaf.reset();
    mPattern.reset();
    mNext = 1;
}

void StrokeTable::begin() {
    mSettled.resize(std::size_t(1) << SETTLED_BITS);
    mLeaf = mLeaves.begin();
}

bool StrokeTable::advance(Slice& slice) {
    if (!mLeaf)
        begin();
    while (nextPattern()) {
        const domain::Pattern& pattern = ***mPattern;
        const int first = mNext;
        addStrokes(pattern, std::min(pattern.mSequence.size(), first + ENTRIES_AT_ONCE));
        const int walked = mNext - first;
        if (mNext >= pattern.mSequence.size()) {
            ++*mPattern;
            mNext = 1;
        }
        if (slice.isOver((walked + 1) * ENTRY_TIME))
            return false;
    }
    mSettled = {};
    return true;
}

/// Sees to it that the walk is at a pattern; false at its end.
bool StrokeTable::nextPattern() {
    while (!mPattern || !mPattern->hasValue()) {
        if (!nextLeaf())
            return false;
    }
    return true;
}

bool StrokeTable::nextLeaf() {
    if (!mLeaf->hasValue())
        return false;
    mPattern.reset();
    if (const domain::Branch* branch = (**mLeaf)->mBranch)
        mPattern = branch->mPatterns.reading();
    ++*mLeaf;
    return true;
}

void StrokeTable::addStrokes(const domain::Pattern& pattern, int end) {
    const int* sequence = pattern.mSequence.data();
    for (; mNext < end; ++mNext) {
        const int from = sequence[mNext - 1];
        const int to = sequence[mNext];
        if (from != to && mSettled[slotOf(key(from, to))] != key(from, to))
            addUse(from, to, pattern);
    }
}

void StrokeTable::addUse(int from, int to, const domain::Pattern& user) {
    const Leaf* start = mLeaves.leafAt(from);
    const Leaf* end = mLeaves.leafAt(to);
    if (!start || !end)
        return;
    const int next = static_cast<int>(mEntries.size());
    const auto [found, isNew] = mPositions.try_emplace(key(from, to), next);
    if (isNew)
        mEntries.append({start, end, &user});
    else if (entry& known = mEntries[found->second]; known.onlyUser != &user) {
        known.onlyUser = nullptr;
        mSettled[slotOf(found->first)] = found->first;
    }
}

QList<int> StrokeTable::strokesOf(const domain::Pattern& pattern) const {
    QList<int> strokes;
    for (int i = 1; i < pattern.mSequence.size(); ++i) {
        const auto found = mPositions.find(key(pattern.mSequence[i - 1], pattern.mSequence[i]));
        if (found != mPositions.end())
            strokes.append(found->second);
    }
    return strokes;
}

} // namespace ui
