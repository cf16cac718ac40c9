// quillon-record: an experiment. Records what is pressed in any program under X11 into a log for
// Quillon; what the accessibility bus tells makes the keys.

#include "examples/recorder-desktop/desktoprecorder.h"
#include "import/importcollector.h"
#include "import/importlogreader.h"
#include "import/importsummary.h"

#include <QBuffer>
#include <QCommandLineParser>
#include <QCoreApplication>
#include <QFileInfo>
#include <QTimer>

#include <spawn.h>
#include <sys/prctl.h>
#include <sys/wait.h>

#include <csignal>
#include <cstdio>
#include <memory>
#include <thread>

namespace {

enum ExitStatus { WHOLE = 0, NOT_BEGUN = 2, INCOMPLETE = 3 };

const QString RULES = QStringLiteral("rules");
const QString MINUTES = QStringLiteral("for");
const QString CONTENT = QStringLiteral("content");
const QString REVIEW = QStringLiteral("review");

ExitStatus say(const QString& text, ExitStatus status) {
    std::fputs(QStringLiteral("quillon-record: %1\n").arg(text).toLocal8Bit().constData(), stderr);
    return status;
}

/// With accessibility for it alone. Zero, or why not.
int start(char** command) {
    prctl(PR_SET_CHILD_SUBREAPER, 1); // what its children leave behind belongs to it
    qputenv("QT_LINUX_ACCESSIBILITY_ALWAYS_ON", "1");
    qputenv("ACCESSIBILITY_ENABLED", "1"); // Chromium
    qunsetenv("NO_AT_BRIDGE");             // GTK 3
    qunsetenv("GTK_A11Y");                 // GTK 4
    pid_t process = 0;
    return posix_spawnp(&process, *command, nullptr, nullptr, command, environ);
}

ExitStatus record(const QString& log, char** command, const QCommandLineParser& parser,
                  const import::Rules& rules) {
    if (qEnvironmentVariableIsSet("WAYLAND_DISPLAY"))
        return say(QStringLiteral("this is Wayland, and only X11 tells what is pressed"),
                   NOT_BEGUN);
    const auto presses = std::make_shared<desktop::Presses>();
    if (!presses->isAble())
        return say(QStringLiteral("there is no X11 display that tells what is pressed"), NOT_BEGUN);
    const QString program = QString::fromLocal8Bit(*command);
    desktop::Recorder recorder(rules, parser.isSet(CONTENT), QFileInfo(program).fileName());
    const QString fault = recorder.begin(log);
    if (!fault.isEmpty())
        return say(fault, NOT_BEGUN);
    if (const int why = start(command)) {
        QFile::remove(log);
        return say(QStringLiteral("%1: %2").arg(program, qt_error_string(why)), NOT_BEGUN);
    }
    std::signal(SIGINT, SIG_IGN);  // ends the program, too, and that the recording
    std::signal(SIGXFSZ, SIG_IGN); // a log that grew too large cannot be written
    say(QStringLiteral("records what is pressed in %1; tell those who use it").arg(program), WHOLE);
    std::thread([presses] {
        while (wait(nullptr) > 0) {
        }
        presses->stop();
    }).detach();
    QObject::connect(presses.get(), &desktop::Presses::happened, &recorder,
                     &desktop::Recorder::record, Qt::QueuedConnection);
    QObject::connect(presses.get(), &desktop::Presses::ended, qApp, &QCoreApplication::quit,
                     Qt::QueuedConnection);
    QTimer limit;
    QObject::connect(&limit, &QTimer::timeout, presses.get(), &desktop::Presses::stop);
    if (parser.isSet(MINUTES))
        limit.start(static_cast<int>(parser.value(MINUTES).toDouble() * 60'000));
    bool isHeard = false;
    std::thread listening([&] { isHeard = presses->listen(); });
    QCoreApplication::exec();
    listening.join();
    if (!isHeard)
        say(QStringLiteral("the X server was lost"), INCOMPLETE);
    return say(recorder.summary(), isHeard && recorder.isWhole() ? WHOLE : INCOMPLETE);
}

ExitStatus review(const QString& path, const import::Rules& rules) {
    QFile log(path);
    if (!log.open(QIODevice::ReadOnly))
        return say(path + QStringLiteral(": ") + log.errorString(), NOT_BEGUN);
    QBuffer unread;
    unread.open(QIODevice::WriteOnly);
    import::KeyTable keys(rules);
    import::LogWriter writer(unread);
    import::Collector collector(keys, writer);
    const QString fault = import::LogReader().read(log, collector).fault;
    std::fputs(import::key_list(keys).toLocal8Bit().constData(), stdout);
    return fault.isEmpty() ? WHOLE : say(path + QStringLiteral(": ") + fault, INCOMPLETE);
}

} // namespace

int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    QStringList arguments = QCoreApplication::arguments();
    const qsizetype end = arguments.indexOf(QStringLiteral("--"));
    QCommandLineParser parser;
    parser.addOptions(
        {{RULES, QStringLiteral("Key rules, as of quillon-import."), QStringLiteral("file")},
         {MINUTES, QStringLiteral("Stop then; the program goes on."), QStringLiteral("minutes")},
         {CONTENT, QStringLiteral("Rows of lists and names of files get into keys.")},
         {REVIEW, QStringLiteral("Print the keys of a log and their counts.")}});
    const bool isParsed = parser.parse(end < 0 ? arguments : arguments.mid(0, end));
    const bool hasCommand = end >= 0 && end + 1 < argc;
    if (!isParsed || parser.positionalArguments().size() != 1 || parser.isSet(REVIEW) == hasCommand)
        return say(
            QStringLiteral("%1\nusage: quillon-record [--rules FILE] [--for MINUTES] [--content] "
                           "LOG -- COMMAND...\n       quillon-record [--rules FILE] --review LOG")
                .arg(parser.errorText()),
            NOT_BEGUN);
    const double minutes = parser.isSet(MINUTES) ? parser.value(MINUTES).toDouble() : 1;
    if (!(minutes > 0 && minutes <= 10'000))
        return say(QStringLiteral("--for is a number of minutes up to 10000"), NOT_BEGUN);
    import::Rules rules;
    const QString fault = parser.isSet(RULES) ? rules.addFile(parser.value(RULES)) : QString();
    if (!fault.isEmpty())
        return say(fault, NOT_BEGUN);
    const QString log = parser.positionalArguments().front();
    return hasCommand ? record(log, argv + end + 1, parser, rules) : review(log, rules);
}
