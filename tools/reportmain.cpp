// quillon-report: reads trace logs as the window does and prints what was found.

#include "tools/reportcsvwriter.h"
#include "tools/reportjsonwriter.h"
#include "tools/reportlog.h"
#include "tools/reportoutput.h"
#include "tools/reporttextwriter.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QStringList>

#include <cstdio>
#include <memory>

namespace {

enum ExitStatus { ALL_REPORTED = 0, NOT_READ = 1, WRONG_USAGE = 2, INCOMPLETE = 3 };

struct options {
    QString format;
    bool everything = false;
    QStringList logs;
};

void complain(const QString& what, const QString& why) {
    report::Output(stderr) << "quillon-report: " << what << ": " << why << "\n";
}

int wrongUsage(const QString& why) {
    report::Output(stderr) << "quillon-report: " << why << "\nTry 'quillon-report --help'.\n";
    return WRONG_USAGE;
}

std::unique_ptr<report::Writer> newWriter(const options& options, report::Output& output) {
    if (options.format == u"text")
        return std::make_unique<report::TextWriter>(output, options.everything);
    if (options.format == u"json")
        return std::make_unique<report::JsonWriter>(output);
    if (options.format == u"csv")
        return std::make_unique<report::CsvWriter>(output);
    return nullptr;
}

/// Reports one log; a log that cannot be opened leaves no trace in the output.
ExitStatus reportLog(const QString& path, report::Writer& writer) {
    report::Log log;
    const QString reason = report::readLog(path, log);
    if (!reason.isEmpty()) {
        complain(path, reason);
        return NOT_READ;
    }
    writer.write(log);
    if (log.complete)
        return ALL_REPORTED;
    complain(path, QStringLiteral("warning: malformed; the report is incomplete"));
    return INCOMPLETE;
}

/// A log that could not be read weighs more than one that could not be read to its end.
ExitStatus worse(ExitStatus a, ExitStatus b) {
    return a == NOT_READ || b == ALL_REPORTED ? a : b;
}

int reportAll(const options& options) {
    report::Output output(stdout);
    const std::unique_ptr<report::Writer> writer = newWriter(options, output);
    if (!writer)
        return wrongUsage(QStringLiteral("unknown format '%1'").arg(options.format));
    ExitStatus status = ALL_REPORTED;
    writer->begin();
    for (const QString& path : options.logs)
        status = worse(status, reportLog(path, *writer));
    if (output.flush())
        return status;
    complain(QStringLiteral("standard output"), QStringLiteral("could not be written"));
    return NOT_READ;
}

} // namespace

int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("quillon-report"));
    QCoreApplication::setApplicationVersion(QStringLiteral(QUILLON_VERSION));

    QCommandLineParser parser;
    parser.setApplicationDescription(
        QStringLiteral("Reports the event sequences that repeat in trace logs."));
    const QCommandLineOption format(QStringLiteral("format"),
                                    QStringLiteral("text (the default), json or csv."),
                                    QStringLiteral("format"), QStringLiteral("text"));
    const QCommandLineOption all(QStringLiteral("all"),
                                 QStringLiteral("Leave no row of the text report out."));
    const QCommandLineOption help = parser.addHelpOption();
    const QCommandLineOption version = parser.addVersionOption();
    parser.addOptions({format, all});
    parser.addPositionalArgument(QStringLiteral("LOG..."),
                                 QStringLiteral("Trace logs; - reads standard input."));
    if (!parser.parse(QCoreApplication::arguments()))
        return wrongUsage(parser.errorText());
    if (parser.isSet(version))
        parser.showVersion();
    if (parser.isSet(help))
        parser.showHelp();
    if (parser.positionalArguments().isEmpty())
        return wrongUsage(QStringLiteral("no log given"));
    return reportAll({parser.value(format), parser.isSet(all), parser.positionalArguments()});
}
