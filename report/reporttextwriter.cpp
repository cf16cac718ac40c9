#include "report/reporttextwriter.h"

#include <QStringBuilder>

#include <algorithm>
#include <vector>

namespace report {

namespace {

constexpr int COLUMNS = 100;
constexpr int MOST_KEYS = 25;
constexpr int MOST_PATTERNS = 5;
constexpr int NUMBER_COLUMNS = 8;
constexpr int KEY_INDENT = 3 * NUMBER_COLUMNS + 2;
constexpr int PATTERN_INDENT = 2 * NUMBER_COLUMNS + 2;

const QString ARROW = QStringLiteral(" > ");
const QString ELLIPSIS = QStringLiteral("…");

QString number(int value) {
    return QString::number(value).rightJustified(NUMBER_COLUMNS);
}

/// "1 pattern", "2 patterns".
QByteArray counted(int count, QByteArrayView what) {
    return QByteArray::number(count) + ' ' + what.toByteArray() + (count == 1 ? "" : "s");
}

/// A key cannot move the terminal's cursor or break a line.
QString printable(QString text) {
    for (QChar& c : text) {
        if (!c.isPrint() && !c.isSurrogate())
            c = QChar::ReplacementCharacter;
    }
    return text;
}

} // namespace

TextWriter::TextWriter(Output& output, bool everything)
    : Writer(output)
    , mEverything(everything) {}

void TextWriter::write(const Findings& findings) {
    const std::vector<const key_findings*> keys = findings.ranked();
    const int all = static_cast<int>(keys.size());
    const int shown = mEverything ? all : std::min(all, MOST_KEYS);
    writeTotals(findings);
    if (all > 0)
        mOutput << u"\n    rank  weight  patterns  key\n             count  sequence\n";
    for (int i = 0; i < shown; ++i)
        writeKey(findings, *keys[static_cast<std::size_t>(i)]);
    if (shown < all)
        mOutput << ELLIPSIS << " " << counted(all - shown, "more key")
                << " with patterns (--all prints them)\n";
    mOutput << "\n";
}

void TextWriter::writeTotals(const Findings& findings) {
    const Log& log = findings.log();
    mOutput << fitted(printable(log.path), COLUMNS) << "\n"
            << counted(log.recordings, "recording") << ", " << counted(log.events, "event") << ", "
            << counted(findings.keyCount(), "distinct key") << ", "
            << counted(findings.patternCount(), "pattern") << "\n";
}

void TextWriter::writeKey(const Findings& findings, const key_findings& key) {
    mOutput << number(key.branch->maxPatternCount()) << number(key.branch->patternWeight())
            << number(key.branch->patternSize()) << "  "
            << fitted(printable(key.branch->mKey), COLUMNS - KEY_INDENT) << "\n";
    const Patterns patterns = most_frequent_first(key.patterns);
    const int all = static_cast<int>(patterns.size());
    const int shown = mEverything ? all : std::min(all, MOST_PATTERNS);
    for (int i = 0; i < shown; ++i)
        writePattern(findings, *patterns[static_cast<std::size_t>(i)]);
    if (shown < all)
        mOutput << QString(PATTERN_INDENT, u' ') << ELLIPSIS << " "
                << counted(all - shown, "more pattern") << "\n";
}

void TextWriter::writePattern(const Findings& findings, const domain::Pattern& pattern) {
    mOutput << QString(NUMBER_COLUMNS, u' ') << number(pattern.mCount) << "  "
            << sequenceText(findings, pattern, COLUMNS - PATTERN_INDENT) << "\n";
}

/// The end of a key tells it apart, so that is what stays when it is too long.
QString TextWriter::fitted(const QString& text, int columns) const {
    if (mEverything || text.size() <= columns)
        return text;
    QStringView end = QStringView(text).last(columns - 1);
    if (end.front().isLowSurrogate())
        end = end.sliced(1);
    return ELLIPSIS % end;
}

QString TextWriter::sequenceText(const Findings& findings, const domain::Pattern& pattern,
                                 int columns) const {
    const int size = pattern.mSequence.size();
    // Three keys are always shown: the anchor, where it goes, and what remains.
    const int longestKey = columns / 3 - static_cast<int>(ARROW.size());
    QString text;
    for (int i = 0; i < size; ++i) {
        const QString rest = ELLIPSIS % u" " % QString::number(size - i) % u" more";
        const QString key = fitted(printable(findings.keyAt(pattern.mSequence[i])), longestKey);
        const bool last = i + 1 == size;
        const qsizetype needed = key.size() + (last ? 0 : ARROW.size() + rest.size());
        if (!mEverything && text.size() + needed > columns)
            return text % rest;
        text += last ? key : key % ARROW;
    }
    return text;
}

} // namespace report
