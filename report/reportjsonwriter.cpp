#include "report/reportjsonwriter.h"

#include <QByteArray>
#include <QJsonArray>
#include <QJsonDocument>
#include <QLocale>

#include <cmath>

namespace report {

namespace {

QByteArray quoted(const QStringList& texts) {
    return QJsonDocument(QJsonArray::fromStringList(texts)).toJson(QJsonDocument::Compact);
}

/// `text` as a JSON string, quotes included.
QByteArray quoted(const QString& text) {
    const QByteArray array = QJsonDocument(QJsonArray{text}).toJson(QJsonDocument::Compact);
    return array.mid(1, array.size() - 2);
}

/// Reads back as the same double; null when `value` is not finite.
QByteArray number(double value) {
    if (!std::isfinite(value))
        return "null";
    return QByteArray::number(value, 'g', QLocale::FloatingPointShortest);
}

QByteArrayView gestureName(int gesture) {
    switch (gesture) {
    case domain::GESTURE_DOWN:
        return "down";
    case domain::GESTURE_UP:
        return "up";
    case domain::GESTURE_MENU:
        return "menu";
    default:
        return "none";
    }
}

} // namespace

void JsonWriter::write(const Findings& findings) {
    const Log& log = findings.log();
    QByteArrayView separator = "";
    mOutput << "{\"log\": " << quoted(log.path)
            << ", \"complete\": " << (log.complete ? "true" : "false") << ", \"branches\": [";
    for (const key_findings& key : findings.keys()) {
        mOutput << separator;
        writeKey(key);
        separator = ", ";
    }
    mOutput << "], \"recordings\": " << log.recordings << ", \"events\": " << log.events
            << ", \"warnings\": " << quoted(warnings_of(log));
    if (is_asked(findings.asked()))
        mOutput << ", \"patterns\": " << findings.patternCount()
                << ", \"shown\": " << findings.shownCount();
    mOutput << "}\n";
}

void JsonWriter::writeKey(const key_findings& key) {
    const domain::Branch& branch = *key.branch;
    mOutput << "{\"index\": " << key.index << ", \"key\": " << quoted(branch.mKey)
            << ", \"gesture\": \"" << gestureName(branch.mGesture) << "\", \"bounds\": ";
    writeBounds(branch.mBounds);
    mOutput << ", \"rank\": " << branch.maxPatternCount()
            << ", \"weight\": " << branch.patternWeight() << ", \"patterns\": [";
    writePatterns(key.patterns);
    mOutput << "], \"events\": " << key.figures->events
            << ", \"recordings\": " << key.figures->recordings << "}";
}

void JsonWriter::writeBounds(const QRectF& bounds) {
    mOutput << "{\"x\": " << number(bounds.x()) << ", \"y\": " << number(bounds.y())
            << ", \"width\": " << number(bounds.width())
            << ", \"height\": " << number(bounds.height()) << "}";
}

void JsonWriter::writePatterns(const Patterns& patterns) {
    QByteArrayView separator = "";
    for (const found_pattern& found : patterns) {
        mOutput << separator << "{\"count\": " << found.pattern->mCount << ", \"sequence\": [";
        writeNumbers(found.pattern->run());
        mOutput << "], \"occurrences\": " << found.figures->occurrences
                << ", \"recordings\": " << found.figures->recordings << ", \"places\": [";
        writePlaces(*found.figures);
        mOutput << "]";
        writeFoundAt(found);
        mOutput << "}";
        separator = ", ";
    }
}

void JsonWriter::writeFoundAt(const found_pattern& found) {
    if (found.keys.empty())
        return;
    mOutput << ", \"found_at\": [";
    writeNumbers(found.keys);
    mOutput << "]";
}

void JsonWriter::writeNumbers(std::span<const int> numbers) {
    QByteArrayView separator = "";
    for (const int number : numbers) {
        mOutput << separator << number;
        separator = ", ";
    }
}

void JsonWriter::writePlaces(const domain::pattern_figures& figures) {
    QByteArrayView separator = "";
    for (const domain::place& place : figures.places) {
        if (place.recording == 0)
            break;
        mOutput << separator << "{\"recording\": " << place.recording
                << ", \"event\": " << place.event << "}";
        separator = ", ";
    }
}

void JsonWriter::compare(const Comparison& comparison) {
    const Findings& findings = comparison.findings();
    QByteArrayView separator = "";
    mOutput << "{\"groups\": [";
    writeGroups(comparison);
    mOutput << "], \"branches\": [";
    for (const key_findings& key : findings.keys()) {
        mOutput << separator << "{\"index\": " << key.index
                << ", \"key\": " << quoted(key.branch->mKey) << "}";
        separator = ", ";
    }
    separator = "";
    mOutput << "], \"patterns\": [";
    for (const compared_pattern& compared : comparison.patterns()) {
        mOutput << separator;
        writeCompared(compared);
        separator = ", ";
    }
    mOutput << "], \"found\": " << findings.patternCount()
            << ", \"shown\": " << static_cast<int>(comparison.patterns().size())
            << ", \"warnings\": " << quoted(comparison.warnings()) << "}\n";
}

void JsonWriter::writeGroups(const Comparison& comparison) {
    QByteArrayView separator = "";
    for (const group& group : comparison.groups()) {
        mOutput << separator << "{\"name\": " << quoted(group.name)
                << ", \"logs\": " << quoted(group.logs) << ", \"recordings\": " << group.recordings
                << "}";
        separator = ", ";
    }
}

void JsonWriter::writeCompared(const compared_pattern& compared) {
    const auto& [first, second] = compared.shares;
    mOutput << "{\"sequence\": [";
    writeNumbers(compared.found.pattern->run());
    mOutput << "], \"recordings\": [" << first.hits << ", " << second.hits << "], \"shares\": ["
            << number(first.value()) << ", " << number(second.value())
            << "], \"difference\": " << number(compared.difference()) << ", \"interval\": ["
            << number(compared.interval.low) << ", " << number(compared.interval.high)
            << "], \"p\": " << number(compared.p) << ", \"q\": " << number(compared.q);
    writeFoundAt(compared.found);
    mOutput << "}";
}

} // namespace report
