#pragma once

#include "domain/domainfigures.h"
#include "domain/domainnest.h"

#include <QFileDevice>
#include <QString>
#include <QStringList>

#include <memory>
#include <vector>

namespace report {

/// What was found in one trace log, or in several that are taken for one.
struct Log {
    QString path;         ///< As named on the command line; "-" is standard input.
    bool complete = true; ///< The parser read the log to its end.
    int recordings = 0;
    int events = 0;
    int longestRun = 0; ///< The most events between the beginnings of two objects.
    QStringList faults; ///< What is wrong with the text; empty for a sound log.
    domain::Nest nest;
    std::vector<QString> keys; ///< By index, those of slots that are only reserved as well.
    domain::Figures figures;
};

/// The fault of a log without events that looks like a log.
inline const QString NO_EVENT = QStringLiteral("no event was found");

inline const QString NO_MEMORY = QStringLiteral("there is not enough memory for it");

/// The file at `path`, or standard input for "-"; not open when that failed.
std::unique_ptr<QFileDevice> open_input(const QString& path);

/// Reads and analyses the log at `path` into `log`, on any thread. Returns why it could not be
/// read, empty when it could, sound or not.
QString read_log(const QString& path, Log& log);

/// What people are warned of: the faults, and what keeps anything from repeating.
QStringList warnings_of(const Log& log);

} // namespace report
