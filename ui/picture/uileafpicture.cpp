#include "ui/picture/uileafpicture.h"

#include "ui/leaves/uilook.h"
#include "ui/leaves/uishared.h"
#include "ui/picture/uipicturepart.h"
#include "ui/picture/uislice.h"

#include <QPaintEngine>

#include <algorithm>
#include <cmath>
#include <new>
#include <numeric>
#include <optional>
#include <utility>

namespace ui {

namespace {

// A circle clipped to one tile costs about half of the whole, a curve much less.
constexpr int TILES_PER_DRAWING = 2;

constexpr int BAND_ROWS = 8; // the height of the largest area that is drawn at once

/// The scale to device pixels, and where within its device pixel the view begins.
std::optional<QTransform> toPixelsOf(const QPainter& painter) {
    const QTransform toDevice = painter.deviceTransform();
    const double scale = toDevice.m11();
    if (painter.paintEngine()->type() != QPaintEngine::Raster ||
        toDevice.type() > QTransform::TxScale || scale != toDevice.m22() || scale <= 0)
        return std::nullopt;
    return QTransform(scale, 0, 0, scale, toDevice.dx() - std::floor(toDevice.dx()),
                      toDevice.dy() - std::floor(toDevice.dy()));
}

void copy(const QImage& from, const QRect& rect, QImage& to) {
    QPainter painter(&to);
    painter.setCompositionMode(QPainter::CompositionMode_Source);
    painter.drawImage(QPoint(), from, rect);
}

void sortUnique(QList<int>& values) {
    std::sort(values.begin(), values.end());
    values.erase(std::unique(values.begin(), values.end()), values.end());
}

} // namespace

LeafPicture::LeafPicture(LeafPainter& painter)
    : mPainter(painter)
    , mStrokes(painter)
    , mPattern(painter) {}

void LeafPicture::onModelChanged() {
    mPainter.strokes().forget();
    forget();
}

void LeafPicture::forget() {
    mPainter.strokes().forgetPlaces();
    mStrokes.forget();
    mShown = QImage();
    mRowsOnStrokes = 0;
    mLeaves.clear();
    mPattern.clear(TileGrid());
    mTouched.clear();
    mWaiting = TileSet();
    mWork = work();
}

bool LeafPicture::drawOn(QPainter& painter, const QSize& size, const QDeadlineTimer& until) {
    mIsWhole = true;
    mIsNew = false;
    if (mPainter.shared().mLeaves.isEmpty())
        return true;
    const std::optional<QTransform> toPixels = toPixelsOf(painter);
    if (!toPixels) {
        forget();
        return false;
    }
    try {
        prepare(TileGrid(*toPixels, size));
    } catch (const std::bad_alloc&) {
        forget();
        return false;
    }
    mIsWhole = advance(until);
    if (!mShown.isNull())
        show(painter);
    return !mShown.isNull();
}

bool LeafPicture::advance(const QDeadlineTimer& until) {
    Slice slice(until);
    try {
        return mShown.isNull() || complete(slice);
    } catch (const std::bad_alloc&) {
        forget();
        return true;
    }
}

void LeafPicture::show(QPainter& painter) const {
    const QTransform toView = mGrid.toPixels().inverted();
    const QRect unfinished =
        mGrid.pixels({0, mRowsOnStrokes, mGrid.columns(), mGrid.rows() - mRowsOnStrokes});
    if (!unfinished.isEmpty() && !mStrokes.picture().isNull())
        painter.drawImage(toView.mapRect(QRectF(unfinished)), mStrokes.picture(), unfinished);
    painter.drawImage(toView.mapRect(QRectF(mShown.rect())), mShown);
}

void LeafPicture::prepare(const TileGrid& grid) {
    const Shared& shared = mPainter.shared();
    if (!mShown.isNull() && mGrid == grid && mLeaves.are(shared.mLeaves))
        return;
    forget();
    mGrid = grid;
    mShown = grid.newPicture();
    mLeaves.take(shared.mLeaves, mPainter.look().mLeafRadius, grid, shared.leafSelection());
    mPattern.clear(grid);
    mWaiting = TileSet(grid);
    touchAll();
}

/// True when everything is drawn.
bool LeafPicture::complete(Slice& slice) {
    while (true) {
        if (!follow(slice))
            return false;
        takeTouched();
        if (!drawAreas(slice))
            return false;
        if (mStrokes.isWhole())
            return true;
        if (drawStrokes(slice))
            touchAll();
        else if (slice.isOver(0))
            return false;
    }
}

/// Draws strokes in grey; true when all are drawn.
bool LeafPicture::drawStrokes(Slice& slice) {
    const qsizetype drawn = mStrokes.drawn();
    const bool isWhole = mStrokes.advance(mGrid, slice);
    mIsNew = mIsNew || mStrokes.drawn() != drawn;
    return isWhole;
}

/// Touches the tiles that are to show something else now; true when these are all. No pattern is
/// shown before the grey strokes are.
bool LeafPicture::follow(Slice& slice) {
    if (mLeaves.follow(mPainter.shared().leafSelection(), mTouched))
        dropWork();
    if (!mStrokes.isWhole())
        return true;
    if (mPattern.follow(mTouched))
        dropWork();
    return mPattern.find(slice, mTouched);
}

/// Lets the touched tiles wait.
void LeafPicture::takeTouched() {
    if (mTouched.isEmpty())
        return;
    sortUnique(mTouched);
    if (isLongWay())
        touchAll();
    for (const int tile : std::as_const(mTouched))
        mWaiting.add(tile,
                     mPattern.leavesOutOn(mGrid.rectOf(tile)) ? TileSet::COSTLY : TileSet::PLAIN);
    mTouched.clear();
}

/// Whether drawing the touched tiles one by one is more work than drawing everything.
bool LeafPicture::isLongWay() const {
    qsizetype drawings = 0;
    for (const int tile : mTouched)
        drawings += mLeaves.tiles().countOn(tile) + mPattern.tiles().countOn(tile);
    return drawings > TILES_PER_DRAWING * (mLeaves.size() + mPattern.size());
}

void LeafPicture::touchAll() {
    mTouched.resize(mGrid.count());
    std::iota(mTouched.begin(), mTouched.end(), 0);
}

/// Draws the areas that wait; true when none is left.
bool LeafPicture::drawAreas(Slice& slice) {
    while (!mWork.tiles.isEmpty() || !mWaiting.isEmpty()) {
        if (mWork.tiles.isEmpty())
            beginWork(mWaiting.take(BAND_ROWS));
        continueWork(slice);
        if (mStrokes.isWhole() && mWork.tiles.isEmpty())
            mRowsOnStrokes = std::max(mRowsOnStrokes, mWaiting.firstRow());
        if (slice.isOver(DRAWING_TIME))
            break;
    }
    return mWork.tiles.isEmpty() && mWaiting.isEmpty();
}

void LeafPicture::beginWork(const QRect& tiles) {
    mWork.tiles = tiles;
    mWork.pixels = mGrid.pixels(tiles);
    mWork.selected = mPattern.tiles().on(tiles);
    mWork.leaves = mLeaves.tiles().on(tiles);
    QImage part = part_of(mShown, mWork.pixels);
    const bool leavesOut = mPattern.leavesOutOn(tiles);
    if (leavesOut)
        mWork.strokes = strokesIn(mWork.pixels);
    if (mStrokes.isWhole() && !mStrokes.picture().isNull() && !leavesOut)
        copy(mStrokes.picture(), mWork.pixels, part);
    else
        part.fill(Qt::transparent);
}

/// The grey strokes that may touch `pixels`, but for those that are left out.
QList<int> LeafPicture::strokesIn(const QRect& pixels) const {
    const Strokes& strokes = mPainter.strokes();
    QList<int> touching;
    for (int position = 0; position < strokes.size(); ++position) {
        if (!mPattern.leavesOut(position) && mGrid.mayTouch(strokes.curve(position), pixels))
            touching.append(position);
    }
    return touching;
}

void LeafPicture::continueWork(Slice& slice) {
    mIsNew = true;
    PicturePart part(mShown, mWork.pixels, mGrid.toPixels());
    QPainter painter;
    part.begin(painter);
    while (mWork.drawn < mWork.size()) {
        draw(painter, mWork.drawn++);
        if (slice.isOver(DRAWING_TIME))
            break;
    }
    if (mWork.drawn >= mWork.size())
        mWork = work();
}

void LeafPicture::draw(QPainter& painter, qsizetype step) const {
    if (step < mWork.strokes.size()) {
        mPainter.drawStroke(painter, mWork.strokes[step]);
        return;
    }
    step -= mWork.strokes.size();
    if (step < mWork.selected.size()) {
        mPainter.drawSelected(painter, mPattern.at(mWork.selected[step]));
        return;
    }
    step -= mWork.selected.size();
    mPainter.drawLeaf(painter, mLeaves.at(mWork.leaves[step]));
}

/// What the work was to draw has changed: its tiles are touched again.
void LeafPicture::dropWork() {
    for (int row = mWork.tiles.top(); row <= mWork.tiles.bottom(); ++row)
        for (int column = mWork.tiles.left(); column <= mWork.tiles.right(); ++column)
            mTouched.append(mGrid.tile(column, row));
    mWork = work();
}

} // namespace ui
