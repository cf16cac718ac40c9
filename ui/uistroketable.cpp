#include "ui/uistroketable.h"

#include <QBitArray>

namespace ui {

namespace {

quint64 key(int from, int to) {
    return static_cast<quint64>(static_cast<quint32>(from)) << 32 | static_cast<quint32>(to);
}

} // namespace

void StrokeTable::clear() {
    mEntries.clear();
    mPositions.clear();
}

void StrokeTable::build(const LeafList& leaves) {
    clear();
    for (auto leaf = leaves.begin(); leaf.hasValue(); ++leaf) {
        const domain::Branch* branch = (*leaf)->mBranch;
        if (!branch)
            continue;
        for (auto pattern = branch->beginPatterns(); pattern.hasValue(); ++pattern)
            addPattern(leaves, **pattern);
    }
}

void StrokeTable::addPattern(const LeafList& leaves, const domain::Pattern& pattern) {
    const Leaf* from = nullptr;
    for (int i = 0; i < pattern.mSequence.size(); ++i) {
        const Leaf* to = leaves.leafAt(pattern.mSequence[i]);
        if (from && to && from != to)
            addUse(*from, *to, pattern);
        from = to;
    }
}

void StrokeTable::addUse(const Leaf& from, const Leaf& to, const domain::Pattern& user) {
    const int next = static_cast<int>(mEntries.size());
    const auto [found, isNew] = mPositions.try_emplace(key(from.mIndex, to.mIndex), next);
    if (isNew)
        mEntries.append({&from, &to, &user});
    else if (entry& known = mEntries[found->second]; known.onlyUser != &user)
        known.onlyUser = nullptr;
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
