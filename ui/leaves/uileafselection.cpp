#include "ui/leaves/uileafselection.h"

#include <algorithm>

namespace ui {

namespace {

const int* endOf(const RecycleArray<int>& array) {
    return array.data() + array.size();
}

} // namespace

LeafSelection& LeafSelection::operator=(const LeafSelection& other) {
    if (&other != this) {
        mPrimary = other.mPrimary;
        mAlternates = other.mAlternates;
        mFrozen = false;
    }
    return *this;
}

bool LeafSelection::operator==(const LeafSelection& other) const {
    return &other == this || (mPrimary == other.mPrimary && mAlternates == other.mAlternates);
}

bool LeafSelection::hasAlternate(int index) const {
    if (mFrozen)
        return std::binary_search(mSorted.data(), endOf(mSorted), index);
    const int* end = endOf(mAlternates);
    return std::find(mAlternates.data(), end, index) != end;
}

int LeafSelection::primaryIndex() const {
    if (mPrimary < 0)
        return -1;
    const int* begin = mAlternates.data();
    const int* end = endOf(mAlternates);
    const int* found = std::find(begin, end, mPrimary);
    return found == end ? -1 : static_cast<int>(found - begin);
}

void LeafSelection::freeze() {
    mFrozen = mSorted.setTo(mAlternates);
    if (mFrozen)
        std::sort(mSorted.data(), mSorted.data() + mSorted.size());
}

} // namespace ui
