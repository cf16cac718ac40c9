#include "report/reporttextwriter.h"

#include "report/reportstepline.h"

#include <algorithm>
#include <cmath>
#include <set>

namespace report {

namespace {

constexpr int COLUMNS = 100;
constexpr std::size_t MOST_KEYS = 25;
constexpr std::size_t MOST_PATTERNS = 5;

// The widths of the columns of numbers, whose names stand above their ends.
constexpr int RANK = 6;
constexpr int WEIGHT = 8;
constexpr int PATTERNS = 10;
constexpr int EVENTS = 8;
constexpr int COUNT = 11;
constexpr int FOUND = 7;
constexpr int IN = 6;
constexpr char HEADER[] = "\n  rank  weight  patterns  events    in  key\n"
                          "      count  found    in  sequence\n";

constexpr int KEY_INDENT = RANK + WEIGHT + PATTERNS + EVENTS + IN + 2;
constexpr int PATTERN_INDENT = COUNT + FOUND + IN + 2;
constexpr int KEY_COLUMNS = COLUMNS - KEY_INDENT;
constexpr int SEQUENCE_COLUMNS = COLUMNS - PATTERN_INDENT;

// Of a key in a sequence that is too long: it gives way to the steps that have to be shown.
constexpr int MOST_KEY_COLUMNS = 24;
constexpr int LEAST_KEY_COLUMNS = 11;

// Of a comparison.
constexpr std::size_t MOST_COMPARED = 25;
constexpr int GROUP = 18;
constexpr int INDENT = 8;

const QString LEFT_OUT = QStringLiteral("…");

QString number(int value, int columns) {
    return QString::number(value).rightJustified(columns);
}

/// "1 pattern", "2 patterns".
QByteArray counted(std::size_t count, QByteArrayView what) {
    return QByteArray::number(count) + ' ' + what.toByteArray() + (count == 1 ? "" : "s");
}

/// As in "+12%".
QString percent(double share) {
    const auto rounded = static_cast<int>(std::lround(100 * share));
    return (rounded > 0 ? QStringLiteral("+") : QString()) + QString::number(rounded) + u'%';
}

/// As in "3/12 25%".
QString shareText(const statistics::share& share) {
    return QStringLiteral("%1/%2 %3%")
        .arg(share.hits)
        .arg(share.of)
        .arg(QString::number(std::lround(100 * share.value())).rightJustified(3));
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
    for (const found_pattern& other : patterns) {
        const int fork = forkOf(pattern, *other.pattern);
        if (fork < pattern.mSequence.size())
            steps.insert(fork);
    }
    return steps;
}

} // namespace

void TextWriter::write(const Findings& findings) {
    writeTotals(findings);
    const std::vector<const key_findings*> ranked = findings.ranked();
    if (!ranked.empty())
        mOutput << HEADER;
    const std::vector<shown_key> rows = choose(findings, ranked);
    Patterns all;
    for (const shown_key& shown : rows)
        all.insert(all.end(), shown.patterns.begin(), shown.patterns.end());
    const ShortKeys shortKeys(keysOf(findings, all));
    for (const shown_key& shown : rows)
        writeKey(findings, shown, shortKeys);
    if (rows.size() < ranked.size())
        mOutput << LEFT_OUT << " " << counted(ranked.size() - rows.size(), "more key")
                << " with patterns (--all prints them)\n";
    mOutput << "\n";
}

/// Whoever asks for so many gets them.
std::vector<TextWriter::shown_key>
TextWriter::choose(const Findings& findings, const std::vector<const key_findings*>& ranked) const {
    const bool isCut = !mStyle.everything && findings.asked().top == 0;
    std::vector<shown_key> rows;
    for (const key_findings* key : ranked) {
        if (isCut && rows.size() == MOST_KEYS)
            break;
        rows.push_back({key, sorted(key->patterns, findings.order())});
        if (isCut && key->patterns.size() > MOST_PATTERNS)
            rows.back().patterns.erase(rows.back().patterns.begin() + MOST_PATTERNS,
                                       rows.back().patterns.end());
    }
    return rows;
}

/// All keys that the patterns name, if any is to be shortened.
QStringList TextWriter::keysOf(const Findings& findings, const Patterns& shown) const {
    if (mStyle.everything)
        return {};
    std::set<int> indices;
    for (const found_pattern& found : shown) {
        for (const int index : found.pattern->run())
            indices.insert(index);
    }
    QStringList keys;
    for (const int index : indices)
        keys += keyAt(findings, index);
    return keys;
}

void TextWriter::writeTotals(const Findings& findings) {
    const Log& log = findings.log();
    const QString path = printable(log.path);
    mOutput << (mStyle.everything ? path : end_of(path, COLUMNS)) << "\n"
            << counted(log.recordings, "recording") << ", " << counted(log.events, "event") << ", "
            << counted(findings.keyCount(), "distinct key") << ", "
            << counted(findings.patternCount(), "pattern") << "\n";
    if (is_asked(findings.asked()))
        mOutput << left_out(findings.patternCount(), findings.shownCount()) << "\n";
}

void TextWriter::writeKey(const Findings& findings, const shown_key& shown,
                          const ShortKeys& shortKeys) {
    const domain::Branch& branch = *shown.key->branch;
    const QString key = printable(branch.mKey);
    mOutput << number(branch.maxPatternCount(), RANK) << number(branch.patternWeight(), WEIGHT)
            << number(branch.patternSize(), PATTERNS) << number(shown.key->figures->events, EVENTS)
            << number(shown.key->figures->recordings, IN) << "  "
            << (mStyle.everything ? key : shortKeys.longest(key, KEY_COLUMNS)) << "\n";
    for (const found_pattern& found : shown.patterns) {
        mOutput << number(found.pattern->mCount, COUNT) << number(found.figures->occurrences, FOUND)
                << number(found.figures->recordings, IN) << "  "
                << sequenceText(findings, *found.pattern, shown.patterns, shortKeys,
                                SEQUENCE_COLUMNS)
                << "\n";
        if (found.keys.size() > 1)
            mOutput << QString(PATTERN_INDENT, u' ') << foundAt(findings, found, shortKeys) << "\n";
    }
    const std::size_t left = shown.key->patterns.size() - shown.patterns.size();
    if (left > 0)
        mOutput << QString(PATTERN_INDENT, u' ') << LEFT_OUT << " " << counted(left, "more pattern")
                << "\n";
}

/// As in "also at toolbar:reply, reply:send".
QString TextWriter::foundAt(const Findings& findings, const found_pattern& found,
                            const ShortKeys& shortKeys) const {
    QStringList others;
    for (std::size_t i = 1; i < found.keys.size(); ++i) {
        const QString key = keyAt(findings, found.keys[i]);
        others += mStyle.everything ? key : shortKeys.shortest(key, MOST_KEY_COLUMNS);
    }
    const QString all = QStringLiteral("also at ") + others.join(QStringLiteral(", "));
    return mStyle.everything ? all : beginning_of(all, SEQUENCE_COLUMNS);
}

QString TextWriter::sequenceText(const Findings& findings, const domain::Pattern& pattern,
                                 const Patterns& shown, const ShortKeys& shortKeys,
                                 int columns) const {
    const int size = pattern.mSequence.size();
    if (mStyle.everything || size < columns) {
        QString whole = wholeText(findings, pattern);
        if (mStyle.everything || whole.size() <= columns)
            return whole;
    }
    const std::set<int> telling = tellingSteps(pattern, shown);
    for (int keyColumns = MOST_KEY_COLUMNS;; --keyColumns) {
        const auto keyOf = [&](int step) {
            return shortKeys.shortest(keyAt(findings, pattern.mSequence[step]), keyColumns);
        };
        StepLine line(size, keyOf, columns);
        if (line.show(telling) || keyColumns == LEAST_KEY_COLUMNS) {
            line.fill();
            return line.text();
        }
    }
}

void TextWriter::compare(const Comparison& comparison) {
    for (const group& group : comparison.groups()) {
        const auto recordings = static_cast<std::size_t>(group.recordings);
        const QString line = printable(group.name) + QStringLiteral(": ") +
                             QString::fromLatin1(counted(recordings, "recording")) +
                             QStringLiteral(", ") +
                             printable(group.logs.join(QStringLiteral(" + ")));
        mOutput << (mStyle.everything ? line : beginning_of(line, COLUMNS)) << "\n";
    }
    const std::size_t size = comparison.patterns().size();
    const bool isCut = !mStyle.everything && !comparison.isTop() && size > MOST_COMPARED;
    Patterns shown;
    for (const compared_pattern& compared : comparison.patterns()) {
        if (!isCut || shown.size() < MOST_COMPARED)
            shown.push_back(compared.found);
    }
    mOutput << comparison.leftOut() << "\n";
    if (!shown.empty())
        writeCompared(comparison, shown);
    if (isCut)
        mOutput << LEFT_OUT << " " << counted(size - shown.size(), "more pattern")
                << " (--all prints them)\n";
}

void TextWriter::writeCompared(const Comparison& comparison, const Patterns& shown) {
    const ShortKeys shortKeys(keysOf(comparison.findings(), shown));
    mOutput << "\n";
    for (const group& group : comparison.groups())
        mOutput << end_of(printable(group.name), GROUP - 2).rightJustified(GROUP);
    mOutput << "  difference   95 % interval          p         q\n";
    for (std::size_t i = 0; i < shown.size(); ++i) {
        const compared_pattern& compared = comparison.patterns()[i];
        for (const statistics::share& share : compared.shares)
            mOutput << shareText(share).rightJustified(GROUP);
        mOutput << percent(compared.difference()).rightJustified(12)
                << (percent(compared.interval.low) + QStringLiteral(" to ") +
                    percent(compared.interval.high))
                       .rightJustified(16)
                << QString::number(compared.p, 'g', 2).rightJustified(11)
                << QString::number(compared.q, 'g', 2).rightJustified(10) << "\n"
                << QString(INDENT, u' ')
                << sequenceText(comparison.findings(), *shown[i].pattern, shown, shortKeys,
                                COLUMNS - INDENT)
                << "\n";
    }
}

} // namespace report
