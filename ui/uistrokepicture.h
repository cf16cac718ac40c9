#pragma once

#include <QImage>
#include <QList>
#include <QPainter>
#include <QSize>
#include <QTransform>

namespace domain {
class Pattern;
}

namespace ui {

class LeafPainter;
struct stroke;

/// The patterns of a leaf painter as pixels, so that a repaint for a rubber band, a leaf or another
/// selected pattern does not draw thousands of curves anew. The pixels are those that the leaf
/// painter draws on a transparent picture; that is laid over what the painter shows.
///
/// One picture holds every stroke in grey, for as long as strokes, size and pixel grid stay. The
/// picture that is shown is a copy of it with the selected pattern drawn on top. Where only this
/// pattern has strokes, they are to be missing below: the tiles of 16 x 16 device pixels that they
/// may touch are emptied and drawn again from the other strokes that may touch them. To find those,
/// strokes are filed by tile, once. When this would take longer than drawing all strokes does, that
/// is done instead. Two pictures at most, one while no pattern is selected.
///
/// Main thread only.
class StrokePicture {
public:
    /// `leaves` outlives the picture.
    explicit StrokePicture(const LeafPainter& leaves);

    /// To be called when the strokes are others or elsewhere.
    void forget();

    /// Lays the patterns over what `painter` shows of a view of `size`. False, with nothing drawn,
    /// for a painter that keeps vectors, turns or stretches, or without memory for a picture.
    bool drawOn(QPainter& painter, const QSize& size);

private:
    bool prepare(const QTransform& grid, const QSize& size);
    void show(const domain::Pattern* selected);
    void drawAll(QImage& image, const domain::Pattern* leftOut) const;
    void leaveOut(const domain::Pattern& pattern);
    void redrawTile(int tile, const domain::Pattern& leftOut);
    QList<int> tilesOnlyIn(const domain::Pattern& pattern) const;
    bool isLongWay(const QList<int>& tiles) const;
    void fileByTile();
    void collectTiles(const stroke& curve, QList<int>& tiles) const;
    int columns() const;
    int rows() const;

    const LeafPainter& mLeaves;
    QTransform mGrid; // from view to device pixels, as far as the pixels depend on it
    QSize mSize;      // of the view
    QImage mAll;      // every stroke; null when it is to be drawn
    QImage mShown;    // null when it is to be drawn
    const domain::Pattern* mSelected = nullptr; // in mShown
    QList<QList<int>> mTiles; // the strokes of each tile, ascending; empty when not filed yet
};

} // namespace ui
