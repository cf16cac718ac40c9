#pragma once

#include "domain/domainnest.h"

#include <QString>

namespace report {

/// What was found in one trace log.
struct Log {
    QString path;          ///< As named on the command line; "-" is standard input.
    bool complete = false; ///< The parser read the log to its end.
    int recordings = 0;
    int events = 0;
    domain::Nest nest;
};

/// Reads and analyses the log at `path` into `log`. Returns why it could not be read, empty when it
/// could, malformed or not.
QString read_log(const QString& path, Log& log);

} // namespace report
