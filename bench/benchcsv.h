#pragma once

#include <QtGlobal>

#include <string>

namespace bench {

/// A table of presses, as those who study work at the screen export it.
struct CsvFile {
    std::string path;
    qint64 bytes = 0;
    qint64 events = 0; ///< Rows but for the moves of the mouse.
};

/// Writes one to `path`: `megabytes` million bytes of rows with ten columns, `app`, `element`,
/// `event`, `x` and `y` among them. One in sixteen holds a cell in quotes with quotes in it. The
/// same size gives the same bytes. Throws `std::runtime_error` when it cannot.
CsvFile writeCsv(int megabytes, const std::string& path);

} // namespace bench
