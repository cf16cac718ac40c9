#include "report/reportfindings.h"

#include <QLocale>
#include <QStringList>

#include <algorithm>

namespace report {

namespace {

const domain::Branch FREE; // stands for a slot that could not be filled

} // namespace

Findings::Findings(const Log& log, const question& question)
    : mLog(log)
    , mQuestion(question) {
    mKeys.reserve(static_cast<std::size_t>(log.nest.size()));
    for (int i = 0; i < log.nest.size(); ++i) {
        const domain::Branch* branch = log.nest.branchAt(i);
        add(i, branch ? *branch : FREE);
    }
    choose(question, log, mKeys);
}

void Findings::add(int index, const domain::Branch& branch) {
    key_findings key{index, &branch, &mLog.figures.keys[static_cast<std::size_t>(index)], {}};
    for (const domain::Pattern* pattern : branch.mPatterns.reading()) {
        const auto number = static_cast<std::size_t>(mPatternCount++);
        key.patterns.push_back({pattern, &mLog.figures.patterns[number], {}});
    }
    mKeyCount += branch.isValid() ? 1 : 0;
    mKeys.push_back(std::move(key));
}

std::vector<const key_findings*> Findings::ranked() const {
    struct entry {
        int rank;
        const key_findings* key;
    };

    std::vector<entry> entries;
    for (const key_findings& key : mKeys) {
        int rank = 0;
        for (const found_pattern& found : key.patterns)
            rank = std::max(rank, measured(found, order()));
        if (!key.patterns.empty())
            entries.push_back({rank, &key});
    }
    std::stable_sort(entries.begin(), entries.end(),
                     [](const entry& a, const entry& b) { return a.rank > b.rank; });
    std::vector<const key_findings*> keys;
    keys.reserve(entries.size());
    for (const entry& e : entries)
        keys.push_back(e.key);
    return keys;
}

Patterns Findings::patterns() const {
    Patterns all;
    for (const key_findings& key : mKeys)
        all.insert(all.end(), key.patterns.begin(), key.patterns.end());
    return is_sorted(mQuestion) ? sorted(std::move(all), order()) : all;
}

QString Findings::keyAt(int index) const {
    const domain::Branch* branch = mLog.nest.branchAt(index);
    return branch ? branch->mKey : QString();
}

int Findings::shownCount() const {
    int count = 0;
    for (const key_findings& key : mKeys)
        count += static_cast<int>(key.patterns.size());
    return count;
}

QString left_out(int patterns, int shown) {
    const QLocale english(QLocale::English);
    const QString noun = patterns == 1 ? QStringLiteral("pattern") : QStringLiteral("patterns");
    return QStringLiteral("%1 %2, %3 of them shown")
        .arg(english.toString(patterns), noun, english.toString(shown));
}

QString joined_keys(const Findings& findings, const domain::Pattern& pattern) {
    QStringList keys;
    for (const int index : pattern.run())
        keys.append(findings.keyAt(index));
    return keys.join(QStringLiteral(" > "));
}

const found_pattern* find_pattern(const Findings& findings, const QString& keys) {
    for (const key_findings& key : findings.keys()) {
        if (key.branch->mKey.isEmpty() || !keys.startsWith(key.branch->mKey))
            continue;
        for (const found_pattern& found : key.patterns) {
            if (joined_keys(findings, *found.pattern) == keys)
                return &found;
        }
    }
    return nullptr;
}

} // namespace report
