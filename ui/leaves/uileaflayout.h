#pragma once

#include "ui/leaves/uileaflist.h"

#include <QRectF>

namespace ui {

/// Places leaves: menu leaves in a row, in list order, the others where their bounds lie within
/// the union of all such bounds, the extent.
///
/// A log may name coordinates that are not finite or too far apart for a double. A leaf whose
/// bounds would make the extent infinite has no part in it, and on each axis on which it does not
/// lie within the extent it goes to the middle. So every position is finite.
class LeafLayout {
public:
    /// `leaves` outlives the layout.
    explicit LeafLayout(LeafList& leaves)
        : mLeaves(leaves) {}

    /// Needed after every rebuild of the leaves, before `zoom`.
    void layout() { normalize(); }

    /// Sets each leaf's `mNorm` from the bounds: from 0 to 1 across the extent, 0.5 on an axis on
    /// which the extent is no longer than a single event; for a menu leaf its ordinal, from 0. A
    /// leaf without any event may lie outside 0 to 1.
    void normalize();

    /// Sets each leaf's `mPos`, in view pixels, from its `mNorm`. The menu leaves go along the top
    /// of `menuStrip`, from end to end, a single one to the middle; the others over `body`.
    void zoom(const QRectF& menuStrip, const QRectF& body);

private:
    void numberMenuLeaves();
    QRectF extent() const;

    LeafList& mLeaves;
};

} // namespace ui
