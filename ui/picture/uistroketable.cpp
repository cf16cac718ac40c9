#include "ui/picture/uistroketable.h"

#include <QBitArray>

#include <algorithm>

namespace ui {

namespace {

constexpr int SETTLED_BITS = 16;
constexpr int ENTRIES_A_LOOK = 4096; // at the clock; some microseconds' work

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
    mLeaves = nullptr;
    mLeaf.reset();
    mPattern.reset();
    mNext = 1;
}

void StrokeTable::begin(const LeafList& leaves) {
    clear();
    mSettled.resize(std::size_t(1) << SETTLED_BITS);
    mLeaves = &leaves;
    mLeaf = leaves.begin();
}

bool StrokeTable::advance(const QDeadlineTimer& until) {
    for (int left = ENTRIES_A_LOOK; nextPattern();) {
        const domain::Pattern& pattern = ***mPattern;
        const int size = pattern.mSequence.size();
        const int end = std::min(size, mNext + left);
        left -= end - mNext + 1;
        addStrokes(pattern, end);
        if (mNext >= size) {
            ++*mPattern;
            mNext = 1;
        }
        if (left > 0)
            continue;
        if (until.hasExpired())
            return false;
        left = ENTRIES_A_LOOK;
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
    if (!mLeaf || !mLeaf->hasValue())
        return false;
    mPattern.reset();
    if (const domain::Branch* branch = (**mLeaf)->mBranch)
        mPattern = branch->beginPatterns();
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
    const Leaf* start = mLeaves->leafAt(from);
    const Leaf* end = mLeaves->leafAt(to);
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
    QBitArray seen(mEntries.size());
    for (int i = 1; i < pattern.mSequence.size(); ++i) {
        const auto found = mPositions.find(key(pattern.mSequence[i - 1], pattern.mSequence[i]));
        if (found == mPositions.end() || seen.testBit(found->second))
            continue;
        seen.setBit(found->second);
        strokes.append(found->second);
    }
    return strokes;
}

bool StrokeTable::isOnlyIn(int stroke, const domain::Pattern* pattern) const {
    return pattern && mEntries[stroke].onlyUser == pattern;
}

} // namespace ui
