#include "domain/domainnest.h"

#include "domain/domaindebugline.h"

#include <limits>
#include <utility>

namespace domain {

namespace {

const Nest::Factory FACTORY(false);

} // namespace

Branch* Nest::Factory::setObject(Branch* target, Branch* source) const {
    if (source)
        *target = *source;
    return target;
}

Nest::Nest()
    : mBranches(FACTORY) {}

Branch* Nest::branchAt(int index) {
    if (index < 0 || index >= size())
        return nullptr;
    mUsed.add(index); // the caller may change it
    return mBranches[index];
}

const Branch* Nest::branchAt(int index) const {
    return index >= 0 && index < size() ? mBranches[index] : nullptr;
}

bool Nest::addSlot() {
    return growTo(size() + 1);
}

bool Nest::set(int index, const Branch& branch) {
    Branch* slot = slotAt(index);
    if (!slot)
        return false;
    *slot = branch;
    return true;
}

bool Nest::merge(int index, const Branch& branch) {
    Branch* slot = branchAt(index);
    if (slot && slot->isValid())
        return slot->merge(branch);
    return set(index, branch);
}

bool Nest::take(int index, Branch& branch) {
    Branch* slot = slotAt(index);
    return slot && slot->take(branch);
}

bool Nest::setTo(const Nest& other) {
    if (&other == this)
        return true;
    clear();
    bool copied = true;
    for (int i = 0; i < other.size(); ++i) {
        const Branch* branch = other.branchAt(i);
        if (branch && !set(i, *branch))
            copied = false;
    }
    return copied;
}

bool Nest::merge(const Nest& other) {
    bool merged = true;
    for (int i = 0; i < other.size(); ++i) {
        const Branch* branch = other.branchAt(i);
        if (branch && !merge(i, *branch))
            merged = false;
    }
    return merged;
}

void Nest::swap(Nest& other) {
    mBranches.swap(other.mBranches);
    mUsed.swap(other.mUsed);
    std::swap(mSize, other.mSize);
    std::swap(mKeepsLast, other.mKeepsLast);
    std::swap(mHasGaps, other.mHasGaps);
}

void Nest::clear() {
    mSize = 0;
    mKeepsLast = true;
}

void Nest::print() const {
    DebugLine().stream() << "Nest size=" << size();
    for (int i = 0; i < size(); ++i) {
        DebugLine line;
        line.stream() << "\t" << i;
        if (const Branch* branch = branchAt(i))
            branch->printTo(line.stream());
    }
}

/// The branch in slot `index`, which the nest grows to; null where there is none.
Branch* Nest::slotAt(int index) {
    if (index < 0 || index == std::numeric_limits<int>::max())
        return nullptr;
    if (index >= size() && !growTo(index + 1))
        return nullptr;
    return branchAt(index);
}

/// False when memory is exhausted; a slot without a branch counts all the same.
bool Nest::growTo(int count) {
    resetKept();
    if (!mUsed.makeRoom(count))
        return false;
    const bool grown = count <= mBranches.size() || mBranches.setSize(count);
    if (count <= mBranches.size()) {
        mSize = count;
        mHasGaps = mHasGaps || !grown;
    }
    return grown;
}

void Nest::resetKept() {
    if (!mKeepsLast)
        return;
    for (const int slot : mUsed.all())
        FACTORY.initializeObject(mBranches[slot]);
    mUsed.clear();
    mKeepsLast = false;
    if (mHasGaps)
        mHasGaps = !mBranches.fillGaps();
}

} // namespace domain
