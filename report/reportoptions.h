#pragma once

#include <QSize>
#include <QString>
#include <QStringList>

namespace report {

/// What the command line asks for.
struct options {
    /// Why the command line cannot be followed; empty when it can.
    QString fault;

    /// Help or version text, to be printed instead of a report.
    QString answer;

    QString format;
    bool everything = false;
    QStringList logs;

    QString image; ///< The picture's file, empty for a report.
    QSize size;    ///< Of the picture, in pixels.
    bool rank = false;
};

/// `arguments` begins with the program's name. Needs a QCoreApplication, for the help text.
options parse_options(const QStringList& arguments);

} // namespace report
