// quillon-import: makes one log for Quillon of what other programs have recorded.

#include "import/importfiles.h"
#include "import/importoptions.h"
#include "import/importsummary.h"

#include <QCoreApplication>
#include <QFile>
#include <QSaveFile>

#include <unistd.h>

#include <csignal>
#include <cstdio>
#include <memory>
#include <new>

namespace {

enum ExitStatus { ALL_IMPORTED = 0, FAILED = 1, WRONG_USAGE = 2, INCOMPLETE = 3 };

void say(const QString& text) {
    std::fputs(text.toLocal8Bit().constData(), stderr);
}

void complain(const QString& what, const QString& why) {
    say(QStringLiteral("quillon-import: %1: %2\n").arg(what, why));
}

ExitStatus statusOf(import::outcome::Kind kind) {
    using Kind = import::outcome::Kind;
    switch (kind) {
    case Kind::Whole:
        return ALL_IMPORTED;
    case Kind::Damaged:
        return INCOMPLETE;
    case Kind::WrongUsage:
        return WRONG_USAGE;
    case Kind::Unreadable:
        break;
    }
    return FAILED;
}

/// A failure weighs more than wrong usage, and that more than what could be read in part.
ExitStatus worse(ExitStatus a, ExitStatus b) {
    return b != ALL_IMPORTED && (a == ALL_IMPORTED || b < a) ? b : a;
}

/// Takes what is written and keeps none of it.
class Nowhere : public QIODevice {
protected:
    qint64 readData(char* /*data*/, qint64 /*size*/) override { return -1; }

    qint64 writeData(const char* /*data*/, qint64 size) override { return size; }
};

/// Where the log goes; not open when it cannot. Without a buffer: Qt tells of no fault when it
/// empties one at the end.
std::unique_ptr<QFileDevice> newOutput(const import::options& options) {
    constexpr QIODevice::OpenMode MODE = QIODevice::WriteOnly | QIODevice::Unbuffered;
    if (options.output.isEmpty()) {
        auto output = std::make_unique<QFile>();
        output->open(STDOUT_FILENO, MODE);
        return output;
    }
    auto output = std::make_unique<QSaveFile>(options.output);
    output->open(MODE);
    return output;
}

ExitStatus readAll(const import::options& options, import::Collector& into) {
    ExitStatus status = ALL_IMPORTED;
    for (const QString& path : options.files) {
        const import::outcome outcome = import::read_file(path, options, into);
        into.endRecording();
        if (outcome.kind == import::outcome::Kind::Whole)
            continue;
        complain(path, outcome.fault);
        status = worse(status, statusOf(outcome.kind));
    }
    if (status == ALL_IMPORTED && into.events() == 0)
        say(QStringLiteral("quillon-import: no press, release or choice was found\n"));
    if (into.reported().total() > 0 || into.events() == 0)
        status = worse(status, INCOMPLETE);
    return status;
}

ExitStatus listKeys(const import::options& options) {
    Nowhere nowhere;
    nowhere.open(QIODevice::WriteOnly);
    import::KeyTable keys(options.rules);
    import::LogWriter log(nowhere);
    import::Collector collector(keys, log);
    const ExitStatus status = readAll(options, collector);
    QFile output;
    output.open(stdout, QIODevice::WriteOnly);
    const QByteArray list = import::key_list(keys).toUtf8();
    if (output.write(list) == list.size() && output.flush())
        return status;
    complain(QStringLiteral("standard output"), output.errorString());
    return FAILED;
}

bool isCommitted(QFileDevice& output) {
    auto* const file = qobject_cast<QSaveFile*>(&output);
    return !file || file->commit();
}

ExitStatus writeLog(const import::options& options) {
    const std::unique_ptr<QFileDevice> output = newOutput(options);
    const QString name =
        options.output.isEmpty() ? QStringLiteral("standard output") : options.output;
    if (!output->isOpen()) {
        complain(name, output->errorString());
        return FAILED;
    }
    import::KeyTable keys(options.rules);
    import::LogWriter log(*output);
    import::Collector collector(keys, log);
    const ExitStatus status = readAll(options, collector);
    if ((status == FAILED || status == WRONG_USAGE) && collector.events() == 0)
        return status;
    // What was at `-o`, the input itself perhaps, does not give way to nothing.
    const bool isKept = !options.output.isEmpty() && collector.events() == 0;
    if (!log.finish() || (!isKept && !isCommitted(*output))) {
        complain(name, output->errorString());
        return FAILED;
    }
    say(import::summary(collector, keys, options.rules));
    return status;
}

int run(const import::options& options) {
    if (!options.fault.isEmpty()) {
        say(QStringLiteral("quillon-import: %1\nTry 'quillon-import --help'.\n")
                .arg(options.fault));
        return WRONG_USAGE;
    }
    if (!options.answer.isEmpty()) {
        std::fputs(options.answer.toLocal8Bit().constData(), stdout);
        return std::fflush(stdout) == 0 ? ALL_IMPORTED : FAILED;
    }
    return options.listsKeys ? listKeys(options) : writeLog(options);
}

} // namespace

int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    std::signal(SIGXFSZ, SIG_IGN); // a file that grew too large is a fault of its output
    try {
        return run(import::parse_options(QCoreApplication::arguments()));
    } catch (const std::bad_alloc&) {
        std::fputs("quillon-import: there is not enough memory\n", stderr);
        return FAILED;
    }
}
