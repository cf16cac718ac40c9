#pragma once

#include "report/reportcomparison.h"

#include <QString>
#include <QStringList>

namespace report {

/// Reads two groups, each as in "BEFORE=a.json,b.json". Returns what is wrong with them, empty when
/// nothing is.
QString read_groups(const QStringList& arguments, Groups& groups);

} // namespace report
