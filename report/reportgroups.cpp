#include "report/reportgroups.h"

#include <QDir>
#include <QFileInfo>
#include <QSet>

namespace report {

namespace {

bool readGroup(const QString& argument, group& group) {
    const qsizetype end = argument.indexOf(u'=');
    if (end <= 0)
        return false;
    group.name = argument.first(end);
    group.logs = argument.sliced(end + 1).split(u',', Qt::SkipEmptyParts);
    return !group.logs.isEmpty();
}

/// The file that a path leads to, by whatever way.
QString fileOf(const QString& path) {
    const QFileInfo file(path);
    return file.exists() ? file.canonicalFilePath() : QDir::cleanPath(file.absoluteFilePath());
}

} // namespace

QString read_groups(const QStringList& arguments, Groups& groups) {
    if (arguments.size() != 2 || !readGroup(arguments[0], groups[0]) ||
        !readGroup(arguments[1], groups[1]))
        return QStringLiteral(
            "--compare needs two groups, as in BEFORE=a.json,b.json AFTER=c.json");
    if (groups[0].name == groups[1].name)
        return QStringLiteral("both groups are named '%1'").arg(groups[0].name);
    QSet<QString> seen;
    for (const QString& log : groups[0].logs + groups[1].logs) {
        if (seen.contains(fileOf(log)))
            return QStringLiteral("'%1' is given twice").arg(log);
        seen.insert(fileOf(log));
    }
    return {};
}

} // namespace report
