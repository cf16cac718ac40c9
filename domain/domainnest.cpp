#include "domain/domainnest.h"

#include "domain/domaindebugline.h"

#include <limits>

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
    return index >= 0 && index < size() ? mBranches[index] : nullptr;
}

const Branch* Nest::branchAt(int index) const {
    return index >= 0 && index < size() ? mBranches[index] : nullptr;
}

bool Nest::addSlot() {
    return mBranches.setSize(size() + 1);
}

bool Nest::set(int index, const Branch& branch) {
    if (index < 0 || index == std::numeric_limits<int>::max())
        return false;
    if (index >= size() && !mBranches.setSize(index + 1))
        return false;
    Branch* slot = mBranches[index];
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

void Nest::clear() {
    mBranches.setSize(0);
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

} // namespace domain
