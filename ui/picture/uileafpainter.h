#pragma once

#include "ui/leaves/uileaf.h"
#include "ui/picture/uistrokes.h"

#include <QPainter>
#include <QSize>

namespace ui {

class Shared;

/// A stroke of the selected pattern, in view pixels.
struct selected_stroke {
    int position;       ///< Among the strokes.
    QPainterPath curve; ///< What of it comes near the view.
    QPainterPath head;  ///< Empty when the curve's end is not there.
};

/// Draws leaves and the strokes of their patterns with any painter, in vectors: what the leaf view
/// shows, also for a picture without a window.
///
/// Strokes are grey; those that only the selected pattern has are left out. The selected pattern
/// follows in black, each of its strokes once, with an arrow head. The leaves lie on top. A
/// selection that names no leaf or pattern draws nothing in black.
///
/// Main thread only. The painter's pen and brush are not restored.
class LeafPainter {
public:
    /// `look` and `shared`, whose leaves have been given their place among each other
    /// (`LeafLayout::layout`), outlive the painter.
    LeafPainter(const Look& look, Shared& shared);

    /// Places leaves and strokes in a view of `size` pixels. The first one for a model walks all
    /// patterns.
    void layout(const QSize& size);

    /// The part of `layout` that takes no time; the strokes stay where they are.
    void placeLeaves(const QSize& size);

    /// The rest of `layout`. Throws `std::bad_alloc`; there are no strokes then.
    void placeStrokes();

    /// For whoever places them bit by bit: all of them before any is drawn.
    Strokes& strokes() { return mStrokes; }

    const Strokes& strokes() const { return mStrokes; }

    void paintOn(QPainter& painter) const;

    void drawStroke(QPainter& painter, int position) const;
    void drawSelected(QPainter& painter, const selected_stroke& stroke) const;
    void drawLeaf(QPainter& painter, const Leaf& leaf) const;

    /// What draws the stroke of that position as one of the selected pattern.
    selected_stroke selectedStroke(int position) const;

    const Look& look() const { return mLook; }

    const Shared& shared() const { return mShared; }

private:
    void drawPatterns(QPainter& painter) const;
    void drawLeaves(QPainter& painter) const;

    const Look& mLook;
    Shared& mShared;
    leaf_draw mLeafDraw;
    Strokes mStrokes;
    QRectF mView;
};

} // namespace ui
