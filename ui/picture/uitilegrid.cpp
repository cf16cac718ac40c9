#include "ui/picture/uitilegrid.h"

#include <algorithm>
#include <cmath>
#include <new>

namespace ui {

namespace {

constexpr int TILE = 16;

int tilesAlong(int pixels) {
    return (pixels + TILE - 1) / TILE;
}

int tileAt(double pixel) {
    return static_cast<int>(pixel) / TILE;
}

stroke mapped(const stroke& curve, const QTransform& transform) {
    return {transform.map(curve.start), transform.map(curve.control1),
            transform.map(curve.control2), transform.map(curve.end)};
}

} // namespace

TileGrid::TileGrid(const QTransform& toPixels, const QSize& view)
    : mToPixels(toPixels) {
    const QRectF area = toPixels.mapRect(QRectF(QPointF(), view));
    mSize = QSize(static_cast<int>(std::ceil(area.right())),
                  static_cast<int>(std::ceil(area.bottom())));
}

int TileGrid::columns() const {
    return tilesAlong(mSize.width());
}

int TileGrid::rows() const {
    return tilesAlong(mSize.height());
}

QRect TileGrid::pixels(const QRect& tiles) const {
    return QRect(tiles.topLeft() * TILE, tiles.size() * TILE) & QRect(QPoint(), mSize);
}

QImage TileGrid::newPicture() const {
    QImage picture(mSize, QImage::Format_ARGB32_Premultiplied);
    if (picture.isNull())
        throw std::bad_alloc();
    picture.fill(Qt::transparent);
    return picture;
}

void TileGrid::collect(const QRectF& area, QList<int>& tiles) const {
    collectPixels(withPen(mToPixels.mapRect(area)), tiles);
}

void TileGrid::collect(const stroke& curve, QList<int>& tiles) const {
    visit_pieces(mapped(curve, mToPixels), withPen(QRectF(QPointF(), mSize)), TILE,
                 [&](const stroke& piece) {
                     collectPixels(withPen(piece.hull()), tiles);
                     return false;
                 });
}

bool TileGrid::mayTouch(const stroke& curve, const QRect& pixels) const {
    return visit_pieces(mapped(curve, mToPixels), withPen(pixels), TILE,
                        [](const stroke& /*piece*/) { return true; });
}

/// With more than what the pen adds on each side: half a view pixel, half as much again at square
/// ends, and the smooth edge.
QRectF TileGrid::withPen(const QRectF& area) const {
    const double more = mToPixels.m11() + 1;
    return area.adjusted(-more, -more, more, more);
}

QRect TileGrid::tilesOf(const QRectF& pixels) const {
    const QRectF touched = pixels & QRectF(QPointF(), mSize);
    if (touched.isEmpty())
        return {};
    return {QPoint(tileAt(touched.left()), tileAt(touched.top())),
            QPoint(std::min(columns() - 1, tileAt(touched.right())),
                   std::min(rows() - 1, tileAt(touched.bottom())))};
}

void TileGrid::collectPixels(const QRectF& area, QList<int>& tiles) const {
    const QRect touched = tilesOf(area);
    for (int row = touched.top(); row <= touched.bottom(); ++row)
        for (int column = touched.left(); column <= touched.right(); ++column)
            tiles.append(tile(column, row));
}

} // namespace ui
