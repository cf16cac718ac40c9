#pragma once

#include "ui/leaves/uileaf.h"
#include "ui/picture/uistroke.h"
#include "ui/picture/uistroketable.h"

#include <QDeadlineTimer>
#include <QPainter>
#include <QSize>

#include <optional>

namespace ui {

class Shared;

/// A stroke of the selected pattern, in view pixels.
struct selected_stroke {
    int position;       ///< In the stroke table.
    QPainterPath curve; ///< What of it comes near the view.
    QPainterPath head;  ///< Empty when the curve's end is not there.
};

/// Draws leaves and the strokes of their patterns with any painter, in vectors: what the leaf view
/// shows, also for a picture without a window.
///
/// Each differing stroke is drawn once, in grey; those that only the selected pattern has are left
/// out. The selected pattern follows in black, each of its strokes once, with an arrow head. The
/// leaves lie on top. A selection that names no leaf or pattern draws nothing in black.
///
/// Main thread only. The painter's pen and brush are not restored.
class LeafPainter {
public:
    /// `look` and `shared`, whose leaves have been given their place among each other
    /// (`LeafLayout::layout`), outlive the painter.
    LeafPainter(const Look& look, Shared& shared);

    /// To be called after a rebuild of the leaves; until the next `layout` there are no strokes.
    void onModelChanged();

    /// Places leaves and strokes in a view of `size` pixels; for every new model and every new
    /// size, before anything is drawn. The first one for a model walks all patterns.
    void layout(const QSize& size);

    /// The part of `layout` that takes no time: places the leaves. There are no strokes then.
    void placeLeaves(const QSize& size);

    /// The rest of `layout`, until `until`; true when all strokes are placed. No others but the
    /// operations of this class and `drawLeaf` may be called before. Throws `std::bad_alloc`; there
    /// are no strokes then, and the next call begins anew.
    bool placeStrokes(const QDeadlineTimer& until);

    void paintOn(QPainter& painter) const;

    /// Prepares `painter` for `drawStroke`.
    void beginStrokes(QPainter& painter) const;

    /// Draws the stroke of that position in the stroke table, unless it is left out for `selected`,
    /// which may be null.
    void drawStroke(QPainter& painter, int position, const domain::Pattern* selected) const;

    void drawSelected(QPainter& painter, const selected_stroke& stroke) const;
    void drawLeaf(QPainter& painter, const Leaf& leaf) const;

    /// What draws the stroke of that position in the stroke table as one of the selected pattern;
    /// empty where nothing is drawn.
    std::optional<selected_stroke> selectedStroke(int position) const;

    const Look& look() const { return mLook; }

    const Shared& shared() const { return mShared; }

    const StrokeTable& strokeTable() const { return mTable; }

    /// The strokes' curves by their positions in the stroke table; empty where nothing is drawn.
    const QList<std::optional<stroke>>& curves() const { return mCurves; }

private:
    bool collectStrokes(const QDeadlineTimer& until);
    bool placeCurves(const QDeadlineTimer& until);
    void drawPatterns(QPainter& painter) const;
    void drawLeaves(QPainter& painter) const;

    const Look& mLook;
    Shared& mShared;
    leaf_draw mLeafDraw;
    QRectF mView;
    bool mNeedsTable = true;
    bool mHasTable = false;
    StrokeTable mTable;
    QList<std::optional<stroke>> mCurves;
};

} // namespace ui
