#pragma once

#include "report/reportlog.h"

#include <QStringList>

#include <functional>

namespace report {

/// Takes a log, or the reason why it could not be read, empty when it was.
using TakeLog = std::function<void(const QString& path, Log& log, const QString& reason)>;

/// Reads the logs on all cores and hands each to `take`, in their order, on the calling thread. As
/// many are held at a time as there are cores. There is at least one.
void read_side_by_side(const QStringList& paths, const TakeLog& take);

} // namespace report
