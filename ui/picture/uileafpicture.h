#pragma once

#include "ui/leaves/uishared.h"
#include "ui/picture/uileafpainter.h"
#include "ui/picture/uitilegrid.h"

#include <QByteArray>
#include <QDeadlineTimer>
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
/// and pixel grid stay, the other is what is shown. Without strokes there is no need of the former.
/// When the selection changes, only those areas of the latter are drawn again that the strokes of
/// the old or the new selected pattern may touch, or a leaf that looks different: the grey strokes
/// are copied or, where some are to be left out, drawn, then the selected strokes and leaves that
/// may touch the area. Everything is drawn anew when that is less work.
///
/// All of this is done bit by bit, as long as the caller allows each time. Leaves come first, at
/// first on nothing; the grey strokes are shown below them while they are drawn, and are all there
/// when the leaves and the selected pattern are drawn on them.
///
/// Main thread only.
class LeafPicture {
public:
    /// `painter` outlives the picture.
    explicit LeafPicture(LeafPainter& painter);

    /// To be called when leaves or strokes are others or elsewhere. The leaf painter has placed the
    /// leaves, but need not have placed the strokes, when the picture is drawn next.
    void forget();

    /// Lays strokes and leaves over what `painter` shows of a view of `size`, as far as they can be
    /// drawn until `until`. False, with nothing drawn, for a painter that keeps vectors, turns or
    /// stretches, or without memory for the pictures.
    bool drawOn(QPainter& painter, const QSize& size, const QDeadlineTimer& until);

    /// Draws more of what `drawOn` left to be drawn, until `until`; `drawOn` shows it. True when
    /// nothing is left, or `drawOn` is to begin anew.
    bool advance(const QDeadlineTimer& until);

    /// False when `drawOn` had to stop before everything was drawn, the last time.
    bool isWhole() const { return mIsWhole; }

    /// Whether that call drew what the one before had not, perhaps outside of what its painter had
    /// to show.
    bool isNew() const { return mIsNew; }

private:
    /// Drawing one area of what is shown.
    struct work {
        QList<int> tiles;
        QRect pixels;
        QList<int> strokes;  ///< To be drawn where some are left out: positions in the table.
        QList<int> selected; ///< Positions in mSelectedStrokes.
        QList<int> leaves;   ///< Positions in mLeaves.
        qsizetype drawn = 0; ///< Of all of these, in this order.

        qsizetype size() const { return strokes.size() + selected.size() + leaves.size(); }
    };

    void prepare(const QTransform& grid, const QSize& size);
    void fileLeaves();
    bool complete(const QDeadlineTimer& until);
    bool drawStrokes(const QDeadlineTimer& until);
    void followLooks();
    void followPattern();
    bool findSelected(const QDeadlineTimer& until);
    void fileSelected(const selected_stroke& stroke);
    void takeTouched();
    bool isLongWay() const;
    void touchAll();
    bool drawAreas(const QDeadlineTimer& until);
    void beginWork(const QRect& tiles);
    QList<int> strokesIn(const QRect& pixels) const;
    void continueWork(const QDeadlineTimer& until);
    void dropWork();
    void draw(QPainter& painter, qsizetype step) const;
    void show(QPainter& painter) const;
    bool isLeftOut(int position) const;
    bool hasLeftOut(const QList<int>& selected) const;
    double beside() const;
    void collect(const QRectF& area, QList<int>& tiles) const;
    void collect(const Leaf& leaf, QList<int>& tiles) const;
    void collect(int position, QList<int>& tiles) const;

    LeafPainter& mPainter;
    QTransform mGrid; // from view to device pixels, as far as the pixels depend on it
    QSize mSize;      // of the view
    TileGrid mTiles;
    QImage mStrokes;     // every stroke; null when there are none yet
    QImage mShown;       // null when it is to be drawn
    int mNextStroke = 0; // to be drawn in mStrokes
    bool mHasStrokes = false;
    int mRowsOnStrokes = 0; // of tiles in mShown, from the top, that hold strokes too
    bool mIsWhole = true;
    bool mIsNew = false;

    // In list order, and by tile: those of a tile end where those of the next begin.
    QList<const Leaf*> mLeaves;
    QList<int> mLeavesOf; // positions in mLeaves
    QList<int> mFirstLeafOf;

    // What mShown shows when no tile waits.
    LeafSelection mSelection;
    QByteArray mLooks; // of the leaves, in list order
    const domain::Pattern* mSelected = nullptr;
    QList<int> mPositions;                   // of its strokes in the stroke table
    qsizetype mNextPosition = 0;             // to be looked at
    QList<selected_stroke> mSelectedStrokes; // those found so far
    QHash<int, QList<int>> mSelectedOf;      // by tile; positions in mSelectedStrokes

    QList<int> mTouched; // tiles that are to be drawn again
    TileSet mWaiting;    // for that; here grey strokes are copied
    TileSet mLeavingOut; // for that; here they are drawn, but for some
    work mWork;          // under way
};

} // namespace ui
