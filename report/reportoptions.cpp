#include "report/reportoptions.h"

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
const QString ALL = QStringLiteral("all");
const QString IMAGE = QStringLiteral("image");
const QString SIZE = QStringLiteral("size");
const QString RANK = QStringLiteral("rank");

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
        {ALL, QStringLiteral("Leave nothing out of the text report.")},
        {IMAGE, QStringLiteral("Draw the log into a .png or .svg file."), QStringLiteral("file")},
        {SIZE, QStringLiteral("Pixels of the picture, 1000x700 if not given."),
         QStringLiteral("widthxheight"), QStringLiteral("1000x700")},
        {RANK,
         QStringLiteral("Draw the picture with the keys selected by rank, as the window does.")},
    });
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
    if (parser.isSet(FORMAT) || options.everything)
        return QStringLiteral("--format and --all do not go with --image");
    if (!endsWith(options.image, PNG) && !options.picture.vectors)
        return QStringLiteral("the picture's name must end in .png or .svg");
    if (!options.picture.size.isValid())
        return QStringLiteral("no size of a picture: '%1'; each side is 1 to %2")
            .arg(parser.value(SIZE), QString::number(LARGEST_SIDE));
    if (options.logs.size() > 1)
        return QStringLiteral("a picture shows one log");
    return {};
}

QString reportFault(const options& options, const QCommandLineParser& parser) {
    if (parser.isSet(SIZE) || parser.isSet(RANK))
        return QStringLiteral("--size and --rank belong to --image");
    if (options.everything && !options.format->leavesOut)
        return QStringLiteral("--all belongs to the text report");
    return {};
}

/// What is wrong with options that are well-formed each; empty when nothing is.
QString faultOf(const options& options, const QCommandLineParser& parser) {
    if (options.logs.isEmpty())
        return QStringLiteral("no log given");
    if (!options.format)
        return QStringLiteral("unknown format '%1'").arg(parser.value(FORMAT));
    return parser.isSet(IMAGE) ? pictureFault(options, parser) : reportFault(options, parser);
}

void read(const QCommandLineParser& parser, options& options) {
    options.logs = parser.positionalArguments();
    options.format = find_format(parser.value(FORMAT));
    options.everything = parser.isSet(ALL);
    options.image = parser.value(IMAGE);
    options.picture = {endsWith(options.image, SVG), toSize(parser.value(SIZE)),
                       parser.isSet(RANK)};
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
