#include "ui/picture/uileafpicture.h"

#include "ui/leaves/uilook.h"

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
std::optional<QTransform> gridOf(const QPainter& painter) {
    const QTransform toDevice = painter.deviceTransform();
    const double scale = toDevice.m11();
    if (painter.paintEngine()->type() != QPaintEngine::Raster ||
        toDevice.type() > QTransform::TxScale || scale != toDevice.m22() || scale <= 0)
        return std::nullopt;
    return QTransform(scale, 0, 0, scale, toDevice.dx() - std::floor(toDevice.dx()),
                      toDevice.dy() - std::floor(toDevice.dy()));
}

/// The pixels of `image` within `rect`, in the same memory.
QImage partOf(QImage& image, const QRect& rect) {
    uchar* first = image.scanLine(rect.top()) + qsizetype(rect.left()) * (image.depth() / 8);
    return {first, rect.width(), rect.height(), image.bytesPerLine(), image.format()};
}

/// Throws `std::bad_alloc`.
QImage newPicture(const QSize& size) {
    QImage picture(size, QImage::Format_ARGB32_Premultiplied);
    if (picture.isNull())
        throw std::bad_alloc();
    picture.fill(Qt::transparent);
    return picture;
}

void copy(const QImage& from, const QRect& rect, QImage& to) {
    QPainter painter(&to);
    painter.setCompositionMode(QPainter::CompositionMode_Source);
    painter.drawImage(QPoint(), from, rect);
}

stroke mapped(const stroke& curve, const QTransform& transform) {
    return {transform.map(curve.start), transform.map(curve.control1),
            transform.map(curve.control2), transform.map(curve.end)};
}

void sortUnique(QList<int>& values) {
    std::sort(values.begin(), values.end());
    values.erase(std::unique(values.begin(), values.end()), values.end());
}

enum Appearance : char { PLAIN, SELECTED, IN_FOCUS };

/// What of the selection `Leaf::drawOn` looks at.
Appearance appearanceOf(const Leaf& leaf, const LeafSelection& selection) {
    if (leaf.mIndex == selection.mPrimary)
        return IN_FOCUS;
    return selection.hasAlternate(leaf.mIndex) ? SELECTED : PLAIN;
}

} // namespace

LeafPicture::LeafPicture(LeafPainter& painter)
    : mPainter(painter) {}

void LeafPicture::forget() {
    mStrokes = QImage();
    mShown = QImage();
    mNextStroke = 0;
    mHasStrokes = false;
    mRowsOnStrokes = 0;
    mLeaves.clear();
    mLooks.clear();
    mSelected = nullptr;
    mPositions.clear();
    mNextPosition = 0;
    mSelectedStrokes.clear();
    mSelectedOf.clear();
    mTouched.clear();
    mWork = work();
}

bool LeafPicture::drawOn(QPainter& painter, const QSize& size, const QDeadlineTimer& until) {
    const std::optional<QTransform> grid = gridOf(painter);
    mIsWhole = true;
    mIsNew = false;
    if (mPainter.shared().mLeaves.isEmpty())
        return true;
    try {
        if (!grid)
            return false;
        prepare(*grid, size);
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
    try {
        return mShown.isNull() || complete(until);
    } catch (const std::bad_alloc&) {
        forget();
        return true;
    }
}

void LeafPicture::show(QPainter& painter) const {
    const QTransform toView = mGrid.inverted();
    const QRect unfinished = mShown.rect() & mTiles.pixels({0, mRowsOnStrokes, mTiles.columns(),
                                                            mTiles.rows() - mRowsOnStrokes});
    if (!unfinished.isEmpty() && !mStrokes.isNull())
        painter.drawImage(toView.mapRect(QRectF(unfinished)), mStrokes, unfinished);
    painter.drawImage(toView.mapRect(QRectF(mShown.rect())), mShown);
}

void LeafPicture::prepare(const QTransform& grid, const QSize& size) {
    if (!mShown.isNull() && mGrid == grid && mSize == size)
        return;
    forget();
    mGrid = grid;
    mSize = size;
    const QRectF area = grid.mapRect(QRectF(QPointF(), size));
    const QSize pixels(static_cast<int>(std::ceil(area.right())),
                       static_cast<int>(std::ceil(area.bottom())));
    mShown = newPicture(pixels);
    mTiles = TileGrid(pixels);
    fileLeaves();
    followLooks();
    mWaiting = mLeavingOut = TileSet(mTiles);
    touchAll();
}

void LeafPicture::fileLeaves() {
    QList<int> tiles;
    QList<qsizetype> ends; // of each leaf's among them
    for (const Leaf* leaf : mPainter.shared().mLeaves) {
        mLeaves.append(leaf);
        collect(*leaf, tiles);
        ends.append(tiles.size());
    }
    mFirstLeafOf.fill(0, mTiles.count() + 1);
    for (const int tile : tiles)
        ++mFirstLeafOf[tile + 1];
    std::partial_sum(mFirstLeafOf.cbegin(), mFirstLeafOf.cend(), mFirstLeafOf.begin());
    QList<int> next = mFirstLeafOf;
    mLeavesOf.resize(tiles.size());
    int leaf = 0;
    for (qsizetype i = 0; i < tiles.size(); ++i) {
        while (i == ends[leaf])
            ++leaf;
        mLeavesOf[next[tiles[i]]++] = leaf;
    }
}

/// True when everything is drawn.
bool LeafPicture::complete(const QDeadlineTimer& until) {
    while (true) {
        followLooks();
        if (mHasStrokes)
            followPattern();
        if (!findSelected(until))
            return false;
        takeTouched();
        if (!drawAreas(until))
            return false;
        if (mHasStrokes)
            return true;
        if (drawStrokes(until)) {
            mHasStrokes = true;
            touchAll();
        } else if (until.hasExpired()) {
            return false;
        }
    }
}

/// Draws strokes in grey; true when all are drawn.
bool LeafPicture::drawStrokes(const QDeadlineTimer& until) {
    if (!mPainter.placeStrokes(until))
        return false;
    if (mPainter.curves().isEmpty())
        return true;
    if (mStrokes.isNull()) {
        mStrokes = newPicture(mShown.size());
        return false; // its memory took its time
    }
    mIsNew = true;
    QPainter painter(&mStrokes);
    painter.setTransform(mGrid);
    painter.setRenderHint(QPainter::Antialiasing);
    mPainter.beginStrokes(painter);
    while (mNextStroke < mPainter.curves().size()) {
        mPainter.drawStroke(painter, mNextStroke++, nullptr);
        if (until.hasExpired())
            break;
    }
    return mNextStroke >= mPainter.curves().size();
}

/// Touches the tiles of the leaves that look different now.
void LeafPicture::followLooks() {
    const LeafSelection& selection = mPainter.shared().leafSelection();
    if (mLooks.size() == mLeaves.size() && mSelection == selection)
        return;
    dropWork();
    QByteArray looks;
    looks.reserve(mLeaves.size());
    for (const Leaf* leaf : std::as_const(mLeaves)) {
        const char look = appearanceOf(*leaf, selection);
        if (looks.size() < mLooks.size() && mLooks[looks.size()] != look)
            collect(*leaf, mTouched);
        looks.append(look);
    }
    mLooks = looks;
    mSelection = selection;
}

/// Touches the tiles of the pattern that was selected, if it is another one now.
void LeafPicture::followPattern() {
    const domain::Pattern* selected = mPainter.shared().selectedPattern();
    if (selected == mSelected)
        return;
    dropWork();
    mTouched += mSelectedOf.keys();
    mSelectedStrokes.clear();
    mSelectedOf.clear();
    mSelected = selected;
    mPositions = selected ? mPainter.strokeTable().strokesOf(*selected) : QList<int>();
    mNextPosition = 0;
}

/// Touches the tiles of the selected strokes; true when all are found.
bool LeafPicture::findSelected(const QDeadlineTimer& until) {
    while (mNextPosition < mPositions.size()) {
        if (const auto stroke = mPainter.selectedStroke(mPositions[mNextPosition]))
            fileSelected(*stroke);
        ++mNextPosition;
        if (until.hasExpired())
            break;
    }
    return mNextPosition >= mPositions.size();
}

void LeafPicture::fileSelected(const selected_stroke& stroke) {
    QList<int> tiles;
    collect(stroke.position, tiles);
    collect(stroke.head.boundingRect(), tiles);
    sortUnique(tiles);
    for (const int tile : std::as_const(tiles))
        mSelectedOf[tile].append(static_cast<int>(mSelectedStrokes.size()));
    mSelectedStrokes.append(stroke);
    mTouched += tiles;
}

/// Lets the touched tiles wait.
void LeafPicture::takeTouched() {
    if (mTouched.isEmpty())
        return;
    sortUnique(mTouched);
    if (isLongWay())
        touchAll();
    for (const int tile : std::as_const(mTouched))
        (hasLeftOut(mSelectedOf.value(tile)) ? mLeavingOut : mWaiting).add(tile);
    mTouched.clear();
}

/// Whether drawing the touched tiles one by one is more work than drawing everything.
bool LeafPicture::isLongWay() const {
    qsizetype drawings = 0;
    for (const int tile : mTouched)
        drawings += mFirstLeafOf[tile + 1] - mFirstLeafOf[tile] + mSelectedOf.value(tile).size();
    return drawings > TILES_PER_DRAWING * (mLeaves.size() + mSelectedStrokes.size());
}

void LeafPicture::touchAll() {
    mTouched.resize(mTiles.count());
    std::iota(mTouched.begin(), mTouched.end(), 0);
}

/// Draws the areas that wait; true when none is left.
bool LeafPicture::drawAreas(const QDeadlineTimer& until) {
    while (!mWork.tiles.isEmpty() || !mWaiting.isEmpty() || !mLeavingOut.isEmpty()) {
        if (mWork.tiles.isEmpty())
            beginWork((mWaiting.firstRow() <= mLeavingOut.firstRow() ? mWaiting : mLeavingOut)
                          .take(BAND_ROWS));
        continueWork(until);
        if (mHasStrokes && mWork.tiles.isEmpty())
            mRowsOnStrokes =
                std::max(mRowsOnStrokes, std::min(mWaiting.firstRow(), mLeavingOut.firstRow()));
        if (until.hasExpired())
            break;
    }
    return mWork.tiles.isEmpty() && mWaiting.isEmpty() && mLeavingOut.isEmpty();
}

void LeafPicture::beginWork(const QRect& tiles) {
    mWork.pixels = mTiles.pixels(tiles);
    for (int row = tiles.top(); row <= tiles.bottom(); ++row) {
        for (int column = tiles.left(); column <= tiles.right(); ++column) {
            const int tile = mTiles.tile(column, row);
            mWork.tiles.append(tile);
            mWork.selected += mSelectedOf.value(tile);
            for (int i = mFirstLeafOf[tile]; i < mFirstLeafOf[tile + 1]; ++i)
                mWork.leaves.append(mLeavesOf[i]);
        }
    }
    sortUnique(mWork.selected);
    sortUnique(mWork.leaves);
    QImage part = partOf(mShown, mWork.pixels);
    const bool leavesOut = hasLeftOut(mWork.selected);
    if (leavesOut)
        mWork.strokes = strokesIn(mWork.pixels);
    if (mHasStrokes && !mStrokes.isNull() && !leavesOut)
        copy(mStrokes, mWork.pixels, part);
    else
        part.fill(Qt::transparent);
}

/// The grey strokes that may touch `pixels`.
QList<int> LeafPicture::strokesIn(const QRect& pixels) const {
    const QList<std::optional<stroke>>& curves = mPainter.curves();
    QList<int> strokes;
    for (int position = 0; position < curves.size(); ++position) {
        if (curves[position] && may_touch(mapped(*curves[position], mGrid), beside(), pixels))
            strokes.append(position);
    }
    return strokes;
}

/// A pen of one device pixel takes another way through the raster engine than a wider one: its
/// lines change where they cross the edge of the device, and do not under a clip. The wider one is
/// exact on both, and much faster on a small device.
void LeafPicture::continueWork(const QDeadlineTimer& until) {
    mIsNew = true;
    const QRect& pixels = mWork.pixels;
    QImage part = partOf(mShown, pixels);
    const bool thin = mGrid.m11() <= 1;
    QPainter painter(thin ? &mShown : &part);
    if (thin)
        painter.setClipRect(pixels);
    painter.setTransform(thin ? mGrid
                              : mGrid * QTransform::fromTranslate(-pixels.x(), -pixels.y()));
    painter.setRenderHint(QPainter::Antialiasing);
    while (mWork.drawn < mWork.size()) {
        draw(painter, mWork.drawn++);
        if (until.hasExpired())
            break;
    }
    if (mWork.drawn >= mWork.size())
        mWork = work();
}

void LeafPicture::draw(QPainter& painter, qsizetype step) const {
    if (step < mWork.strokes.size()) {
        mPainter.beginStrokes(painter);
        mPainter.drawStroke(painter, mWork.strokes[step], mSelected);
        return;
    }
    step -= mWork.strokes.size();
    if (step < mWork.selected.size()) {
        mPainter.drawSelected(painter, mSelectedStrokes[mWork.selected[step]]);
        return;
    }
    step -= mWork.selected.size();
    mPainter.drawLeaf(painter, *mLeaves[mWork.leaves[step]]);
}

/// What the work was to draw has changed: its tiles wait again.
void LeafPicture::dropWork() {
    mTouched += mWork.tiles;
    mWork = work();
}

bool LeafPicture::isLeftOut(int position) const {
    return mPainter.strokeTable().isOnlyIn(position, mSelected);
}

/// Whether any of these selected strokes is.
bool LeafPicture::hasLeftOut(const QList<int>& selected) const {
    return std::any_of(selected.begin(), selected.end(),
                       [this](int i) { return isLeftOut(mSelectedStrokes[i].position); });
}

/// More than what a pen adds to a curve on each side, in device pixels: half a view pixel, half as
/// much again at square ends, and the smooth edge.
double LeafPicture::beside() const {
    return mGrid.m11() + 1;
}

void LeafPicture::collect(const QRectF& area, QList<int>& tiles) const {
    const double more = beside();
    mTiles.collect(mGrid.mapRect(area).adjusted(-more, -more, more, more), tiles);
}

void LeafPicture::collect(const Leaf& leaf, QList<int>& tiles) const {
    const double radius = mPainter.look().mLeafRadius;
    collect(QRectF(leaf.mPos, QSizeF()).adjusted(-radius, -radius, radius, radius), tiles);
}

void LeafPicture::collect(int position, QList<int>& tiles) const {
    if (const std::optional<stroke>& curve = mPainter.curves()[position])
        mTiles.collect(mapped(*curve, mGrid), beside(), tiles);
}

} // namespace ui
