#include "json/jsonmarks.h"

#include <algorithm>

namespace json {

namespace {

const Marker FASTEST = markers().back();

} // namespace

Marks::Marks()
    : mMarker(FASTEST) {}

void Marks::goOn(const char* begin, const char* end) {
    mHere = begin;
    mEnd = end;
    mState.hidesSpace = 0;
    mNext = mLast = mMarks.data();
}

/// Finds more marks; false at the end of the piece.
bool Marks::find() {
    mNext = mLast;
    while (mNext == mLast && mHere != mEnd) {
        const auto size = static_cast<int>(std::min<qptrdiff>(mEnd - mHere, SIZE));
        mNext = mMarks.data();
        mLast = mMarker(mHere, size, mState, mMarks.data());
        mBase = mHere;
        mHere += size;
    }
    return mNext != mLast;
}

} // namespace json
