#include "math/mathdefs.h"

#include <cassert>
#include <cmath>
#include <limits>

namespace {

double axisDegree(double along, double forward, double backward) {
    return along < 0 ? backward : forward;
}

} // namespace

namespace math {

bool is_infinite(double value) {
    return std::fabs(value) == std::numeric_limits<double>::infinity();
}

void interp(double x1, double y1, double x2, double y2, double t, double& x, double& y) {
    x = (x2 - x1) * t + x1;
    y = (y2 - y1) * t + y1;
}

void new_pt_on_line(double x, double y, double slope, double dist, double& ox, double& oy) {
    if (slope == 0) {
        ox = x + dist;
        oy = y;
    } else if (is_infinite(slope)) {
        ox = x;
        oy = y + dist;
    } else {
        // hypot() rather than squares, which leave the range of a double for extreme slopes.
        const double run = (slope < 0 ? -dist : dist) / std::hypot(1.0, slope);
        ox = x + run;
        oy = y + slope * run;
    }
}

void new_pt_on_line(double x1, double y1, double x2, double y2, double dist, double& ox,
                    double& oy) {
    const double f = dist / std::sqrt((x2 - x1) * (x2 - x1) + (y2 - y1) * (y2 - y1));
    ox = (x2 - x1) * f + x1;
    oy = (y2 - y1) * f + y1;
}

void circle_edge(double cx, double cy, double degrees, double radius, double& x, double& y) {
    x = std::cos(degrees * DTOR) * radius + cx;
    y = std::sin(degrees * DTOR) * radius + cy;
}

double degree(double dx, double dy) {
    if (dy == 0)
        return axisDegree(dx, 0, 180);
    if (dx == 0)
        return axisDegree(dy, 90, 270);
    double degree = RTOD * std::atan(dy / dx);
    if (dx < 0)
        degree += 180;
    else if (dy < 0)
        degree += 360;
    assert(degree >= 0 && degree < 361);
    // A direction less than a rounding error short of a full turn.
    return degree < 360 ? degree : 0;
}

} // namespace math
