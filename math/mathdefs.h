#pragma once

/// Plane geometry on screen coordinates: y grows downward, so angles, in degrees, grow clockwise
/// as seen. Results come back through the last parameters, x first. Callers pass finite numbers
/// where nothing else is said.
namespace math {

/// Degrees to radians. Six digits: a quarter turn misses the axis by some 3e-5 of the radius.
inline constexpr double DTOR = 0.017453;

/// Radians to degrees.
inline constexpr double RTOD = 57.2957795;

/// True for both infinities, false for NaN.
bool is_infinite(double value);

/// The point at fraction `t` of the way from (x1, y1) to (x2, y2); `t` may lie outside 0 to 1.
void interp(double x1, double y1, double x2, double y2, double t, double& x, double& y);

/// The point at distance |dist| from (x, y) on the line of slope dy/dx = `slope`, infinite for a
/// vertical line. A positive `dist` leads to larger y, or to larger x on a horizontal line; a
/// negative one the opposite way.
void new_pt_on_line(double x, double y, double slope, double dist, double& ox, double& oy);

/// The point at distance `dist` from (x1, y1) toward (x2, y2), away from it when negative.
/// Not a number when both points are the same.
void new_pt_on_line(double x1, double y1, double x2, double y2, double dist, double& ox,
                    double& oy);

/// The point of the circle around (cx, cy) that lies in direction `degrees` from the centre.
void circle_edge(double cx, double cy, double degrees, double radius, double& x, double& y);

/// The direction of the vector (dx, dy) in degrees, at least 0 and below 360; 0 for no vector.
/// Asserts that the angle is a number, which it is for finite components.
double degree(double dx, double dy);

} // namespace math
