#pragma once

#include "report/reportformats.h"
#include "report/reportpicture.h"
#include "report/reportquestion.h"
#include "report/reportreading.h"

#include <QString>
#include <QStringList>

#include <optional>

namespace report {

/// What the command line asks for.
struct options {
    /// Why the command line cannot be followed; empty when it can.
    QString fault;

    /// Help or version text, to be printed instead of a report.
    QString answer;

    QStringList logs;
    Reading reading = Reading::Apart;
    std::optional<Groups> groups; ///< To be compared, in the place of the logs.

    report::question question;
    const output_format* format = nullptr;
    report::style style;

    QString output; ///< The report's file, empty for standard output.
    QString image;  ///< The picture's file, empty for a report.
    report::picture picture;
};

/// `arguments` begins with the program's name. Needs a QCoreApplication, for the help text.
options parse_options(const QStringList& arguments);

} // namespace report
