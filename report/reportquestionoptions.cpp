#include "report/reportquestionoptions.h"

#include "import/importglob.h"

#include <QCommandLineParser>

#include <iterator>

namespace report {

namespace {

const QString MIN_RECORDINGS = QStringLiteral("min-recordings");
const QString THROUGH = QStringLiteral("through");
const QString LOOPS = QStringLiteral("loops");
const QString SORT = QStringLiteral("sort");
const QString ONCE = QStringLiteral("once");

struct limit_option {
    const char* name;
    const char* description;
    int question::*limit;
    int least;
};

constexpr limit_option LIMITS[] = {
    {"min-count", "Only patterns that came again so often.", &question::minCount, 0},
    {"min-occurrences", "Only patterns that were found so often.", &question::minOccurrences, 0},
    {"min-length", "Only patterns of so many steps.", &question::minLength, 0},
    {"max-length", "No patterns of more steps.", &question::maxLength, 0},
    {"top", "The first so many in the order of --sort, or by count.", &question::top, 1},
};

struct measure_name {
    const char* name;
    Measure measure;
};

constexpr measure_name MEASURES[] = {{"count", Measure::Count},
                                     {"occurrences", Measure::Occurrences},
                                     {"recordings", Measure::Recordings},
                                     {"length", Measure::Length}};

QString readLimit(const limit_option& option, const QCommandLineParser& parser,
                  question& question) {
    const QString name = QString::fromLatin1(option.name);
    if (!parser.isSet(name))
        return {};
    bool isNumber = false;
    question.*option.limit = parser.value(name).toInt(&isNumber);
    if (isNumber && question.*option.limit >= option.least)
        return {};
    return QStringLiteral("--%1 needs a whole number of %2 or more, not '%3'")
        .arg(name, QString::number(option.least), parser.value(name));
}

QString readMinRecordings(const QCommandLineParser& parser, question& question) {
    if (!parser.isSet(MIN_RECORDINGS))
        return {};
    QString number = parser.value(MIN_RECORDINGS);
    question.ofAll = number.endsWith(u'%');
    bool isNumber = false;
    if (question.ofAll)
        question.minRecordings = number.chopped(1).toDouble(&isNumber);
    else
        question.minRecordings = number.toInt(&isNumber);
    if (isNumber && question.minRecordings >= 0 &&
        !(question.ofAll && question.minRecordings > 100))
        return {};
    return QStringLiteral("--min-recordings needs a number of recordings or 0% to 100%, not '%1'")
        .arg(number);
}

QString readGlobs(const QCommandLineParser& parser, question& question) {
    for (const QString& glob : parser.values(THROUGH)) {
        question.through.push_back(import::glob_expression(glob));
        if (glob.isEmpty() || !question.through.back().isValid())
            return QStringLiteral("no glob: '%1'").arg(glob);
    }
    return {};
}

QString readSort(const QCommandLineParser& parser, question& question) {
    if (!parser.isSet(SORT))
        return {};
    for (const measure_name& measure : MEASURES) {
        if (parser.value(SORT) == QLatin1String(measure.name))
            question.sort = measure.measure;
    }
    if (question.sort)
        return {};
    return QStringLiteral("--sort takes count, occurrences, recordings or length, not '%1'")
        .arg(parser.value(SORT));
}

QString readLoops(const QCommandLineParser& parser, question& question) {
    question.loopsOnce = parser.isSet(LOOPS);
    if (!question.loopsOnce || parser.value(LOOPS) == ONCE)
        return {};
    return QStringLiteral("--loops takes once, not '%1'").arg(parser.value(LOOPS));
}

} // namespace

void declare_question(QCommandLineParser& parser) {
    const QString number = QStringLiteral("n");
    for (const limit_option& option : LIMITS)
        parser.addOption(
            {QString::fromLatin1(option.name), QString::fromLatin1(option.description), number});
    parser.addOptions({
        {MIN_RECORDINGS,
         QStringLiteral("Only patterns found in so many recordings, or percent of them."),
         QStringLiteral("n|p%")},
        {THROUGH, QStringLiteral("Only patterns that pass a key like this; more than one: all."),
         QStringLiteral("glob")},
        {SORT, QStringLiteral("By count, occurrences, recordings or length."),
         QStringLiteral("by")},
        {LOOPS, QStringLiteral("once: of sequences that are equal up to where they begin, one."),
         ONCE},
    });
}

QString read_question(const QCommandLineParser& parser, question& question) {
    QStringList faults;
    for (const limit_option& option : LIMITS)
        faults += readLimit(option, parser, question);
    faults += readMinRecordings(parser, question);
    faults += readGlobs(parser, question);
    faults += readSort(parser, question);
    faults += readLoops(parser, question);
    faults.removeAll(QString());
    return faults.value(0);
}

} // namespace report
