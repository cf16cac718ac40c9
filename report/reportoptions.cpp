#include "report/reportoptions.h"

#include "report/reportgroups.h"
#include "report/reportquestionoptions.h"

#include <QCommandLineParser>
#include <QRegularExpression>

#include <algorithm>

namespace report {

namespace {

const QString PNG = QStringLiteral(".png");
const QString SVG = QStringLiteral(".svg");
constexpr int LARGEST_SIDE = 16384;

const QString HELP = QStringLiteral("help");
const QString VERSION = QStringLiteral("version");
const QString FORMAT = QStringLiteral("format");
const QString OUTPUT = QStringLiteral("output");
const QString ALL = QStringLiteral("all");
const QString IMAGE = QStringLiteral("image");
const QString SIZE = QStringLiteral("size");
const QString RANK = QStringLiteral("rank");
const QString NAMES = QStringLiteral("names");
const QString PATTERN = QStringLiteral("pattern");
const QString CSV_TEXT = QStringLiteral("csv-text");
const QString TOGETHER = QStringLiteral("together");
const QString MERGE = QStringLiteral("merge");
const QString COMPARE = QStringLiteral("compare");

/// "text (the default), json or csv".
QString formatNames() {
    const std::vector<output_format>& formats = output_formats();
    QString names = formats.front().name + QStringLiteral(" (the default)");
    for (std::size_t i = 1; i < formats.size(); ++i)
        names += (i + 1 < formats.size() ? QStringLiteral(", ") : QStringLiteral(" or ")) +
                 formats[i].name;
    return names;
}

void declare(QCommandLineParser& parser) {
    parser.setApplicationDescription(
        QStringLiteral("Reports the event sequences that repeat in trace logs, or draws them.\n"
                       "Its manual, quillon-report(1), explains each column and field."));
    parser.addOptions({
        {{QStringLiteral("h"), HELP}, QStringLiteral("Print this help.")},
        {{QStringLiteral("v"), VERSION}, QStringLiteral("Print the version.")},
        {FORMAT, formatNames() + u'.', FORMAT, output_formats().front().name},
        {{QStringLiteral("o"), OUTPUT},
         QStringLiteral("Write the report there."),
         QStringLiteral("file")},
        {ALL, QStringLiteral("Leave nothing out of the text report.")},
        {CSV_TEXT, QStringLiteral("Let no cell be a formula to a spreadsheet.")},
        {TOGETHER, QStringLiteral("Take all logs for one, and read them on all cores.")},
        {MERGE, QStringLiteral("Put partials together, which --format partial has written.")},
        {COMPARE, QStringLiteral("Compare two groups of logs, as in BEFORE=a.json,b.json "
                                 "AFTER=c.json.")},
        {IMAGE, QStringLiteral("Draw the log into a .png or .svg file."), QStringLiteral("file")},
        {SIZE, QStringLiteral("Pixels of the picture, 1000x700 if not given."),
         QStringLiteral("widthxheight"), QStringLiteral("1000x700")},
        {RANK,
         QStringLiteral("Draw the picture with the keys selected by rank, as the window does.")},
        {NAMES, QStringLiteral("Write keys beside the leaves, where there is room.")},
        {PATTERN, QStringLiteral("Draw this pattern in black, as in 'A > B > A'."),
         QStringLiteral("keys")},
    });
    declare_question(parser);
    parser.addPositionalArgument(QStringLiteral("LOG..."),
                                 QStringLiteral("Trace logs; - reads standard input."));
}

/// The size named as in "1000x700"; not valid when it is no size or too large for a picture.
QSize toSize(const QString& text) {
    static const QRegularExpression form(QStringLiteral("^(\\d{1,5})x(\\d{1,5})$"));
    const QRegularExpressionMatch match = form.match(text);
    const QSize size(match.captured(1).toInt(), match.captured(2).toInt());
    const bool fits = !size.isEmpty() && std::max(size.width(), size.height()) <= LARGEST_SIDE;
    return fits ? size : QSize();
}

bool endsWith(const QString& name, const QString& ending) {
    return name.endsWith(ending, Qt::CaseInsensitive);
}

QString pictureFault(const options& options, const QCommandLineParser& parser) {
    if (parser.isSet(FORMAT) || parser.isSet(OUTPUT) || options.style.everything)
        return QStringLiteral("--format, --output and --all do not go with --image");
    if (!endsWith(options.image, PNG) && !options.picture.vectors)
        return QStringLiteral("the picture's name must end in .png or .svg");
    if (!options.picture.size.isValid())
        return QStringLiteral("no size of a picture: '%1'; each side is 1 to %2")
            .arg(parser.value(SIZE), QString::number(LARGEST_SIDE));
    if (options.groups || (options.logs.size() > 1 && options.reading == Reading::Apart))
        return QStringLiteral("a picture shows one log");
    if (options.picture.rank && parser.isSet(PATTERN))
        return QStringLiteral("--rank and --pattern do not go together");
    return {};
}

QString reportFault(const options& options, const QCommandLineParser& parser) {
    if (parser.isSet(SIZE) || parser.isSet(RANK))
        return QStringLiteral("--size and --rank belong to --image");
    if (parser.isSet(NAMES) || parser.isSet(PATTERN))
        return QStringLiteral("--names and --pattern belong to --image");
    if (options.style.everything && !options.format->leavesOut)
        return QStringLiteral("--all belongs to the text report");
    if (!options.format->isAnswer && (options.groups || is_asked(options.question)))
        return QStringLiteral("a partial holds all that was found, so nothing can be asked of it");
    return {};
}

/// What does not go together, whatever is made of it.
QString combinedFault(const options& options, const QCommandLineParser& parser) {
    if (parser.isSet(TOGETHER) + parser.isSet(MERGE) + parser.isSet(COMPARE) > 1)
        return QStringLiteral("--together, --merge and --compare do not go together");
    if (options.groups && options.question.sort)
        return QStringLiteral("--sort does not go with --compare, which sorts by evidence");
    if (options.style.cellsAreText && parser.value(FORMAT) != u"csv")
        return QStringLiteral("--csv-text belongs to --format csv");
    return {};
}

/// What is wrong with options that are well-formed each; empty when nothing is.
QString faultOf(const options& options, const QCommandLineParser& parser) {
    if (options.logs.isEmpty())
        return QStringLiteral("no log given");
    if (!options.format)
        return QStringLiteral("unknown format '%1'").arg(parser.value(FORMAT));
    QString fault = combinedFault(options, parser);
    if (!fault.isEmpty())
        return fault;
    return parser.isSet(IMAGE) ? pictureFault(options, parser) : reportFault(options, parser);
}

Reading readingOf(const QCommandLineParser& parser) {
    if (parser.isSet(MERGE))
        return Reading::Merged;
    return parser.isSet(TOGETHER) ? Reading::Together : Reading::Apart;
}

void read(const QCommandLineParser& parser, options& options) {
    options.logs = parser.positionalArguments();
    options.reading = readingOf(parser);
    options.format = find_format(parser.value(FORMAT));
    options.fault = read_question(parser, options.question);
    if (options.format && options.question.top == 0)
        options.question.top = options.format->top;
    if (parser.isSet(COMPARE) && options.fault.isEmpty())
        options.fault = read_groups(options.logs, options.groups.emplace());
    options.style = {parser.isSet(ALL), parser.isSet(CSV_TEXT), options.question.loopsOnce};
    options.output = parser.value(OUTPUT);
    options.image = parser.value(IMAGE);
    options.picture = {endsWith(options.image, SVG), toSize(parser.value(SIZE)), parser.isSet(RANK),
                       parser.isSet(NAMES), parser.value(PATTERN)};
    if (options.fault.isEmpty())
        options.fault = faultOf(options, parser);
}

} // namespace

options parse_options(const QStringList& arguments) {
    QCommandLineParser parser;
    declare(parser);
    options options;
    if (!parser.parse(arguments))
        options.fault = parser.errorText();
    else if (parser.isSet(HELP))
        options.answer = parser.helpText();
    else if (parser.isSet(VERSION))
        options.answer = QStringLiteral("quillon-report " QUILLON_VERSION "\n");
    else
        read(parser, options);
    return options;
}

} // namespace report
