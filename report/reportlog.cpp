#include "report/reportlog.h"

#include "domain/domainlog.h"
#include "domain/domainsurvey.h"
#include "report/reportforeign.h"
#include "report/reportlogdevice.h"
#include "report/reportlogreader.h"

#include <QFile>

#include <cstdio>

namespace report {

namespace {

bool beginsWithBracket(const LogDevice& text) {
    return text.first().startsWith('[') || text.first().startsWith('{');
}

bool endsWithBracket(const LogDevice& text) {
    return text.last() == ']' || text.last() == '}';
}

/// Why the parser gave up, empty when it did not.
QString breakingFault(const Log& log, const LogDevice& text, const LogReader& reader) {
    if (log.complete)
        return {};
    if (reader.hasStray())
        return QStringLiteral("a closing bracket closes nothing, and what follows was not read");
    if (text.isAtEnd())
        return QStringLiteral("the text ends inside a string");
    return QStringLiteral("there was not enough memory for all of it");
}

/// What is open at the end of the text, if anything is.
QString endingFault(const Log& log, const LogReader& reader) {
    if (!log.complete || !reader.isOpen())
        return {};
    return reader.isInRecording()
               ? QStringLiteral("the text ends inside a recording, which is lost")
               : QStringLiteral("the text ends inside an array");
}

/// The parser reads on behind a document. With a single one in the text, nothing else is there if a
/// bracket is the first character and, once it is closed, the last.
bool hasMoreThanDocument(const LogDevice& text, const LogReader& reader) {
    return reader.documents() > 1 || !beginsWithBracket(text) ||
           (!reader.isOpen() && !endsWithBracket(text));
}

QStringList structureFaults(const Log& log, const LogDevice& text, const LogReader& reader) {
    QStringList faults{breakingFault(log, text, reader), endingFault(log, reader)};
    if (reader.hasMismatch())
        faults += QStringLiteral("a bracket is closed by one of the other kind");
    if (log.complete && hasMoreThanDocument(text, reader))
        faults += QStringLiteral("there is text before or behind the document");
    if (text.hasNul())
        faults += QStringLiteral("a NUL ends the text, and what follows was not read");
    faults.removeAll(QString());
    return faults;
}

QString eventlessFault(const LogDevice& text) {
    if (text.beginning().isEmpty())
        return NO_EVENT + QStringLiteral("; it is empty");
    const QString form = foreign_form(text.beginning());
    return form.isEmpty() ? NO_EVENT : NO_EVENT + QStringLiteral("; it looks like ") + form;
}

/// What is wrong with a text that is read to its end. Of one that is no log at all, just that.
QStringList faultsOf(const Log& log, const LogDevice& text, const LogReader& reader) {
    if (log.events > 0)
        return structureFaults(log, text, reader);
    if (text.first() == "[]" && !text.hasNul())
        return {};
    QStringList faults{eventlessFault(text)};
    if (beginsWithBracket(text) && foreign_form(text.beginning()).isEmpty())
        faults += structureFaults(log, text, reader);
    return faults;
}

void numberRecordings(domain::Figures& figures, const LogReader& reader) {
    for (domain::pattern_figures& pattern : figures.patterns) {
        for (domain::place& place : pattern.places)
            place.recording = place.recording > 0 ? reader.recordingOf(place.recording) : 0;
    }
}

} // namespace

std::unique_ptr<QFileDevice> open_input(const QString& path) {
    auto file = std::make_unique<QFile>(path);
    if (path == u"-")
        file->open(stdin, QIODevice::ReadOnly);
    else
        file->open(QIODevice::ReadOnly);
    return file;
}

QString read_log(const QString& path, Log& log) {
    const std::unique_ptr<QFileDevice> file = open_input(path);
    if (!file->isOpen())
        return file->errorString();
    LogDevice text(*file);
    domain::Survey survey;
    LogReader reader(survey);
    reader.begin(log.nest);
    log.path = path;
    log.complete = domain::read_log(text, reader);
    log.recordings = reader.recordings();
    log.events = reader.eventCount();
    log.longestRun = reader.longestRun();
    log.faults = faultsOf(log, text, reader);
    log.keys = reader.keys();
    log.figures = survey.figures(log.nest);
    numberRecordings(log.figures, reader);
    return file->error() == QFileDevice::NoError ? QString() : file->errorString();
}

QStringList warnings_of(const Log& log) {
    QStringList warnings = log.faults;
    if (log.events > 1 && log.longestRun == 1)
        warnings += QStringLiteral("each event has an object of its own, so nothing can repeat");
    return warnings;
}

} // namespace report
