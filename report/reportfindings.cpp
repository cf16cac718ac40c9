#include "report/reportfindings.h"

#include <algorithm>

namespace report {

namespace {

const domain::Branch FREE; // stands for a slot that could not be filled

} // namespace

Findings::Findings(const Log& log)
    : mLog(log) {
    mKeys.reserve(static_cast<std::size_t>(log.nest.size()));
    for (int i = 0; i < log.nest.size(); ++i) {
        const domain::Branch* branch = log.nest.branchAt(i);
        add(i, branch ? *branch : FREE);
    }
}

void Findings::add(int index, const domain::Branch& branch) {
    key_findings key{index, &branch, {}};
    for (const domain::Pattern* pattern : branch.mPatterns)
        key.patterns.push_back(pattern);
    mKeyCount += branch.isValid() ? 1 : 0;
    mPatternCount += static_cast<int>(key.patterns.size());
    mKeys.push_back(std::move(key));
}

std::vector<const key_findings*> Findings::ranked() const {
    struct entry {
        int rank;
        const key_findings* key;
    };

    std::vector<entry> entries;
    for (const key_findings& key : mKeys) {
        if (!key.patterns.empty())
            entries.push_back({key.branch->maxPatternCount(), &key});
    }
    std::stable_sort(entries.begin(), entries.end(),
                     [](const entry& a, const entry& b) { return a.rank > b.rank; });
    std::vector<const key_findings*> keys;
    keys.reserve(entries.size());
    for (const entry& e : entries)
        keys.push_back(e.key);
    return keys;
}

QString Findings::keyAt(int index) const {
    const domain::Branch* branch = mLog.nest.branchAt(index);
    return branch ? branch->mKey : QString();
}

Patterns most_frequent_first(Patterns patterns) {
    std::stable_sort(patterns.begin(), patterns.end(),
                     [](const auto* a, const auto* b) { return a->mCount > b->mCount; });
    return patterns;
}

} // namespace report
