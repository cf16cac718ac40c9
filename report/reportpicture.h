#pragma once

#include "domain/domainnest.h"

#include <QSize>

class QIODevice;

namespace report {

/// How a picture is drawn.
struct picture {
    bool vectors = false; ///< SVG, else PNG.
    QSize size;           ///< In pixels.
    bool rank = false;    ///< With the leaves selected by rank.
};

/// Draws what the window's leaf view shows for `nest` into `device`, which is open. False without
/// memory for it and when `device` is seen to fail. Needs a QGuiApplication.
bool draw_picture(const domain::Nest& nest, const picture& picture, QIODevice& device);

} // namespace report
