#pragma once

#include "domain/domainbranch.h"

#include <QDebug>
#include <QPainter>
#include <QPointF>
#include <QRectF>
#include <QString>

namespace ui {

class LeafSelection;
class Look;

/// What every leaf needs to draw itself.
struct leaf_draw {
    /// `look` is kept and outlives the record; no leaf gets a weighted fill yet.
    explicit leaf_draw(const Look& drawnWith)
        : look(&drawnWith) {}

    const Look* look;
    int maxWeight = 0; ///< The largest pattern weight of all leaves, 0 for no weighted fills.
};

/// What the views show for one branch: a circle in view pixels, with a copy of what places and
/// names it. Main thread only.
class Leaf {
public:
    /// Forgets the branch and its weight, nothing else.
    void clear();

    /// Takes over everything but the position.
    void setTo(const Leaf& other);

    /// Shows `branch`, which is not owned and outlives the leaf's use; the index stays.
    void setTo(const domain::Branch& branch);

    bool isMenu() const { return mGesture == domain::GESTURE_MENU; }

    /// Whether `rect`, in view pixels, contains the centre of the leaf.
    bool isContainedBy(const QRectF& rect) const;

    /// Draws the circle, with the pen and brush that tell whether the leaf is in focus, selected
    /// or neither. The painter keeps that pen and brush.
    void drawOn(QPainter& painter, const LeafSelection& selection, const leaf_draw& draw) const;

    /// Writes key, place in the log and place in the view as items of a debug stream.
    void printTo(QDebug& debug) const;

    int mIndex = -1; ///< The branch's index in the nest; the leaf's identity in selections.
    const domain::Branch* mBranch = nullptr; ///< Not owned; null after `clear`.
    QString mKey;
    int mGesture = domain::GESTURE_NONE;
    int mWeight = 0; ///< The branch's pattern weight when it was taken over.
    QRectF mBounds;  ///< In the log's coordinates, which need not be finite.
    QPointF mPos;    ///< Centre of the circle in view pixels; finite.
    QPointF mNorm;   ///< Place among the leaves, without unit; for a menu leaf (ordinal, 0).

private:
    QBrush fill(const leaf_draw& draw) const;
};

} // namespace ui
