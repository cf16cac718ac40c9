#include "ui/picture/uigreystrokes.h"

#include "ui/picture/uileafpainter.h"
#include "ui/picture/uislice.h"

namespace ui {

void GreyStrokes::forget() {
    mPicture = QImage();
    mDrawn = 0;
    mIsWhole = false;
}

bool GreyStrokes::advance(const TileGrid& grid, Slice& slice) {
    Strokes& strokes = mPainter.strokes();
    if (mIsWhole || !strokes.place(slice))
        return mIsWhole;
    if (mDrawn < strokes.size())
        draw(grid, slice);
    mIsWhole = mDrawn >= strokes.size();
    return mIsWhole;
}

void GreyStrokes::draw(const TileGrid& grid, Slice& slice) {
    if (mPicture.isNull())
        mPicture = grid.newPicture();
    QPainter painter(&mPicture);
    painter.setTransform(grid.toPixels());
    painter.setRenderHint(QPainter::Antialiasing);
    do
        mPainter.drawStroke(painter, mDrawn++);
    while (!slice.isOver(DRAWING_TIME) && mDrawn < mPainter.strokes().size());
}

} // namespace ui
