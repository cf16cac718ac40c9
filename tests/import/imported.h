#pragma once

#include "import/importfiles.h"
#include "import/importoptions.h"
#include "import/importsummary.h"

#include <QBuffer>
#include <QFile>
#include <QTemporaryDir>

#include <gmock/gmock.h>

#include <string>
#include <vector>

/// What quillon-import makes of a file, without starting it.
struct imported {
    std::string log;   ///< Without the brackets around it, times and line breaks.
    std::string fault; ///< Of the options or the file.
    std::string summary;
    std::string keys;
};

/// `arguments`: options as typed, blanks between.
inline imported import_of(const QByteArray& content, const std::string& arguments) {
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("recording"));
    QFile file(path);
    file.open(QIODevice::WriteOnly);
    file.write(content);
    file.close();
    QStringList words{QStringLiteral("quillon-import"), path};
    words += QString::fromStdString(arguments).split(u' ', Qt::SkipEmptyParts);
    for (QString& word : words)
        word.replace(u'~', u' ');
    const import::options options = import::parse_options(words);
    if (!options.fault.isEmpty())
        return {{}, options.fault.toStdString(), {}, {}};
    QBuffer output;
    output.open(QIODevice::WriteOnly);
    import::KeyTable keys(options.rules);
    import::LogWriter log(output);
    import::Collector collector(keys, log);
    const import::outcome outcome = import::read_file(path, options, collector);
    collector.endRecording();
    log.finish();
    QString text = QString::fromUtf8(output.data()).simplified();
    text.remove(QRegularExpression(QStringLiteral("^\\[ ?| ?\\]$")));
    return {text.toStdString(), outcome.fault.toStdString(),
            import::summary(collector, keys, options.rules).toStdString(),
            import::key_list(keys).toStdString()};
}

/// What becomes of a file.
struct import_row {
    const char* rule;
    QByteArray content;
    const char* arguments;
    const char* log;
    const char* said; ///< In the fault or the summary.
};

/// `options` come in front of those of each row.
inline void checkImports(const std::vector<import_row>& rows, const std::string& options = {}) {
    for (const import_row& row : rows) {
        SCOPED_TRACE(row.rule);
        const imported found = import_of(row.content, options + row.arguments);
        EXPECT_EQ(found.log, row.log);
        EXPECT_THAT(found.fault + found.summary, testing::HasSubstr(row.said));
    }
}
