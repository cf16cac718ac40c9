#include "ui/leaves/uileaflist.h"

#include "domain/domaindebugline.h"

#include <algorithm>

namespace ui {

namespace {

const LeafList::Factory FACTORY(false);

} // namespace

Leaf* LeafList::Factory::setObject(Leaf* to, Leaf* from) const {
    if (to && from)
        to->setTo(*from);
    return to;
}

int LeafList::Factory::sortObject(Leaf* a, Leaf* b) const {
    if (!a || !b)
        return 0;
    if (a->isMenu() != b->isMenu())
        return b->isMenu() ? -1 : 1;
    if (a->isMenu())
        return QString::compare(a->mKey, b->mKey);
    const qreal top = a->mBounds.top();
    const qreal otherTop = b->mBounds.top();
    return top < otherTop ? -1 : top > otherTop ? 1 : 0;
}

LeafList::LeafList()
    : ManagedList(FACTORY) {}

void LeafList::clear() {
    ManagedList::clear();
    mMenuCount = 0;
    mByIndex.setSize(0);
}

void LeafList::add(const Leaf& leaf) {
    pushFront()->setTo(leaf);
    if (leaf.isMenu())
        ++mMenuCount;
}

Leaf* LeafList::leafAt(int index) const {
    if (index < 0)
        return nullptr;
    if (mByIndex.size() != size())
        indexLeaves();
    Leaf* leaf = index < mByIndex.size() ? mByIndex[index] : nullptr;
    return leaf && leaf->mIndex == index ? leaf : walkTo(index);
}

const domain::Branch* LeafList::branchAt(int index) const {
    const Leaf* leaf = leafAt(index);
    return leaf ? leaf->mBranch : nullptr;
}

/// Without memory for the table every look-up walks.
void LeafList::indexLeaves() const {
    if (!mByIndex.setSize(size())) {
        mByIndex.setSize(0);
        return;
    }
    std::fill_n(mByIndex.data(), mByIndex.size(), nullptr);
    for (Leaf* leaf : *this) {
        const int index = leaf->mIndex;
        if (index >= 0 && index < mByIndex.size() && !mByIndex[index])
            mByIndex[index] = leaf;
    }
}

Leaf* LeafList::walkTo(int index) const {
    for (Leaf* leaf : *this) {
        if (leaf->mIndex == index)
            return leaf;
    }
    return nullptr;
}

int LeafList::largest(int (domain::Branch::*measure)() const) const {
    int max = 0;
    for (const Leaf* leaf : *this) {
        if (const domain::Branch* branch = leaf->mBranch)
            max = std::max(max, (branch->*measure)());
    }
    return max;
}

int LeafList::maxPatternCount() const {
    return largest(&domain::Branch::maxPatternCount);
}

int LeafList::maxPatternWeight() const {
    return largest(&domain::Branch::patternWeight);
}

void LeafList::print() const {
    domain::DebugLine().stream() << "LeafList size=" << size();
    int position = 0;
    for (const Leaf* leaf : *this) {
        domain::DebugLine line;
        line.stream() << "\t" << position++ << " ";
        leaf->printTo(line.stream());
    }
}

} // namespace ui
