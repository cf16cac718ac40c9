#include "ui/picture/uistroke.h"

#include "math/mathdefs.h"

#include <algorithm>
#include <cmath>

namespace ui {

namespace {

// Farther out the raster engine's fixed-point coordinates would overflow on dense screens.
constexpr double REACH = 1e6;

// Degrees clockwise from the way to the points where a stroke leaves and arrives.
constexpr double LEAVING = 315;
constexpr double ARRIVING = 225;
constexpr double SIDEWAYS = 270;

// Of the distance between the ends, and of the way along it.
constexpr double BULGE = 0.3;
constexpr double FIRST_CONTROL = 0.25;
constexpr double SECOND_CONTROL = 0.45;

constexpr double HALF_BASE = 0.5;

bool isWithinReach(const QPointF& point) {
    return std::fabs(point.x()) <= REACH && std::fabs(point.y()) <= REACH; // false for NaN
}

double wrap(double degrees) {
    return degrees > 360 ? degrees - 360 : degrees;
}

double direction(const QPointF& vector) {
    return math::degree(vector.x(), vector.y());
}

QPointF circleEdge(const QPointF& centre, double degrees, double radius) {
    double x = 0;
    double y = 0;
    math::circle_edge(centre.x(), centre.y(), wrap(degrees), radius, x, y);
    return {x, y};
}

QPointF between(const QPointF& a, const QPointF& b, double fraction) {
    double x = 0;
    double y = 0;
    math::interp(a.x(), a.y(), b.x(), b.y(), fraction, x, y);
    return {x, y};
}

QPointF along(const QPointF& start, double slope, double distance) {
    double x = 0;
    double y = 0;
    math::new_pt_on_line(start.x(), start.y(), slope, distance, x, y);
    return {x, y};
}

double squaredDistance(const QPointF& a, const QPointF& b) {
    const QPointF vector = b - a;
    return QPointF::dotProduct(vector, vector);
}

/// `a` when both are equally far.
QPointF fartherFrom(const QPointF& point, const QPointF& a, const QPointF& b) {
    return squaredDistance(point, b) > squaredDistance(point, a) ? b : a;
}

} // namespace

QPainterPath stroke::path() const {
    QPainterPath path(start);
    path.cubicTo(control1, control2, end);
    return path;
}

QRectF stroke::hull() const {
    const auto [left, right] = std::minmax({start.x(), control1.x(), control2.x(), end.x()});
    const auto [top, bottom] = std::minmax({start.y(), control1.y(), control2.y(), end.y()});
    return {QPointF(left, top), QPointF(right, bottom)};
}

std::pair<stroke, stroke> stroke::halves() const {
    const QPointF middle = (control1 + control2) / 2;
    const QPointF before = (start + control1) / 2;
    const QPointF after = (control2 + end) / 2;
    const QPointF toCut = (before + middle) / 2;
    const QPointF fromCut = (middle + after) / 2;
    const QPointF cut = (toCut + fromCut) / 2;
    return {{start, before, toCut, cut}, {cut, fromCut, after, end}};
}

std::optional<stroke> stroke_between(const QPointF& from, const QPointF& to, double radius) {
    const bool apart = from.x() != to.x() || from.y() != to.y();
    if (!apart || !isWithinReach(from) || !isWithinReach(to))
        return std::nullopt;
    const double way = direction(to - from);
    const QPointF start = circleEdge(from, way + LEAVING, radius);
    const QPointF end = circleEdge(to, way + ARRIVING, radius);
    const QPointF chord = end - start;
    const double aside = direction(chord) + SIDEWAYS;
    const double bulge = BULGE * std::sqrt(QPointF::dotProduct(chord, chord));
    const QPointF startAside = circleEdge(start, aside, bulge);
    const QPointF endAside = circleEdge(end, aside, bulge);
    return stroke{start, between(startAside, endAside, FIRST_CONTROL),
                  between(startAside, endAside, SECOND_CONTROL), end};
}

QPainterPath arrow_head(const QPainterPath& curve, const QPointF& target, double radius) {
    const QPointF tip = curve.currentPosition();
    const double slope = curve.slopeAtPercent(1.0);
    const QPointF base = fartherFrom(target, along(tip, slope, radius), along(tip, slope, -radius));
    const double across = -1.0 / slope; // infinite for a slope of 0, and the other way round
    QPainterPath head(tip);
    head.lineTo(along(base, across, -HALF_BASE * radius));
    head.lineTo(along(base, across, HALF_BASE * radius));
    head.closeSubpath();
    return head;
}

} // namespace ui
