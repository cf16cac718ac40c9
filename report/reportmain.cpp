// quillon-report: reads trace logs as the window does and prints or draws what was found.

#include "report/reportfile.h"
#include "report/reportformats.h"
#include "report/reportlog.h"
#include "report/reportoptions.h"
#include "report/reportoutput.h"
#include "report/reportpicture.h"

#include <QBuffer>
#include <QCoreApplication>
#include <QGuiApplication>

#include <cstdio>
#include <memory>
#include <new>

namespace {

enum ExitStatus { ALL_REPORTED = 0, FAILED = 1, WRONG_USAGE = 2, UNSOUND = 3 };

const QString NO_MEMORY = QStringLiteral("there is not enough memory for it");

void complain(const QString& what, const QString& why) {
    report::Output(stderr) << "quillon-report: " << what << ": " << why << "\n";
}

/// A failure weighs more than a log that is not sound.
ExitStatus worse(ExitStatus a, ExitStatus b) {
    return a == FAILED || b == ALL_REPORTED ? a : b;
}

/// The reason that `work` returns, or that memory ran out.
template <class Work>
QString reasonOf(const Work& work) {
    try {
        return work();
    } catch (const std::bad_alloc&) {
        return NO_MEMORY;
    }
}

/// Reads a log, saying what is wrong with it.
ExitStatus readOrComplain(const QString& path, report::Log& log) {
    const QString reason = reasonOf([&] { return report::read_log(path, log); });
    if (!reason.isEmpty()) {
        complain(path, reason);
        return FAILED;
    }
    for (const QString& warning : log.warnings)
        complain(path, QStringLiteral("warning: ") + warning);
    return log.warnings.isEmpty() ? ALL_REPORTED : UNSOUND;
}

/// `status`, unless standard output could not be written.
ExitStatus flushed(report::Output& output, ExitStatus status) {
    if (output.flush())
        return status;
    complain(QStringLiteral("standard output"), QStringLiteral("could not be written"));
    return FAILED;
}

ExitStatus printReports(const report::options& options) {
    report::Output output(stdout);
    const std::unique_ptr<report::Writer> writer =
        options.format->newWriter(output, options.everything);
    ExitStatus status = ALL_REPORTED;
    writer->begin();
    for (const QString& path : options.logs) {
        report::Log log;
        const ExitStatus read = readOrComplain(path, log);
        if (read != FAILED)
            writer->write(report::Findings(log));
        status = worse(status, read);
    }
    writer->end();
    return flushed(output, status);
}

/// Draws a log into a file. Returns why the file could not be written, empty when it was.
QString drawInto(const QString& path, const report::Log& log, const report::picture& picture) {
    QBuffer drawn; // what an encoder tells of a full disk is not enough
    drawn.open(QIODevice::WriteOnly);
    if (!report::draw_picture(log.nest, picture, drawn))
        return NO_MEMORY;
    return report::save_file(path, drawn.data());
}

ExitStatus draw(const report::options& options) {
    report::Log log;
    const ExitStatus status = readOrComplain(options.logs.first(), log);
    if (status == FAILED)
        return status;
    const QString reason = reasonOf([&] { return drawInto(options.image, log, options.picture); });
    if (reason.isEmpty())
        return status;
    complain(options.image, reason);
    return FAILED;
}

/// With an application of its own, as what kind of it is needed next depends on the options.
report::options parse_options(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    return report::parse_options(QCoreApplication::arguments());
}

} // namespace

int main(int argc, char** argv) {
    // What the toolkit remarks on files and desktops is not the user's matter.
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
    const report::options options = parse_options(argc, argv);
    if (!options.fault.isEmpty()) {
        report::Output(stderr) << "quillon-report: " << options.fault
                               << "\nTry 'quillon-report --help'.\n";
        return WRONG_USAGE;
    }
    if (!options.answer.isEmpty()) {
        report::Output output(stdout);
        output << options.answer;
        return flushed(output, ALL_REPORTED);
    }
    if (options.image.isEmpty()) {
        const QCoreApplication application(argc, argv);
        return printReports(options);
    }
    qputenv("QT_QPA_PLATFORM", "offscreen"); // pictures need no display
    const QGuiApplication application(argc, argv);
    return draw(options);
}
