#include "report/reportlog.h"

#include "domain/domainblackboard.h"
#include "domain/domainlog.h"
#include "domain/domainnestreader.h"

#include <QFile>

#include <cstdio>

namespace report {

namespace {

bool open(QFile& file) {
    if (file.fileName() == u"-")
        return file.open(stdin, QIODevice::ReadOnly);
    return file.open(QIODevice::ReadOnly);
}

} // namespace

QString read_log(const QString& path, Log& log) {
    QFile file(path);
    if (!open(file))
        return file.errorString();
    domain::Blackboard analysis;
    domain::NestReader reader(analysis);
    reader.begin(log.nest);
    log.path = path;
    log.complete = domain::read_log(file, reader);
    log.recordings = reader.recordingCount();
    log.events = reader.eventCount();
    return file.error() == QFileDevice::NoError ? QString() : file.errorString();
}

} // namespace report
