#pragma once

#include "ui/picture/uileafpainter.h"
#include "ui/picture/uitileindex.h"

#include <QList>

namespace ui {

class Slice;

/// The strokes of the selected pattern as a picture shows them, and on which tiles; they are found
/// bit by bit, and known by the position in which they are. Main thread only.
class ShownPattern {
public:
    /// `painter` outlives the pattern.
    explicit ShownPattern(const LeafPainter& painter)
        : mPainter(painter) {}

    /// Shows none, in a picture of `grid`.
    void clear(const TileGrid& grid);

    /// Shows what is selected; appends the tiles of what was shown. False when that is the same.
    /// Strokes are all placed.
    bool follow(QList<int>& tiles);

    /// Finds more strokes and appends their tiles; true when all are found.
    bool find(Slice& slice, QList<int>& tiles);

    qsizetype size() const { return mStrokes.size(); }

    const selected_stroke& at(int stroke) const { return mStrokes[stroke]; }

    /// Whether the stroke of that position among all strokes is not to be drawn in grey.
    bool leavesOut(int position) const { return mPainter.strokes().isOnlyIn(position, mPattern); }

    /// Whether any that was found on these tiles is not.
    bool leavesOutOn(const QRect& tiles) const;

    const TileIndex& tiles() const { return mTiles; }

private:
    void add(int position, QList<int>& tiles);

    const LeafPainter& mPainter;
    TileGrid mGrid;
    const domain::Pattern* mPattern = nullptr;
    QList<int> mPositions;           // among all strokes
    QList<selected_stroke> mStrokes; // of those positions, as far as they were found
    TileIndex mTiles;
};

} // namespace ui
