#include "report/reportcomparison.h"

#include <algorithm>
#include <cmath>
#include <unordered_map>

namespace report {

namespace {

constexpr int FEW = 10;

/// That group's keys have the same indices in both, and its patterns are the first ones of each
/// key, in the same order.
std::unordered_map<const domain::Pattern*, int> byPattern(const domain::Nest& both,
                                                          const RecordingsOf& inFirst) {
    std::unordered_map<const domain::Pattern*, int> recordings;
    for (std::size_t i = 0; i < inFirst.size(); ++i) {
        auto pattern = both.branchAt(static_cast<int>(i))->mPatterns.begin();
        for (const int count : inFirst[i]) {
            recordings[*pattern] = count;
            ++pattern;
        }
    }
    return recordings;
}

bool isStronger(const compared_pattern& a, const compared_pattern& b) {
    if (a.p != b.p)
        return a.p < b.p;
    return std::abs(a.difference()) > std::abs(b.difference());
}

} // namespace

RecordingsOf recordings_of(const Log& log) {
    RecordingsOf recordings(static_cast<std::size_t>(log.nest.size()));
    auto figures = log.figures.patterns.begin();
    for (std::size_t i = 0; i < recordings.size(); ++i) {
        const int patterns = log.nest.branchAt(static_cast<int>(i))->patternSize();
        for (int left = patterns; left > 0; --left)
            recordings[i].push_back((figures++)->recordings);
    }
    return recordings;
}

Comparison::Comparison(const Findings& findings, const Groups& groups, const RecordingsOf& inFirst,
                       int top)
    : mFindings(findings)
    , mGroups(groups)
    , mIsTop(top > 0) {
    auto first = byPattern(findings.log().nest, inFirst);
    for (const found_pattern& found : findings.patterns())
        mPatterns.push_back(compared(found, first[found.pattern]));
    adjust();
    std::stable_sort(mPatterns.begin(), mPatterns.end(), isStronger);
    if (top > 0 && mPatterns.size() > static_cast<std::size_t>(top))
        mPatterns.erase(mPatterns.begin() + top, mPatterns.end());
}

compared_pattern Comparison::compared(const found_pattern& found, int inFirst) const {
    compared_pattern compared{found, {}, {}, 1, 1};
    compared.shares = {{{inFirst, mGroups[0].recordings},
                        {found.figures->recordings - inFirst, mGroups[1].recordings}}};
    compared.interval = statistics::newcombe(compared.shares[0], compared.shares[1]);
    compared.p = statistics::fisher(compared.shares[0], compared.shares[1]);
    return compared;
}

void Comparison::adjust() {
    std::vector<double> p;
    for (const compared_pattern& pattern : mPatterns)
        p.push_back(pattern.p);
    const std::vector<double> q = statistics::benjamini_hochberg(p);
    for (std::size_t i = 0; i < q.size(); ++i)
        mPatterns[i].q = q[i];
}

QString Comparison::leftOut() const {
    return left_out(mFindings.patternCount(), static_cast<int>(mPatterns.size()));
}

QStringList Comparison::warnings() const {
    QStringList warnings;
    for (const group& group : mGroups) {
        if (group.recordings < FEW)
            warnings += QStringLiteral("%1 has only %2 recording%3; so few show no more than large "
                                       "differences")
                            .arg(group.name)
                            .arg(group.recordings)
                            .arg(group.recordings == 1 ? QString() : QStringLiteral("s"));
    }
    return warnings;
}

} // namespace report
