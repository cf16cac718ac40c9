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

/// A key cannot move the terminal's cursor or break a line.
QString printable(QString text) {
    for (QChar& c : text) {
        if (!c.isPrint() && !c.isSurrogate())
            c = QChar::ReplacementCharacter;
    }
    return text;
}

QString keyOf(const domain::Nest& nest, int index) {
    const domain::Branch* branch = nest.branchAt(index);
    return branch ? printable(branch->mKey) : QString();
}

/// The branches with patterns, highest rank first, ties by index.
std::vector<const domain::Branch*> ranked(const domain::Nest& nest) {
    struct entry {
        int rank;
        const domain::Branch* branch;
    };

    std::vector<entry> entries;
    for (int i = 0; i < nest.size(); ++i) {
        const domain::Branch* branch = nest.branchAt(i);
        if (branch && branch->hasPatterns())
            entries.push_back({branch->maxPatternCount(), branch});
    }
    std::stable_sort(entries.begin(), entries.end(),
                     [](const entry& a, const entry& b) { return a.rank > b.rank; });
    std::vector<const domain::Branch*> branches;
    branches.reserve(entries.size());
    for (const entry& e : entries)
        branches.push_back(e.branch);
    return branches;
}

std::vector<const domain::Pattern*> mostFrequentFirst(const domain::Branch& branch) {
    std::vector<const domain::Pattern*> patterns;
    for (const domain::Pattern* pattern : branch.mPatterns)
        patterns.push_back(pattern);
    std::stable_sort(patterns.begin(), patterns.end(),
                     [](const auto* a, const auto* b) { return a->mCount > b->mCount; });
    return patterns;
}

int patternsOf(const domain::Nest& nest) {
    int patterns = 0;
    for (int i = 0; i < nest.size(); ++i)
        patterns += nest.branchAt(i) ? nest.branchAt(i)->patternSize() : 0;
    return patterns;
}

int keysOf(const domain::Nest& nest) {
    int keys = 0;
    for (int i = 0; i < nest.size(); ++i)
        keys += nest.branchAt(i) && nest.branchAt(i)->isValid() ? 1 : 0;
    return keys;
}

} // namespace

TextWriter::TextWriter(Output& output, bool everything)
    : Writer(output)
    , mEverything(everything) {}

void TextWriter::write(const Log& log) {
    const std::vector<const domain::Branch*> branches = ranked(log.nest);
    const int all = static_cast<int>(branches.size());
    const int shown = mEverything ? all : std::min(all, MOST_KEYS);
    writeTotals(log);
    if (all > 0)
        mOutput << u"\n    rank  weight  patterns  key\n             count  sequence\n";
    for (int i = 0; i < shown; ++i)
        writeKey(log.nest, *branches[static_cast<std::size_t>(i)]);
    if (shown < all)
        mOutput << ELLIPSIS << " " << all - shown
                << " more keys with patterns (--all prints them)\n";
    mOutput << "\n";
}

void TextWriter::writeTotals(const Log& log) {
    mOutput << fitted(printable(log.path), COLUMNS) << "\n"
            << log.recordings << " recordings, " << log.events << " events, " << keysOf(log.nest)
            << " distinct keys, " << patternsOf(log.nest) << " patterns\n";
}

void TextWriter::writeKey(const domain::Nest& nest, const domain::Branch& branch) {
    mOutput << number(branch.maxPatternCount()) << number(branch.patternWeight())
            << number(branch.patternSize()) << "  "
            << fitted(printable(branch.mKey), COLUMNS - KEY_INDENT) << "\n";
    const std::vector<const domain::Pattern*> patterns = mostFrequentFirst(branch);
    const int all = static_cast<int>(patterns.size());
    const int shown = mEverything ? all : std::min(all, MOST_PATTERNS);
    for (int i = 0; i < shown; ++i)
        writePattern(nest, *patterns[static_cast<std::size_t>(i)]);
    if (shown < all)
        mOutput << QString(PATTERN_INDENT, u' ') << ELLIPSIS << " " << all - shown
                << " more patterns\n";
}

void TextWriter::writePattern(const domain::Nest& nest, const domain::Pattern& pattern) {
    mOutput << QString(NUMBER_COLUMNS, u' ') << number(pattern.mCount) << "  "
            << sequenceText(nest, pattern, COLUMNS - PATTERN_INDENT) << "\n";
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

QString TextWriter::sequenceText(const domain::Nest& nest, const domain::Pattern& pattern,
                                 int columns) const {
    const int size = pattern.mSequence.size();
    // Three keys are always shown: the anchor, where it goes, and what remains.
    const int longestKey = columns / 3 - static_cast<int>(ARROW.size());
    QString text;
    for (int i = 0; i < size; ++i) {
        const QString rest = ELLIPSIS % u" " % QString::number(size - i) % u" more";
        const QString key = fitted(keyOf(nest, pattern.mSequence[i]), longestKey);
        const bool last = i + 1 == size;
        const qsizetype needed = key.size() + (last ? 0 : ARROW.size() + rest.size());
        if (!mEverything && text.size() + needed > columns)
            return text % rest;
        text += last ? key : key % ARROW;
    }
    return text;
}

} // namespace report
