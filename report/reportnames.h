#pragma once

#include "report/reportfindings.h"

#include <QSize>

class QPainter;

namespace ui {
class Shared;
}

namespace report {

/// Writes keys beside the leaves of `shared`, which have their places in a picture of `size`
/// pixels. No name lies on a leaf or on another name: those of the selected pattern come first,
/// then those of the other patterns, then the rest, and what finds no room stays away.
void write_names(QPainter& painter, const Findings& findings, const ui::Shared& shared,
                 double leafRadius, const QSize& size);

} // namespace report
