#pragma once

#include "report/reportfindings.h"

#include <QSize>
#include <QString>

class QIODevice;

namespace report {

/// How a picture is drawn.
struct picture {
    bool vectors = false; ///< SVG, else PNG.
    QSize size;           ///< In pixels.
    bool rank = false;    ///< With the leaves selected by rank.
    bool names = false;   ///< Keys stand beside the leaves, where there is room.
    QString pattern;      ///< The keys of one that is drawn in black, as `joined_keys` has them.
};

/// Draws what the window's leaf view shows into `device`, which is open; of the patterns those that
/// `findings` has. False without memory for it and when `device` is seen to fail. Needs a
/// QGuiApplication.
bool draw_picture(const Findings& findings, const picture& picture, QIODevice& device);

} // namespace report
