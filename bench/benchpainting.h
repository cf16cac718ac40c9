#pragma once

#include <iosfwd>

namespace bench {

/// Measures repaints of a leaf view of 1000 x 700 and its first picture, of a log of one recording
/// of 54,000 events, at device pixel ratio 1 and 2, beside painting every stroke of every pattern
/// and beside the same leaves without patterns; prints a table. Processor time, medians.
void measure_painting(std::ostream& out);

/// Measures the start of the program to its first paint, without a log, beside that of an empty
/// main window of the same size. `program` is this one, whose `--first-paint` does either.
void measure_start(const char* program, std::ostream& out);

/// Shows the program's window, or an empty one, and returns once it is painted.
void paint_first(bool empty);

} // namespace bench
