#pragma once

#include "domain/domainnest.h"

#include <QString>
#include <QStringList>

namespace report {

/// What was found in one trace log.
struct Log {
    QString path;          ///< As named on the command line; "-" is standard input.
    bool complete = false; ///< The parser read the log to its end.
    int recordings = 0;
    int events = 0;
    QStringList warnings; ///< What is wrong with the text; empty for a sound log.
    domain::Nest nest;
};

/// Reads and analyses the log at `path` into `log`. Returns why it could not be read, empty when it
/// could, sound or not.
QString read_log(const QString& path, Log& log);

} // namespace report
