#include "ui/picture/uishownpattern.h"

#include "ui/leaves/uishared.h"
#include "ui/picture/uislice.h"

#include <algorithm>

namespace ui {

void ShownPattern::clear(const TileGrid& grid) {
    mGrid = grid;
    mPattern = nullptr;
    mPositions.clear();
    mStrokes.clear();
    mTiles = TileIndex(grid);
}

bool ShownPattern::follow(QList<int>& tiles) {
    const domain::Pattern* selected = mPainter.shared().selectedPattern();
    if (selected == mPattern)
        return false;
    mTiles.collect(tiles);
    clear(mGrid);
    mPattern = selected;
    if (selected)
        mPositions = mPainter.strokes().of(*selected);
    return true;
}

bool ShownPattern::find(Slice& slice, QList<int>& tiles) {
    while (mStrokes.size() < mPositions.size()) {
        add(mPositions[mStrokes.size()], tiles);
        if (slice.isOver(DRAWING_TIME))
            break;
    }
    return mStrokes.size() >= mPositions.size();
}

void ShownPattern::add(int position, QList<int>& tiles) {
    const selected_stroke stroke = mPainter.selectedStroke(position);
    QList<int> touched;
    mGrid.collect(mPainter.strokes().curve(position), touched);
    mGrid.collect(stroke.head.boundingRect(), touched);
    std::sort(touched.begin(), touched.end());
    touched.erase(std::unique(touched.begin(), touched.end()), touched.end());
    for (const int tile : std::as_const(touched))
        mTiles.add(static_cast<int>(mStrokes.size()), tile);
    mStrokes.append(stroke);
    tiles += touched;
}

bool ShownPattern::leavesOutOn(const QRect& tiles) const {
    const QList<int> strokes = mTiles.on(tiles);
    return std::any_of(strokes.begin(), strokes.end(),
                       [this](int stroke) { return leavesOut(mStrokes[stroke].position); });
}

} // namespace ui
