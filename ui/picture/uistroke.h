#pragma once

#include <QPainterPath>
#include <QPointF>
#include <QRectF>

#include <algorithm>
#include <optional>
#include <utility>

namespace ui {

/// The curve of one stroke: a cubic in view pixels (y down), from edge to edge of two circles.
struct stroke {
    QPainterPath path() const;

    /// What of the curve is to be drawn for `view` to be right, with a pen of a few pixels: all of
    /// it, or of a curve that leads far out the pieces that come near the view.
    QPainterPath pathNear(const QRectF& view) const;

    /// The smallest rectangle around the four points, and so around the curve.
    QRectF hull() const;

    /// The curve cut in two: the same curve in two pieces, whose hulls are closer to it.
    std::pair<stroke, stroke> halves() const;

    QPointF start;
    QPointF control1;
    QPointF control2;
    QPointF end;
};

/// The stroke between circles of `radius` around `from` and `to`. It keeps to the left of the way,
/// as seen by a traveller, so the stroke there and the one back lie apart; between circles that lie
/// on each other the way leads to the right. Empty when the curve is not finite.
std::optional<stroke> stroke_between(const QPointF& from, const QPointF& to, double radius);

/// The triangle at the end of the stroke `curve` on the circle of `radius` around `target`: its tip
/// is the end of the curve, its length along the tangent there and its base are `radius`.
QPainterPath arrow_head(const QPainterPath& curve, const QPointF& target, double radius);

/// Whether two rectangles meet, those without width or height too.
bool meet(const QRectF& a, const QRectF& b);

/// Cuts `curve` up until its pieces are no wider and no higher than `size` and calls `visit` with
/// those whose hulls meet `area`, along the curve, until it returns true; that is returned then.
template <typename Visit>
bool visit_pieces(const stroke& curve, const QRectF& area, double size, Visit visit) {
    const QRectF hull = curve.hull();
    if (!meet(hull, area))
        return false;
    if (std::max(hull.width(), hull.height()) <= size)
        return visit(curve);
    const auto [first, second] = curve.halves();
    return visit_pieces(first, area, size, visit) || visit_pieces(second, area, size, visit);
}

} // namespace ui
