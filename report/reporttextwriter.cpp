#include "report/reporttextwriter.h"

#include "report/reportstepline.h"

#include <algorithm>
#include <set>

namespace report {

namespace {

constexpr int COLUMNS = 100;
constexpr std::size_t MOST_KEYS = 25;
constexpr std::size_t MOST_PATTERNS = 5;
constexpr int NUMBER_COLUMNS = 8;
constexpr int KEY_INDENT = 3 * NUMBER_COLUMNS + 2;
constexpr int PATTERN_INDENT = 2 * NUMBER_COLUMNS + 2;
constexpr int KEY_COLUMNS = COLUMNS - KEY_INDENT;
constexpr int SEQUENCE_COLUMNS = COLUMNS - PATTERN_INDENT;

// Of a key in a sequence that is too long: it gives way to the steps that have to be shown.
constexpr int MOST_KEY_COLUMNS = 24;
constexpr int LEAST_KEY_COLUMNS = 11;

const QString LEFT_OUT = QStringLiteral("…");

QString number(int value) {
    return QString::number(value).rightJustified(NUMBER_COLUMNS);
}

/// "1 pattern", "2 patterns".
QByteArray counted(std::size_t count, QByteArrayView what) {
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

QString keyAt(const Findings& findings, int index) {
    return printable(findings.keyAt(index));
}

QString wholeText(const Findings& findings, const domain::Pattern& pattern) {
    return all_steps(pattern.mSequence.size(),
                     [&](int step) { return keyAt(findings, pattern.mSequence[step]); });
}

/// The first step at which two sequences differ.
int forkOf(const domain::Pattern& a, const domain::Pattern& b) {
    const int size = std::min(a.mSequence.size(), b.mSequence.size());
    int step = 0;
    while (step < size && a.mSequence[step] == b.mSequence[step])
        ++step;
    return step;
}

/// The second step of a pattern, and those that tell it from the others.
std::set<int> tellingSteps(const domain::Pattern& pattern, const Patterns& patterns) {
    std::set<int> steps{1};
    for (const domain::Pattern* other : patterns) {
        const int fork = forkOf(pattern, *other);
        if (fork < pattern.mSequence.size())
            steps.insert(fork);
    }
    return steps;
}

} // namespace

TextWriter::TextWriter(Output& output, bool everything)
    : Writer(output)
    , mEverything(everything) {}

void TextWriter::write(const Findings& findings) {
    writeTotals(findings);
    const std::vector<const key_findings*> ranked = findings.ranked();
    if (!ranked.empty())
        mOutput << u"\n    rank  weight  patterns  key\n             count  sequence\n";
    const std::vector<shown_key> rows = choose(ranked);
    const ShortKeys shortKeys(keysOf(findings, rows));
    for (const shown_key& shown : rows)
        writeKey(findings, shown, shortKeys);
    if (rows.size() < ranked.size())
        mOutput << LEFT_OUT << " " << counted(ranked.size() - rows.size(), "more key")
                << " with patterns (--all prints them)\n";
    mOutput << "\n";
}

std::vector<TextWriter::shown_key>
TextWriter::choose(const std::vector<const key_findings*>& ranked) const {
    std::vector<shown_key> rows;
    for (const key_findings* key : ranked) {
        if (!mEverything && rows.size() == MOST_KEYS)
            break;
        rows.push_back({key, most_frequent_first(key->patterns)});
        if (!mEverything && key->patterns.size() > MOST_PATTERNS)
            rows.back().patterns.resize(MOST_PATTERNS);
    }
    return rows;
}

/// All keys that the rows name, if any is to be shortened.
QStringList TextWriter::keysOf(const Findings& findings, const std::vector<shown_key>& rows) const {
    if (mEverything)
        return {};
    std::set<int> indices;
    for (const shown_key& shown : rows) {
        for (const domain::Pattern* pattern : shown.patterns) {
            for (const int index : pattern->mSequence)
                indices.insert(index);
        }
    }
    QStringList keys;
    for (const int index : indices)
        keys += keyAt(findings, index);
    return keys;
}

void TextWriter::writeTotals(const Findings& findings) {
    const Log& log = findings.log();
    const QString path = printable(log.path);
    mOutput << (mEverything ? path : end_of(path, COLUMNS)) << "\n"
            << counted(log.recordings, "recording") << ", " << counted(log.events, "event") << ", "
            << counted(findings.keyCount(), "distinct key") << ", "
            << counted(findings.patternCount(), "pattern") << "\n";
}

void TextWriter::writeKey(const Findings& findings, const shown_key& shown,
                          const ShortKeys& shortKeys) {
    const domain::Branch& branch = *shown.key->branch;
    const QString key = printable(branch.mKey);
    mOutput << number(branch.maxPatternCount()) << number(branch.patternWeight())
            << number(branch.patternSize()) << "  "
            << (mEverything ? key : shortKeys.longest(key, KEY_COLUMNS)) << "\n";
    for (const domain::Pattern* pattern : shown.patterns)
        mOutput << QString(NUMBER_COLUMNS, u' ') << number(pattern->mCount) << "  "
                << sequenceText(findings, *pattern, shown, shortKeys) << "\n";
    const std::size_t left = shown.key->patterns.size() - shown.patterns.size();
    if (left > 0)
        mOutput << QString(PATTERN_INDENT, u' ') << LEFT_OUT << " " << counted(left, "more pattern")
                << "\n";
}

QString TextWriter::sequenceText(const Findings& findings, const domain::Pattern& pattern,
                                 const shown_key& shown, const ShortKeys& shortKeys) const {
    const int size = pattern.mSequence.size();
    if (mEverything || size < SEQUENCE_COLUMNS) {
        QString whole = wholeText(findings, pattern);
        if (mEverything || whole.size() <= SEQUENCE_COLUMNS)
            return whole;
    }
    const std::set<int> telling = tellingSteps(pattern, shown.patterns);
    for (int keyColumns = MOST_KEY_COLUMNS;; --keyColumns) {
        const auto keyOf = [&](int step) {
            return shortKeys.shortest(keyAt(findings, pattern.mSequence[step]), keyColumns);
        };
        StepLine line(size, keyOf, SEQUENCE_COLUMNS);
        if (line.show(telling) || keyColumns == LEAST_KEY_COLUMNS) {
            line.fill();
            return line.text();
        }
    }
}

} // namespace report
