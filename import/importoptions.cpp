#include "import/importoptions.h"

#include "import/importformat.h"

#include <QCommandLineParser>

#include <algorithm>

namespace import {

namespace {

const QString HELP = QStringLiteral("help");
const QString VERSION = QStringLiteral("version");
const QString OUTPUT = QStringLiteral("output");
const QString FROM = QStringLiteral("from");
const QString KEY = QStringLiteral("key");
const QString CASE = QStringLiteral("case");
const QString GESTURE = QStringLiteral("gesture");
const QString MAP = QStringLiteral("map");
const QString X = QStringLiteral("x");
const QString Y = QStringLiteral("y");
const QString XY = QStringLiteral("xy");
const QString SORT = QStringLiteral("sort");
const QString PRESET = QStringLiteral("preset");
const QString LIFECYCLE = QStringLiteral("lifecycle");
const QString RULES = QStringLiteral("rules");
const QString RULE = QStringLiteral("rule");
const QString KEYS = QStringLiteral("keys");
const QString PLACES = QStringLiteral("places");
const QString JOIN = QStringLiteral("join");
const QString NO_JOIN = QStringLiteral("no-join");
const QString NO_FIELDS = QStringLiteral("no-fields");
const QString LARGEST = QStringLiteral("largest");
const QString RATIO = QStringLiteral("ratio");

const QString COLUMN = QStringLiteral("column");

void declare(QCommandLineParser& parser) {
    parser.setApplicationDescription(
        QStringLiteral("Makes one log for Quillon of what other programs have recorded."));
    parser.addOptions({
        {{QStringLiteral("h"), HELP}, QStringLiteral("Print this help.")},
        {{QStringLiteral("v"), VERSION}, QStringLiteral("Print the version.")},
        {{QStringLiteral("o"), OUTPUT},
         QStringLiteral("Write the log there, whole or not at all, instead of to standard output."),
         QStringLiteral("log")},
        {FROM,
         QStringLiteral("Take every file for this format: ") +
             format_names().join(QStringLiteral(", ")) + u'.',
         QStringLiteral("format")},
        {KEY, QStringLiteral("Table: columns whose cells, joined by a colon, are the key."),
         QStringLiteral("column,...")},
        {CASE, QStringLiteral("Table: each of its values is a recording."), COLUMN},
        {GESTURE, QStringLiteral("Table: what kind of event a row is, by --map."), COLUMN},
        {MAP, QStringLiteral("What the values of --gesture mean: GLOB=down, up, menu or skip, ..."),
         QStringLiteral("mapping")},
        {X, QStringLiteral("Table: x in pixels."), COLUMN},
        {Y, QStringLiteral("Table: y in pixels."), COLUMN},
        {XY, QStringLiteral("Table: both, as x,y."), COLUMN},
        {SORT, QStringLiteral("Table: the number or time by which the rows of a recording go."),
         COLUMN},
        {PRESET,
         QStringLiteral("Table: the columns of a known kind: ") +
             presets().join(QStringLiteral(", ")) + u'.',
         QStringLiteral("name")},
        {LIFECYCLE, QStringLiteral("XES: the transition that counts, complete if not given."),
         QStringLiteral("transition")},
        {RULES, QStringLiteral("Read key rules from a file."), QStringLiteral("file")},
        {RULE, QStringLiteral("A key rule, behind those of files."), QStringLiteral("rule")},
        {KEYS, QStringLiteral("List the keys instead of a log: events, key, how it was named.")},
        {PLACES,
         QStringLiteral("grid: keys without positions get a cell each; as-is: they have none."),
         QStringLiteral("how")},
        {JOIN, QStringLiteral("One recording of all, with a press (start) in front of each.")},
        {NO_JOIN, QStringLiteral("Recordings stay apart.")},
        {NO_FIELDS, QStringLiteral("Scripts: typing into a field is no press on it.")},
        {LARGEST, QStringLiteral("Zip: megabytes that a member may unpack to, 4096 if not given."),
         QStringLiteral("MB")},
        {RATIO, QStringLiteral("Zip: times its packed size, 1000 if not given."),
         QStringLiteral("times")},
    });
    parser.addPositionalArgument(QStringLiteral("FILE..."),
                                 QStringLiteral("Recordings; - reads standard input."));
}

QString addRules(Rules& rules, const QCommandLineParser& parser) {
    for (const QString& path : parser.values(RULES)) {
        QString fault = rules.addFile(path);
        if (!fault.isEmpty())
            return fault;
    }
    for (const QString& rule : parser.values(RULE)) {
        const QString fault = rules.add(rule);
        if (!fault.isEmpty())
            return QStringLiteral("--rule '%1': %2").arg(rule, fault);
    }
    return {};
}

/// What is wrong with the options of tables; empty when nothing is.
QString readTable(table& table, const QCommandLineParser& parser) {
    if (parser.isSet(PRESET)) {
        const auto known = preset(parser.value(PRESET));
        if (!known)
            return QStringLiteral("no preset is called '%1'").arg(parser.value(PRESET));
        table = *known;
    }
    if (parser.isSet(KEY)) {
        const QStringList columns = parser.value(KEY).split(u',', Qt::SkipEmptyParts);
        table.key.assign(columns.begin(), columns.end());
    }
    const std::pair<QString, QString*> columns[] = {
        {CASE, &table.recording}, {GESTURE, &table.gesture}, {X, &table.x}, {Y, &table.y},
        {XY, &table.xy},          {SORT, &table.sort}};
    for (const auto& [option, column] : columns) {
        if (parser.isSet(option))
            *column = parser.value(option);
    }
    if (table.x.isEmpty() != table.y.isEmpty() || (!table.x.isEmpty() && !table.xy.isEmpty()))
        return QStringLiteral("a place is --x with --y, or --xy");
    if (!parser.isSet(MAP))
        return {};
    if (table.gesture.isEmpty())
        return QStringLiteral("--map needs --gesture");
    const QString fault = table.map.set(parser.value(MAP));
    return fault.isEmpty() ? QString() : QStringLiteral("--map: ") + fault;
}

QString readUnpacking(unpacking& unpacking, const QCommandLineParser& parser) {
    bool isNumber = true;
    if (parser.isSet(LARGEST)) {
        const int megabytes = parser.value(LARGEST).toInt(&isNumber);
        unpacking.largest = std::int64_t(megabytes) << 20;
        isNumber = isNumber && megabytes > 0;
    }
    if (parser.isSet(RATIO) && isNumber) {
        unpacking.ratio = parser.value(RATIO).toDouble(&isNumber);
        isNumber = isNumber && unpacking.ratio >= 1;
    }
    return isNumber ? QString() : QStringLiteral("--largest and --ratio are numbers from 1");
}

QString readHow(options& options, const QCommandLineParser& parser) {
    if (parser.isSet(JOIN) && parser.isSet(NO_JOIN))
        return QStringLiteral("--join and --no-join do not go together");
    if (parser.isSet(JOIN) || parser.isSet(NO_JOIN))
        options.join = parser.isSet(JOIN);
    const QString places = parser.value(PLACES);
    if (parser.isSet(PLACES)) {
        if (places != u"grid" && places != u"as-is")
            return QStringLiteral("--places is grid or as-is");
        options.grid = places == u"grid";
    }
    options.listsKeys = parser.isSet(KEYS);
    options.fields = !parser.isSet(NO_FIELDS);
    options.lifecycle =
        parser.isSet(LIFECYCLE) ? parser.value(LIFECYCLE) : QStringLiteral("complete");
    if (options.listsKeys && !options.output.isEmpty())
        return QStringLiteral("--keys writes no log");
    return {};
}

QString read(const QCommandLineParser& parser, options& options) {
    options.files = parser.positionalArguments();
    options.output = parser.value(OUTPUT);
    options.from = parser.value(FROM);
    if (options.files.isEmpty())
        return QStringLiteral("no file given");
    if (!options.from.isEmpty() && !format_names().contains(options.from))
        return QStringLiteral("no format is called '%1'").arg(options.from);
    for (const QString& fault :
         {readTable(options.table, parser), readUnpacking(options.unpacking, parser),
          readHow(options, parser), addRules(options.rules, parser)}) {
        if (!fault.isEmpty())
            return fault;
    }
    return {};
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
        options.answer = QStringLiteral("quillon-import " QUILLON_VERSION "\n");
    else
        options.fault = read(parser, options);
    return options;
}

} // namespace import
