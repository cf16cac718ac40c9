#include "ui/uileafpicture.h"

#include "ui/uilook.h"
#include "ui/uishared.h"

#include <QPaintEngine>

#include <algorithm>
#include <cmath>
#include <new>
#include <optional>

namespace ui {

namespace {

// A circle clipped to one tile costs about half of the whole, a curve much less.
constexpr int TILES_PER_DRAWING = 2;

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

LeafPicture::LeafPicture(const LeafPainter& painter)
    : mPainter(painter) {}

void LeafPicture::forget() {
    mStrokes = QImage();
    mShown = QImage();
    mStrokesOf.clear();
    mLeavesOf.clear();
    mSelected = nullptr;
    mSelectedStrokes.clear();
    mSelectedOf.clear();
    mLeavesOut = false;
    mLooks.clear();
}

bool LeafPicture::drawOn(QPainter& painter, const QSize& size) {
    const std::optional<QTransform> grid = gridOf(painter);
    try {
        if (!grid || !prepare(*grid, size))
            return false;
        followSelection();
    } catch (const std::bad_alloc&) {
        forget();
        return false;
    }
    painter.drawImage(grid->inverted().mapRect(QRectF(mShown.rect())), mShown);
    return true;
}

bool LeafPicture::prepare(const QTransform& grid, const QSize& size) {
    if (!mShown.isNull() && mGrid == grid && mSize == size)
        return true;
    forget();
    mGrid = grid;
    mSize = size;
    const QRectF area = grid.mapRect(QRectF(QPointF(), size));
    const QSize pixels(static_cast<int>(std::ceil(area.right())),
                       static_cast<int>(std::ceil(area.bottom())));
    mStrokes = QImage(pixels, QImage::Format_ARGB32_Premultiplied);
    mShown = QImage(pixels, QImage::Format_ARGB32_Premultiplied);
    if (mStrokes.isNull() || mShown.isNull()) {
        forget();
        return false;
    }
    mTiles = TileGrid(pixels);
    drawStrokes(mStrokes, nullptr);
    fileLeaves();
    followPattern();
    followLooks();
    drawAll();
    return true;
}

void LeafPicture::drawStrokes(QImage& image, const domain::Pattern* leftOut) const {
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setTransform(mGrid);
    painter.setRenderHint(QPainter::Antialiasing);
    mPainter.beginStrokes(painter);
    for (int position = 0; position < mPainter.curves().size(); ++position)
        mPainter.drawStroke(painter, position, leftOut);
}

void LeafPicture::fileLeaves() {
    mLeavesOf.resize(mTiles.count());
    QList<int> tiles;
    for (auto leaf = mPainter.shared().mLeaves.begin(); leaf.hasValue(); ++leaf) {
        tiles.clear();
        collect(**leaf, tiles);
        for (const int tile : tiles)
            mLeavesOf[tile].append(*leaf);
    }
}

void LeafPicture::fileStrokes() {
    mStrokesOf.resize(mTiles.count());
    QList<int> tiles;
    for (int position = 0; position < mPainter.curves().size(); ++position) {
        tiles.clear();
        collect(position, tiles);
        sortUnique(tiles);
        for (const int tile : tiles)
            mStrokesOf[tile].append(position);
    }
}

void LeafPicture::followSelection() {
    QList<int> tiles = followPattern() + followLooks();
    if (tiles.isEmpty())
        return;
    sortUnique(tiles);
    if (mLeavesOut && mStrokesOf.isEmpty())
        fileStrokes();
    if (isLongWay(tiles)) {
        drawAll();
        return;
    }
    for (const int tile : tiles)
        drawTile(tile);
}

/// Returns the tiles of the pattern that was selected, and of the one that is now.
QList<int> LeafPicture::followPattern() {
    const domain::Pattern* selected = mPainter.shared().selectedPattern();
    if (selected == mSelected)
        return {};
    QList<int> touched = mSelectedOf.keys();
    mSelected = selected;
    mSelectedStrokes = mPainter.strokesOf(selected);
    mSelectedOf.clear();
    mLeavesOut = false;
    for (int i = 0; i < mSelectedStrokes.size(); ++i) {
        QList<int> tiles;
        collect(mSelectedStrokes[i].position, tiles);
        collect(mSelectedStrokes[i].head.boundingRect(), tiles);
        sortUnique(tiles);
        for (const int tile : tiles)
            mSelectedOf[tile].append(i);
        touched += tiles;
        mLeavesOut = mLeavesOut || isLeftOut(mSelectedStrokes[i].position);
    }
    return touched;
}

/// Returns the tiles of the leaves that look different now.
QList<int> LeafPicture::followLooks() {
    const Shared& shared = mPainter.shared();
    QByteArray looks;
    QList<int> tiles;
    for (auto leaf = shared.mLeaves.begin(); leaf.hasValue(); ++leaf) {
        const char look = appearanceOf(**leaf, shared.leafSelection());
        if (mLooks.size() <= looks.size() || mLooks[looks.size()] != look)
            collect(**leaf, tiles);
        looks.append(look);
    }
    mLooks = looks;
    return tiles;
}

void LeafPicture::drawAll() {
    if (mLeavesOut)
        drawStrokes(mShown, mSelected);
    else
        copy(mStrokes, mStrokes.rect(), mShown);
    QPainter painter(&mShown);
    painter.setTransform(mGrid);
    painter.setRenderHint(QPainter::Antialiasing);
    for (const selected_stroke& stroke : mSelectedStrokes)
        mPainter.drawSelected(painter, stroke);
    for (auto leaf = mPainter.shared().mLeaves.begin(); leaf.hasValue(); ++leaf)
        mPainter.drawLeaf(painter, **leaf);
}

/// A pen of one device pixel takes another way through the raster engine than a wider one: its
/// lines change where they cross the edge of the device, and do not under a clip. The wider one is
/// exact on both, and much faster on a small device.
void LeafPicture::drawTile(int tile) {
    const QRect rect = mTiles.rect(tile);
    QImage part = partOf(mShown, rect);
    const bool leavesOut = hasLeftOut(tile);
    if (leavesOut)
        part.fill(Qt::transparent);
    else
        copy(mStrokes, rect, part);
    const bool thin = mGrid.m11() <= 1;
    QPainter painter(thin ? &mShown : &part);
    if (thin)
        painter.setClipRect(rect);
    painter.setTransform(thin ? mGrid : mGrid * QTransform::fromTranslate(-rect.x(), -rect.y()));
    painter.setRenderHint(QPainter::Antialiasing);
    if (leavesOut) {
        mPainter.beginStrokes(painter);
        for (const int position : mStrokesOf[tile])
            mPainter.drawStroke(painter, position, mSelected);
    }
    drawOver(painter, tile);
}

void LeafPicture::drawOver(QPainter& painter, int tile) const {
    for (const int i : mSelectedOf.value(tile))
        mPainter.drawSelected(painter, mSelectedStrokes[i]);
    for (const Leaf* leaf : mLeavesOf[tile])
        mPainter.drawLeaf(painter, *leaf);
}

bool LeafPicture::isLeftOut(int position) const {
    return mPainter.strokeTable().isOnlyIn(position, mSelected);
}

bool LeafPicture::hasLeftOut(int tile) const {
    const QList<int> selected = mSelectedOf.value(tile);
    return std::any_of(selected.begin(), selected.end(),
                       [this](int i) { return isLeftOut(mSelectedStrokes[i].position); });
}

bool LeafPicture::isLongWay(const QList<int>& tiles) const {
    qsizetype drawings = 0;
    for (const int tile : tiles) {
        drawings += mLeavesOf[tile].size() + mSelectedOf.value(tile).size();
        if (hasLeftOut(tile))
            drawings += mStrokesOf[tile].size();
    }
    qsizetype all = mPainter.shared().mLeaves.size() + mSelectedStrokes.size();
    if (mLeavesOut)
        all += mPainter.curves().size();
    return drawings > TILES_PER_DRAWING * all;
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
