#include "ui/picture/uigreystrokes.h"

#include "ui/picture/uileafpainter.h"
#include "ui/picture/uislice.h"

#include <QThread>

#include <algorithm>
#include <future>
#include <numeric>
#include <utility>
#include <vector>

namespace ui {

namespace {

// A stroke that crosses the border of two bands is drawn for each of them, and a thread takes the
// time of a stroke or two to begin.
constexpr int MOST_BANDS = 4;
constexpr int STROKES_A_BAND = 64;

int bandsFor(int strokes) {
    return std::clamp(strokes / STROKES_A_BAND, 1,
                      std::min(MOST_BANDS, QThread::idealThreadCount()));
}

} // namespace

void GreyStrokes::forget() {
    mBands.clear();
    mPicture = QImage();
    mIsWhole = false;
}

qsizetype GreyStrokes::drawn() const {
    return std::accumulate(mBands.begin(), mBands.end(), qsizetype(0),
                           [](qsizetype sum, const band& each) { return sum + each.drawn; });
}

bool GreyStrokes::advance(const TileGrid& grid, Slice& slice) {
    if (mIsWhole || !mPainter.strokes().place(slice))
        return mIsWhole;
    if (mPicture.isNull() && mPainter.strokes().size() > 0)
        begin(grid);
    draw(grid, slice);
    mIsWhole = std::all_of(mBands.begin(), mBands.end(),
                           [this](const band& each) { return isWhole(each); });
    return mIsWhole;
}

/// Cuts the picture into bands that take about as long to draw.
void GreyStrokes::begin(const TileGrid& grid) {
    mPicture = grid.newPicture();
    const QList<double> work = workAbove(grid);
    const int count = bandsFor(mPainter.strokes().size());
    int top = 0;
    for (int i = 1; i <= count; ++i) {
        const auto cut = std::lower_bound(work.begin(), work.end(), work.last() * i / count);
        const int bottom = i == count ? grid.rows() : static_cast<int>(cut - work.begin());
        if (bottom > top)
            mBands.append({PicturePart(
                mPicture, grid.pixels({0, top, grid.columns(), bottom - top}), grid.toPixels())});
        top = std::max(top, bottom);
    }
}

/// How long it takes, roughly, to draw what lies above each row of tiles; at last all of it.
QList<double> GreyStrokes::workAbove(const TileGrid& grid) const {
    QList<double> work(grid.rows() + 1); // at first what each row has more than the one before
    const Strokes& strokes = std::as_const(mPainter).strokes();
    for (int i = 0; i < strokes.size(); ++i) {
        const QRectF hull = strokes.curve(i).hull();
        const QRect tiles = grid.tilesIn(hull);
        if (tiles.isEmpty())
            continue;
        const double share = (hull.width() + hull.height()) / tiles.height();
        work[tiles.top()] += share;
        work[tiles.bottom() + 1] -= share;
    }
    std::partial_sum(work.begin(), work.end(), work.begin());
    std::exclusive_scan(work.begin(), work.end(), work.begin(), 0.0);
    return work;
}

/// Each band has as long as the slice.
void GreyStrokes::draw(const TileGrid& grid, Slice& slice) {
    std::vector<std::future<void>> others; // which end before anything else is done
    band* mine = nullptr;
    for (band& each : mBands) {
        if (isWhole(each))
            continue;
        if (mine)
            others.push_back(
                std::async([this, mine, &grid, slice] { drawBand(*mine, grid, slice); }));
        mine = &each;
    }
    if (mine)
        drawBand(*mine, grid, slice);
    for (std::future<void>& other : others)
        other.get();
    slice.isOver(DRAWING_TIME); // as each band has counted on a copy
}

/// One stroke at least, so that there is an end to it.
void GreyStrokes::drawBand(band& piece, const TileGrid& grid, Slice slice) const {
    const Strokes& strokes = std::as_const(mPainter).strokes();
    QPainter painter;
    piece.part.begin(painter);
    do {
        if (grid.mayTouch(strokes.curve(piece.drawn), piece.part.pixels()))
            mPainter.drawStroke(painter, piece.drawn);
        ++piece.drawn;
    } while (!isWhole(piece) && !slice.isOver(DRAWING_TIME));
}

bool GreyStrokes::isWhole(const band& each) const {
    return each.drawn >= std::as_const(mPainter).strokes().size();
}

} // namespace ui
