#pragma once

#include "report/reportlog.h"

#include <QStringList>

#include <functional>

namespace report {

/// What the program exits with.
enum ExitStatus { ALL_REPORTED = 0, FAILED = 1, WRONG_USAGE = 2, UNSOUND = 3 };

/// Of both the one that weighs more: a failure more than wrong usage, and that more than a log that
/// is not sound.
ExitStatus worse(ExitStatus a, ExitStatus b);

/// Tells of it on standard error.
void complain(const QString& what, const QString& why);

/// The reason that `work` returns, or that memory ran out.
QString reason_of(const std::function<QString()>& work);

/// How what is given makes logs.
enum class Reading {
    Apart,    ///< Each log is reported by itself.
    Together, ///< All are one.
    Merged    ///< All are partials of one.
};

/// Reads what is given and hands on each log that comes of it, saying what is wrong. Of partials
/// nothing is handed on unless all could be read.
ExitStatus read_logs(const QStringList& paths, Reading reading,
                     const std::function<void(Log& log)>& take);

} // namespace report
