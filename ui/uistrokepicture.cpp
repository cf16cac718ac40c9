#include "ui/uistrokepicture.h"

#include "ui/uileafpainter.h"

#include <QPaintEngine>

#include <algorithm>
#include <cmath>
#include <optional>

namespace ui {

namespace {

constexpr int TILE = 16;

// A stroke clipped to one tile costs about a fifth of the whole stroke, or less.
constexpr int TILES_PER_STROKE = 4;

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
    uchar* first = image.scanLine(rect.top()) + rect.left() * (image.depth() / 8);
    return {first, rect.width(), rect.height(), image.bytesPerLine(), image.format()};
}

stroke mapped(const stroke& curve, const QTransform& transform) {
    return {transform.map(curve.start), transform.map(curve.control1),
            transform.map(curve.control2), transform.map(curve.end)};
}

void sortUnique(QList<int>& values) {
    std::sort(values.begin(), values.end());
    values.erase(std::unique(values.begin(), values.end()), values.end());
}

} // namespace

StrokePicture::StrokePicture(const LeafPainter& leaves)
    : mLeaves(leaves) {}

void StrokePicture::forget() {
    mAll = QImage();
    mShown = QImage();
    mSelected = nullptr;
    mTiles.clear();
}

bool StrokePicture::drawOn(QPainter& painter, const QSize& size) {
    const std::optional<QTransform> grid = gridOf(painter);
    if (!grid || !prepare(*grid, size))
        return false;
    const domain::Pattern* selected = mLeaves.selectedPattern();
    if (mShown.isNull() || mSelected != selected)
        show(selected);
    if (mShown.isNull())
        return false;
    painter.drawImage(grid->inverted().mapRect(QRectF(mShown.rect())), mShown);
    return true;
}

/// Makes the picture of all strokes unless it is there.
bool StrokePicture::prepare(const QTransform& grid, const QSize& size) {
    if (!mAll.isNull() && mGrid == grid && mSize == size)
        return true;
    forget();
    mGrid = grid;
    mSize = size;
    const QRectF area = grid.mapRect(QRectF(QPointF(), size));
    mAll = QImage(QSize(static_cast<int>(std::ceil(area.right())),
                        static_cast<int>(std::ceil(area.bottom()))),
                  QImage::Format_ARGB32_Premultiplied);
    if (mAll.isNull())
        return false;
    drawAll(mAll, nullptr);
    return true;
}

void StrokePicture::show(const domain::Pattern* selected) {
    mShown = QImage(); // lest there be three pictures
    mShown = mAll;
    mSelected = selected;
    if (!selected)
        return;
    mShown.detach();
    if (mShown.isNull())
        return;
    leaveOut(*selected);
    QPainter painter(&mShown);
    painter.setTransform(mGrid);
    painter.setRenderHint(QPainter::Antialiasing);
    mLeaves.drawPattern(painter, *selected);
}

void StrokePicture::drawAll(QImage& image, const domain::Pattern* leftOut) const {
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setTransform(mGrid);
    mLeaves.beginStrokes(painter);
    for (int position = 0; position < mLeaves.curves().size(); ++position)
        mLeaves.drawStroke(painter, position, leftOut);
}

void StrokePicture::leaveOut(const domain::Pattern& pattern) {
    const QList<int> tiles = tilesOnlyIn(pattern);
    if (tiles.isEmpty())
        return;
    if (mTiles.isEmpty())
        fileByTile();
    if (isLongWay(tiles)) {
        drawAll(mShown, &pattern);
        return;
    }
    for (const int tile : tiles)
        redrawTile(tile, pattern);
}

/// A pen of one device pixel takes another way through the raster engine than a wider one: its
/// lines change where they cross the edge of the device, and do not under a clip. The wider one is
/// exact on both, and much faster on a small device.
void StrokePicture::redrawTile(int tile, const domain::Pattern& leftOut) {
    const QPoint corner(tile % columns() * TILE, tile / columns() * TILE);
    const QRect rect = QRect(corner, QSize(TILE, TILE)) & mShown.rect();
    QImage part = partOf(mShown, rect);
    part.fill(Qt::transparent);
    const bool thin = mGrid.m11() <= 1;
    QPainter painter(thin ? &mShown : &part);
    if (thin)
        painter.setClipRect(rect);
    painter.setTransform(thin ? mGrid : mGrid * QTransform::fromTranslate(-rect.x(), -rect.y()));
    mLeaves.beginStrokes(painter);
    for (const int position : mTiles[tile])
        mLeaves.drawStroke(painter, position, &leftOut);
}

QList<int> StrokePicture::tilesOnlyIn(const domain::Pattern& pattern) const {
    QList<int> tiles;
    for (const int position : mLeaves.strokeTable().strokesOf(pattern)) {
        if (mLeaves.curves()[position] && mLeaves.strokeTable().isOnlyIn(position, &pattern))
            collectTiles(mapped(*mLeaves.curves()[position], mGrid), tiles);
    }
    sortUnique(tiles);
    return tiles;
}

bool StrokePicture::isLongWay(const QList<int>& tiles) const {
    qsizetype strokes = 0;
    for (const int tile : tiles)
        strokes += mTiles[tile].size();
    return strokes > TILES_PER_STROKE * mLeaves.curves().size();
}

void StrokePicture::fileByTile() {
    mTiles.resize(qsizetype(columns()) * rows());
    QList<int> tiles;
    for (int position = 0; position < mLeaves.curves().size(); ++position) {
        if (!mLeaves.curves()[position])
            continue;
        tiles.clear();
        collectTiles(mapped(*mLeaves.curves()[position], mGrid), tiles);
        sortUnique(tiles);
        for (const int tile : tiles)
            mTiles[tile].append(position);
    }
}

/// Cuts the curve up until its hulls are about as small as a tile. What a pen adds to the curve on
/// each side, smooth edge included, is less than a view pixel and a device pixel.
void StrokePicture::collectTiles(const stroke& curve, QList<int>& tiles) const {
    const double beside = mGrid.m11() + 1;
    const QRectF hull = curve.hull();
    const QRectF touched = hull.adjusted(-beside, -beside, beside, beside) & QRectF(mAll.rect());
    if (touched.isEmpty())
        return;
    if (std::max(hull.width(), hull.height()) > TILE) {
        const auto [first, second] = curve.halves();
        collectTiles(first, tiles);
        collectTiles(second, tiles);
        return;
    }
    const int right = std::min(columns() - 1, static_cast<int>(touched.right()) / TILE);
    const int bottom = std::min(rows() - 1, static_cast<int>(touched.bottom()) / TILE);
    for (int row = static_cast<int>(touched.top()) / TILE; row <= bottom; ++row)
        for (int column = static_cast<int>(touched.left()) / TILE; column <= right; ++column)
            tiles.append(row * columns() + column);
}

int StrokePicture::columns() const {
    return (mAll.width() + TILE - 1) / TILE;
}

int StrokePicture::rows() const {
    return (mAll.height() + TILE - 1) / TILE;
}

} // namespace ui
