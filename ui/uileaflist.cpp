#include "ui/uileaflist.h"

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
    forgetFiled();
}

void LeafList::add(const Leaf& leaf) {
    pushFront()->setTo(leaf);
    forgetFiled();
    if (leaf.isMenu())
        ++mMenuCount;
}

Leaf* LeafList::leafAt(int index) const {
    if (index < 0)
        return nullptr;
    if (!isFiled())
        fileByIndex();
    Leaf* leaf = index < mFiled.size() ? mFiled[index] : nullptr;
    return leaf && leaf->mIndex == index ? leaf : walkTo(index);
}

const domain::Branch* LeafList::branchAt(int index) const {
    const Leaf* leaf = leafAt(index);
    return leaf ? leaf->mBranch : nullptr;
}

bool LeafList::isFiled() const {
    return getHead() == mFiledHead && size() == mFiled.size();
}

/// Without memory for the file every look-up walks.
void LeafList::fileByIndex() const {
    if (!mFiled.setSize(size())) {
        mFiled.setSize(0);
        return;
    }
    std::fill_n(mFiled.data(), mFiled.size(), nullptr);
    for (auto it = begin(); it.hasValue(); ++it) {
        const int index = (*it)->mIndex;
        if (index >= 0 && index < mFiled.size() && !mFiled[index])
            mFiled[index] = *it;
    }
    mFiledHead = getHead();
}

Leaf* LeafList::walkTo(int index) const {
    for (auto it = begin(); it.hasValue(); ++it) {
        if ((*it)->mIndex == index)
            return *it;
    }
    return nullptr;
}

int LeafList::largest(int (domain::Branch::*measure)() const) const {
    int max = 0;
    for (auto it = begin(); it.hasValue(); ++it) {
        if (const domain::Branch* branch = (*it)->mBranch)
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
    for (auto it = begin(); it.hasValue(); ++it) {
        domain::DebugLine line;
        line.stream() << "\t" << position++ << " ";
        (*it)->printTo(line.stream());
    }
}

} // namespace ui
