#include "tools/reportoptions.h"

#include <QCommandLineParser>
#include <QRegularExpression>

#include <algorithm>

namespace report {

namespace {

const QStringList FORMATS{QStringLiteral("text"), QStringLiteral("json"), QStringLiteral("csv")};
const QStringList IMAGES{QStringLiteral(".png"), QStringLiteral(".svg")};
constexpr int LARGEST_SIDE = 16384;

QCommandLineOption option(const QString& name, const QString& description) {
    return {name, description};
}

QCommandLineOption option(const QString& name, const QString& description, const QString& value,
                          const QString& defaultValue = QString()) {
    return {name, description, value, defaultValue};
}

/// The size named as in "1000x700"; not valid when it is no size or too large for a picture.
QSize toSize(const QString& text) {
    static const QRegularExpression form(QStringLiteral("^(\\d{1,5})x(\\d{1,5})$"));
    const QRegularExpressionMatch match = form.match(text);
    const QSize size(match.captured(1).toInt(), match.captured(2).toInt());
    const bool fits = !size.isEmpty() && std::max(size.width(), size.height()) <= LARGEST_SIDE;
    return fits ? size : QSize();
}

bool isImageName(const QString& name) {
    return std::any_of(IMAGES.begin(), IMAGES.end(), [&](const QString& ending) {
        return name.endsWith(ending, Qt::CaseInsensitive);
    });
}

/// What is wrong with options that are well-formed each; empty when nothing is.
QString faultOf(const options& options, const QCommandLineParser& parser) {
    if (options.logs.isEmpty())
        return QStringLiteral("no log given");
    if (!FORMATS.contains(options.format))
        return QStringLiteral("unknown format '%1'").arg(options.format);
    if (options.image.isEmpty()) {
        const bool forPicture =
            parser.isSet(QStringLiteral("size")) || parser.isSet(QStringLiteral("rank"));
        return forPicture ? QStringLiteral("--size and --rank belong to --image") : QString();
    }
    if (!isImageName(options.image))
        return QStringLiteral("the picture's name must end in .png or .svg");
    if (!options.size.isValid())
        return QStringLiteral("no size of a picture: '%1'")
            .arg(parser.value(QStringLiteral("size")));
    if (options.logs.size() > 1)
        return QStringLiteral("a picture shows one log");
    return {};
}

} // namespace

options parseOptions(const QStringList& arguments) {
    QCommandLineParser parser;
    parser.setApplicationDescription(
        QStringLiteral("Reports the event sequences that repeat in trace logs, or draws them."));
    const QCommandLineOption help({QStringLiteral("h"), QStringLiteral("help")},
                                  QStringLiteral("Print this help."));
    const QCommandLineOption version = parser.addVersionOption();
    const QCommandLineOption format =
        option(QStringLiteral("format"), QStringLiteral("text (the default), json or csv."),
               QStringLiteral("format"), FORMATS.first());
    const QCommandLineOption all =
        option(QStringLiteral("all"), QStringLiteral("Leave nothing out of the text report."));
    const QCommandLineOption image =
        option(QStringLiteral("image"), QStringLiteral("Draw the log into a .png or .svg file."),
               QStringLiteral("file"));
    const QCommandLineOption size = option(
        QStringLiteral("size"), QStringLiteral("Pixels of the picture, 1000x700 if not given."),
        QStringLiteral("widthxheight"), QStringLiteral("1000x700"));
    const QCommandLineOption rank = option(
        QStringLiteral("rank"),
        QStringLiteral("Draw the picture with the keys selected by rank, as the window does."));
    parser.addOptions({help, format, all, image, size, rank});
    parser.addPositionalArgument(QStringLiteral("LOG..."),
                                 QStringLiteral("Trace logs; - reads standard input."));

    options options;
    if (!parser.parse(arguments)) {
        options.fault = parser.errorText();
        return options;
    }
    if (parser.isSet(help)) {
        options.answer = parser.helpText();
        return options;
    }
    if (parser.isSet(version)) {
        options.answer = QStringLiteral("quillon-report " QUILLON_VERSION "\n");
        return options;
    }
    options.format = parser.value(format);
    options.everything = parser.isSet(all);
    options.logs = parser.positionalArguments();
    options.image = parser.value(image);
    options.size = toSize(parser.value(size));
    options.rank = parser.isSet(rank);
    options.fault = faultOf(options, parser);
    return options;
}

} // namespace report
