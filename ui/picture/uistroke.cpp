#include "ui/picture/uistroke.h"

#include "math/mathdefs.h"

#include <algorithm>
#include <cmath>

namespace ui {

namespace {

// The raster engine makes 64 straight lines of a curve drawn with a pen of one device pixel,
// however long it is: one that reaches so far out comes out half a pixel from its place, a longer
// one more.
constexpr double REACH = 16384;

constexpr double PIECE = 4096; // is exact to a few hundredths of a pixel
constexpr double BESIDE = 64;  // the view; more than a pen reaches

// Degrees clockwise from the way to the points where a stroke leaves and arrives.
constexpr double LEAVING = 315;
constexpr double ARRIVING = 225;
constexpr double SIDEWAYS = 270;

// Of the distance between the ends, and of the way along it.
constexpr double BULGE = 0.3;
constexpr double FIRST_CONTROL = 0.25;
constexpr double SECOND_CONTROL = 0.45;

constexpr double HALF_BASE = 0.5;

bool isFinite(const QPointF& point) {
    return std::isfinite(point.x()) && std::isfinite(point.y());
}

bool isSame(const QPointF& a, const QPointF& b) {
    return a.x() == b.x() && a.y() == b.y();
}

QRectF grown(const QRectF& rect, double by) {
    return rect.adjusted(-by, -by, by, by);
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

QPainterPath stroke::pathNear(const QRectF& view) const {
    if (grown(view, REACH).contains(hull()))
        return path();
    QPainterPath pieces;
    visit_pieces(*this, grown(view, BESIDE), PIECE, [&pieces](const stroke& piece) {
        if (pieces.isEmpty() || !isSame(pieces.currentPosition(), piece.start))
            pieces.moveTo(piece.start);
        pieces.cubicTo(piece.control1, piece.control2, piece.end);
        return false;
    });
    return pieces;
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
    if (!isFinite(to - from))
        return std::nullopt;
    const double way = direction(to - from);
    const QPointF start = circleEdge(from, way + LEAVING, radius);
    const QPointF end = circleEdge(to, way + ARRIVING, radius);
    const QPointF chord = end - start;
    const double aside = direction(chord) + SIDEWAYS;
    const double bulge = BULGE * std::sqrt(QPointF::dotProduct(chord, chord));
    const QPointF startAside = circleEdge(start, aside, bulge);
    const QPointF endAside = circleEdge(end, aside, bulge);
    const QPointF control1 = between(startAside, endAside, FIRST_CONTROL);
    const QPointF control2 = between(startAside, endAside, SECOND_CONTROL);
    if (!isFinite(control1) || !isFinite(control2))
        return std::nullopt;
    return stroke{start, control1, control2, end};
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

bool meet(const QRectF& a, const QRectF& b) {
    return a.left() <= b.right() && b.left() <= a.right() && a.top() <= b.bottom() &&
           b.top() <= a.bottom();
}

} // namespace ui
