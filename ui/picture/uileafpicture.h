#pragma once

#include "ui/picture/uigreystrokes.h"
#include "ui/picture/uishownleaves.h"
#include "ui/picture/uishownpattern.h"
#include "ui/picture/uitileset.h"

#include <QDeadlineTimer>
#include <QImage>

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
/// Invariant: a tile of what is shown is right unless it is touched by a change of what it is to
/// show, waits to be drawn or belongs to the work under way. What is touched waits before anything
/// is drawn, and what is worked on does not wait: a change drops the work, whose tiles are touched.
///
/// Main thread only.
class LeafPicture {
public:
    /// `painter` outlives the picture.
    explicit LeafPicture(LeafPainter& painter);

    /// To be called when leaves or patterns are others. That leaves are elsewhere, or the view has
    /// another size, the picture sees itself. The leaves are placed when it is drawn next; strokes
    /// are placed by the picture.
    void onModelChanged();

    /// Lays strokes and leaves over what `painter` shows of a view of `size`, as far as they can be
    /// drawn until `until`. False, with nothing drawn and no stroke placed, for a painter that
    /// keeps vectors, turns or stretches, or without memory for the pictures.
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
        QRect tiles; // in columns and rows; empty when there is no work
        QRect pixels;
        QList<int> strokes;  // to be drawn where some are left out
        QList<int> selected; // positions in the shown pattern
        QList<int> leaves;   // positions in the shown leaves
        qsizetype drawn = 0; // of all of these, in this order

        qsizetype size() const { return strokes.size() + selected.size() + leaves.size(); }
    };

    void forget();
    void prepare(const TileGrid& grid);
    bool complete(Slice& slice);
    bool drawStrokes(Slice& slice);
    bool follow(Slice& slice);
    void takeTouched();
    bool isLongWay() const;
    void touchAll();
    bool drawAreas(Slice& slice);
    void beginWork(const QRect& tiles);
    QList<int> strokesIn(const QRect& pixels) const;
    void continueWork(Slice& slice);
    void dropWork();
    void draw(QPainter& painter, qsizetype step) const;
    void show(QPainter& painter) const;

    LeafPainter& mPainter;
    TileGrid mGrid;
    GreyStrokes mStrokes;
    QImage mShown;          // null when everything is to begin anew
    int mRowsOnStrokes = 0; // of tiles in mShown, from the top, that hold strokes too
    bool mIsWhole = true;
    bool mIsNew = false;

    // What mShown shows when no tile waits.
    ShownLeaves mLeaves;
    ShownPattern mPattern;

    QList<int> mTouched; // tiles, some of them several times
    TileSet mWaiting;    // tiles where strokes are copied, and costly ones where they are drawn
    work mWork;          // under way
};

} // namespace ui
