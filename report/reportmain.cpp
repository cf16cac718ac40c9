// quillon-report: reads trace logs as the window does and prints, compares or draws what was found.

#include "report/reportfile.h"
#include "report/reportformats.h"
#include "report/reportmerger.h"
#include "report/reportoptions.h"
#include "report/reportoutput.h"
#include "report/reportpicture.h"
#include "report/reportreading.h"

#include <QBuffer>
#include <QCoreApplication>
#include <QGuiApplication>

#include <array>
#include <cstdio>
#include <cstdlib>
#include <memory>

namespace {

using report::ExitStatus;

ExitStatus failed(const QString& what, const QString& why) {
    report::complain(what, why);
    return report::FAILED;
}

/// `status`, unless standard output could not be written.
ExitStatus flushed(report::Output& output, ExitStatus status) {
    if (output.flush())
        return status;
    return failed(QStringLiteral("standard output"), QStringLiteral("could not be written"));
}

/// Where the report itself has no place for it.
void tellLeftOut(const report::Findings& findings) {
    if (is_asked(findings.asked()))
        report::complain(findings.log().path,
                         report::left_out(findings.patternCount(), findings.shownCount()));
}

/// Makes a text a file, unless it is empty. Returns why it could not, empty when it could.
QString save(const QString& path, QByteArrayView text, bool complete) {
    if (!complete)
        return report::NO_MEMORY;
    return text.isEmpty() ? QString() : report::save_file(path, text);
}

/// Makes what `write` writes a file.
template <class Write>
ExitStatus writeInto(const QString& path, const Write& write) {
    char* text = nullptr;
    std::size_t size = 0;
    std::FILE* memory = open_memstream(&text, &size);
    if (!memory)
        return failed(path, report::NO_MEMORY);
    report::Output output(memory);
    const ExitStatus status = write(output);
    const bool complete = output.flush();
    std::fclose(memory);
    const std::unique_ptr<char, decltype(&std::free)> owner(text, &std::free);
    const QString reason = save(path, {text, static_cast<qsizetype>(size)}, complete);
    return reason.isEmpty() ? status : failed(path, reason);
}

/// Lets `write` write a report to where the options say; into a file it comes whole or not at all.
template <class Write>
ExitStatus writeReport(const report::options& options, const Write& write) {
    if (!options.output.isEmpty())
        return writeInto(options.output, write);
    report::Output output(stdout);
    const ExitStatus status = write(output);
    return flushed(output, status);
}

ExitStatus printReports(const report::options& options, report::Output& output) {
    const std::unique_ptr<report::Writer> writer = options.format->newWriter(output, options.style);
    writer->begin();
    const ExitStatus status = read_logs(options.logs, options.reading, [&](const report::Log& log) {
        const report::Findings findings(log, options.question);
        writer->write(findings);
        if (!options.format->tellsLeftOut)
            tellLeftOut(findings);
    });
    writer->end();
    return status;
}

/// Reads the logs of a group and adds them to those of both.
ExitStatus readGroup(report::group& group, report::Merger& both, report::RecordingsOf& found) {
    const ExitStatus status =
        read_logs(group.logs, report::Reading::Together, [&](report::Log& log) {
            group.recordings = log.recordings;
            found = report::recordings_of(log);
            both.add(log);
        });
    if (status == report::FAILED || group.recordings > 0)
        return status;
    report::complain(group.name, QStringLiteral("the group has no recordings"));
    return report::WRONG_USAGE;
}

/// Nothing is compared with a part of a group.
ExitStatus compareGroups(const report::options& options, report::Output& output) {
    report::Log whole;
    report::Merger both(whole);
    report::Groups groups = *options.groups;
    std::array<report::RecordingsOf, 2> found;
    ExitStatus status = report::ALL_REPORTED;
    for (std::size_t i = 0; i < groups.size(); ++i)
        status = worse(status, readGroup(groups[i], both, found[i]));
    if (status == report::FAILED || status == report::WRONG_USAGE)
        return status;
    both.finish();
    report::question question = options.question;
    question.top = 0; // those with the strongest evidence are taken instead
    const report::Findings findings(whole, question);
    const report::Comparison comparison(findings, groups, found[0], options.question.top);
    for (const QString& warning : comparison.warnings()) {
        report::complain(QStringLiteral("warning"), warning);
        status = report::UNSOUND;
    }
    options.format->newWriter(output, options.style)->compare(comparison);
    return status;
}

/// Draws a log into a file. Returns why the file could not be written, empty when it was.
QString drawInto(const QString& path, const report::Findings& findings,
                 const report::picture& picture) {
    QBuffer drawn; // what an encoder tells of a full disk is not enough
    drawn.open(QIODevice::WriteOnly);
    if (!report::draw_picture(findings, picture, drawn))
        return report::NO_MEMORY;
    return report::save_file(path, drawn.data());
}

/// Whether the picture can show what is to be in black.
bool hasPattern(const report::Findings& findings, const QString& keys) {
    if (keys.isEmpty() || report::find_pattern(findings, keys))
        return true;
    report::complain(findings.log().path,
                     QStringLiteral("there is no pattern '%1' to be drawn").arg(keys));
    return false;
}

ExitStatus drawLog(const report::options& options, const report::Log& log) {
    const report::Findings findings(log, options.question);
    if (!hasPattern(findings, options.picture.pattern))
        return report::WRONG_USAGE;
    const QString reason =
        report::reason_of([&] { return drawInto(options.image, findings, options.picture); });
    if (!reason.isEmpty()) {
        report::complain(options.image, reason);
        return report::FAILED;
    }
    tellLeftOut(findings);
    return report::ALL_REPORTED;
}

ExitStatus draw(const report::options& options) {
    ExitStatus drawn = report::ALL_REPORTED;
    const ExitStatus read = read_logs(options.logs, options.reading, [&](const report::Log& log) {
        drawn = drawLog(options, log);
    });
    return worse(read, drawn);
}

ExitStatus report_or_draw(const report::options& options, int argc, char** argv) {
    if (options.image.isEmpty()) {
        const QCoreApplication application(argc, argv);
        return writeReport(options, [&](report::Output& output) {
            return options.groups ? compareGroups(options, output) : printReports(options, output);
        });
    }
    qputenv("QT_QPA_PLATFORM", "offscreen"); // pictures need no display
    const QGuiApplication application(argc, argv);
    return draw(options);
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
        return report::WRONG_USAGE;
    }
    if (options.answer.isEmpty())
        return report_or_draw(options, argc, argv);
    report::Output output(stdout);
    output << options.answer;
    return flushed(output, report::ALL_REPORTED);
}
