#pragma once

#include <QPainterPath>
#include <QPointF>
#include <QRectF>

#include <optional>
#include <utility>

namespace ui {

/// The curve of one stroke: a cubic in view pixels (y down), from edge to edge of two circles.
struct stroke {
    QPainterPath path() const;

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
/// as seen by a traveller, so the stroke there and the one back lie apart. Empty when both centres
/// are the same point, to which no way leads, and when one is not finite or so far out, a million
/// pixels, that nothing of the curve could be made out.
std::optional<stroke> stroke_between(const QPointF& from, const QPointF& to, double radius);

/// The triangle at the end of the stroke `curve` on the circle of `radius` around `target`: its tip
/// is the end of the curve, its length along the tangent there and its base are `radius`.
QPainterPath arrow_head(const QPainterPath& curve, const QPointF& target, double radius);

} // namespace ui
