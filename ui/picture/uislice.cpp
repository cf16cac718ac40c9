#include "ui/picture/uislice.h"

namespace ui {

bool Slice::isOver(int nanoseconds) {
    mUnseen += nanoseconds;
    if (!mIsOver && mUnseen >= DRAWING_TIME) {
        mUnseen = 0;
        mIsOver = mUntil.hasExpired();
    }
    return mIsOver;
}

} // namespace ui
