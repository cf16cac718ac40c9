#include "import/importfiles.h"

#include "import/importbytes.h"
#include "import/importcsvrows.h"
#include "import/importformat.h"
#include "import/importjsonwalk.h"
#include "import/importlogreader.h"
#include "import/importplaywrightreader.h"
#include "import/importrrwebreader.h"
#include "import/importscriptreader.h"
#include "import/importtablereader.h"
#include "import/importwatchedfile.h"
#include "import/importxesreader.h"

#include <QBuffer>
#include <QFile>

#include <unistd.h>

#include <memory>

namespace import {

namespace {

constexpr qint64 HEAD = 1 << 16;     // bytes that tell a format
constexpr qsizetype MOST_NAMED = 50; // columns in a message

bool opens(QFile& file) {
    if (file.fileName() != u"-")
        return file.open(QIODevice::ReadOnly);
    return file.open(STDIN_FILENO, QIODevice::ReadOnly);
}

/// The beginning of the file as UTF-8, left in place; packed files as they are.
std::string headOf(QIODevice& file) {
    QByteArray raw = file.peek(HEAD);
    // A pipe gives what was written to it at once, and may have more.
    for (qsizetype before = 0; raw.size() > before && raw.size() < HEAD;) {
        before = raw.size();
        raw = file.peek(HEAD);
    }
    if (raw.startsWith("PK"))
        return raw.toStdString();
    QBuffer buffer(&raw);
    buffer.open(QIODevice::ReadOnly);
    Bytes bytes(buffer);
    while (bytes.more()) {
    }
    return std::string(bytes.held());
}

std::unique_ptr<Reader> newReader(Format format, const options& options) {
    switch (format) {
    case Format::Log:
        return std::make_unique<LogReader>();
    case Format::Csv:
    case Format::JsonLines:
        return std::make_unique<TableReader>(options.table, format == Format::JsonLines);
    case Format::Rrweb:
        return std::make_unique<RrwebReader>(options.rules.naming());
    case Format::Xes:
        return std::make_unique<XesReader>(options.table, options.lifecycle);
    case Format::Playwright:
        return std::make_unique<PlaywrightReader>(options);
    case Format::Recorder:
        return std::make_unique<ScriptReader>(ScriptReader::Kind::Recorder, options.rules,
                                              options.fields);
    case Format::Side:
        return std::make_unique<ScriptReader>(ScriptReader::Kind::Side, options.rules,
                                              options.fields);
    }
    return nullptr;
}

/// What is usual for a format where the options leave it open: scripts and cases are joined, and
/// what has no places is spread out.
collecting usualFor(Format format, const options& options) {
    collecting how;
    const table& table = options.table;
    const bool isTable = format == Format::Csv || format == Format::JsonLines;
    const bool isScript =
        format == Format::Xes || format == Format::Recorder || format == Format::Side;
    how.join = options.join.value_or(isScript || format == Format::Playwright ||
                                     (isTable && !table.recording.isEmpty()));
    how.grid =
        options.grid.value_or(isScript || (isTable && table.x.isEmpty() && table.xy.isEmpty()));
    return how;
}

/// The members of the first object, if the text or the array that it is begins with one.
QStringList membersOf(Bytes& bytes) {
    QStringList names;
    JsonScanner scanner(bytes);
    if (scanner.peek() == JsonScanner::Next::Array)
        scanner.step();
    each_member(scanner, [&](const std::string& name) {
        names.append(QString::fromStdString(name));
        return names.size() < MOST_NAMED && scanner.skipValue();
    });
    return names;
}

QStringList columnsOf(Bytes& bytes) {
    CsvRows rows(bytes);
    rows.choose({});
    QStringList names;
    for (const QString& name : rows.columns()) {
        if (names.size() < MOST_NAMED)
            names.append(name);
    }
    return names;
}

/// Of a table: which columns it has, from which people choose.
QString keylessFault(Format format, const std::string& head) {
    QByteArray text = QByteArray::fromStdString(head);
    QBuffer buffer(&text);
    buffer.open(QIODevice::ReadOnly);
    Bytes bytes(buffer);
    const QStringList names = format == Format::Csv ? columnsOf(bytes) : membersOf(bytes);
    const QString fault =
        QStringLiteral("it is a table: --key must name the columns that make the key");
    return names.isEmpty()
               ? fault
               : fault + QStringLiteral("; there are: ") + names.join(QStringLiteral(", "));
}

QString faultOf(Format format, const options& options, const std::string& head) {
    const bool isTable = format == Format::Csv || format == Format::JsonLines;
    return isTable && options.table.key.empty() ? keylessFault(format, head) : QString();
}

outcome readOpen(QIODevice& file, const options& options, Collector& into) {
    const std::string head = headOf(file);
    const auto format =
        options.from.isEmpty() ? tell_format(head) : format_named(options.from, head);
    if (!format) {
        const QString why = guess(head);
        return {outcome::Kind::Damaged,
                QStringLiteral("no format of recordings that is known") +
                    (why.isEmpty() ? QString() : QStringLiteral(": ") + why)};
    }
    const QString fault = faultOf(*format, options, head);
    if (!fault.isEmpty())
        return {outcome::Kind::WrongUsage, fault};
    into.setCollecting(usualFor(*format, options));
    return newReader(*format, options)->read(file, into);
}

} // namespace

outcome read_file(const QString& path, const options& options, Collector& into) {
    WatchedFile file(path);
    if (!opens(file))
        return {outcome::Kind::Unreadable, file.errorString()};
    return readOpen(file, options, into);
}

} // namespace import
