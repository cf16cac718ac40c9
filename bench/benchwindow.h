#pragma once

#include <QUrl>

#include <iosfwd>

namespace bench {

/// Opens the program's window, loads `log` and uses the window, while it measures for how long the
/// main thread is away from its event loop; prints a line for each thing done.
void measure_window(const QUrl& log, std::ostream& out);

} // namespace bench
