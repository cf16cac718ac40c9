#pragma once

#include "domain/domainnest.h"

#include <QSize>
#include <QString>

namespace report {

/// Draws what the window's leaf view shows for `nest` into the file `path`, an SVG file by its
/// ending, else a PNG file. `size` is in pixels; `rank`: with the leaves selected by rank. Returns
/// why the file could not be written, empty when it was. Needs a QGuiApplication.
QString draw_picture(const domain::Nest& nest, const QString& path, const QSize& size, bool rank);

} // namespace report
