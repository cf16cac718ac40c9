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
            << ", \"warnings\": " << quoted(log.warnings) << "}\n";
}

void JsonWriter::writeKey(const key_findings& key) {
    const domain::Branch& branch = *key.branch;
    mOutput << "{\"index\": " << key.index << ", \"key\": " << quoted(branch.mKey)
            << ", \"gesture\": \"" << gestureName(branch.mGesture) << "\", \"bounds\": ";
    writeBounds(branch.mBounds);
    mOutput << ", \"rank\": " << branch.maxPatternCount()
            << ", \"weight\": " << branch.patternWeight() << ", \"patterns\": [";
    writePatterns(key.patterns);
    mOutput << "]}";
}

void JsonWriter::writeBounds(const QRectF& bounds) {
    mOutput << "{\"x\": " << number(bounds.x()) << ", \"y\": " << number(bounds.y())
            << ", \"width\": " << number(bounds.width())
            << ", \"height\": " << number(bounds.height()) << "}";
}

void JsonWriter::writePatterns(const Patterns& patterns) {
    QByteArrayView separator = "";
    for (const domain::Pattern* pattern : patterns) {
        mOutput << separator << "{\"count\": " << pattern->mCount << ", \"sequence\": [";
        writeSequence(*pattern);
        mOutput << "]}";
        separator = ", ";
    }
}

void JsonWriter::writeSequence(const domain::Pattern& pattern) {
    for (int i = 0; i < pattern.mSequence.size(); ++i)
        mOutput << (i > 0 ? ", " : "") << pattern.mSequence[i];
}

} // namespace report
