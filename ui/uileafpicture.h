#pragma once

#include "ui/uileafpainter.h"
#include "ui/uitilegrid.h"

#include <QByteArray>
#include <QHash>
#include <QImage>
#include <QTransform>

namespace ui {

/// What a leaf painter draws, as pixels, so that a repaint does not draw thousands of curves and
/// circles anew. The pixels are those that the leaf painter draws on a transparent picture, which
/// is laid over what there is; strokes one device pixel wide may differ by 4 of 255 where they
/// leave the view.
///
/// There are two pictures of the view: one holds every stroke in grey, for as long as strokes, size
/// and pixel grid stay, the other is what is shown. When the selection changes, only those tiles of
/// the latter are drawn again that the strokes of the old or the new selected pattern may touch, or
/// a leaf that looks different: the grey strokes are copied or, where some are to be left out,
/// drawn, then the selected strokes and leaves that may touch the tile. Everything is drawn anew
/// when that is less work.
///
/// Main thread only.
class LeafPicture {
public:
    /// `painter` outlives the picture.
    explicit LeafPicture(const LeafPainter& painter);

    /// To be called when leaves or strokes are others or elsewhere.
    void forget();

    /// Lays strokes and leaves over what `painter` shows of a view of `size`. False, with nothing
    /// drawn, for a painter that keeps vectors, turns or stretches, or without memory for the
    /// pictures.
    bool drawOn(QPainter& painter, const QSize& size);

private:
    bool prepare(const QTransform& grid, const QSize& size);
    void drawStrokes(QImage& image, const domain::Pattern* leftOut) const;
    void fileLeaves();
    void fileStrokes();
    void followSelection();
    QList<int> followPattern();
    QList<int> followLooks();
    void drawAll();
    void drawTile(int tile);
    void drawOver(QPainter& painter, int tile) const;
    bool isLeftOut(int position) const;
    bool hasLeftOut(int tile) const;
    bool isLongWay(const QList<int>& tiles) const;
    double beside() const;
    void collect(const QRectF& area, QList<int>& tiles) const;
    void collect(const Leaf& leaf, QList<int>& tiles) const;
    void collect(int position, QList<int>& tiles) const;

    const LeafPainter& mPainter;
    QTransform mGrid; // from view to device pixels, as far as the pixels depend on it
    QSize mSize;      // of the view
    TileGrid mTiles;
    QImage mStrokes; // every stroke; null when it is to be drawn
    QImage mShown;   // null when it is to be drawn

    // What mShown shows.
    const domain::Pattern* mSelected = nullptr;
    QList<selected_stroke> mSelectedStrokes;
    bool mLeavesOut = false; // some of the selected strokes
    QByteArray mLooks;       // of the leaves, in list order

    // By tile, in the order in which they are drawn.
    QList<QList<int>> mStrokesOf; // positions in the stroke table; empty when not filed yet
    QList<QList<const Leaf*>> mLeavesOf;
    QHash<int, QList<int>> mSelectedOf; // positions in mSelectedStrokes
};

} // namespace ui
