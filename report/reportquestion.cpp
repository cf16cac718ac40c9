#include "report/reportquestion.h"

#include "report/reportlog.h"
#include "report/reportloops.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <span>
#include <unordered_set>
#include <utility>

namespace report {

namespace {

using Accept = std::function<bool(const found_pattern&)>;

int leastRecordings(const question& question, const Log& log) {
    const double least =
        question.ofAll ? question.minRecordings * log.recordings / 100 : question.minRecordings;
    return static_cast<int>(std::ceil(least));
}

/// Of each index whether its key is one of those.
std::vector<bool> keysLike(const QRegularExpression& glob, const std::vector<key_findings>& keys) {
    std::vector<bool> like;
    like.reserve(keys.size());
    for (const key_findings& key : keys)
        like.push_back(key.branch->isValid() && glob.match(key.branch->mKey).hasMatch());
    return like;
}

bool passes(const domain::Pattern& pattern, const std::vector<bool>& like) {
    const std::span<const int> run = pattern.run();
    return std::any_of(run.begin(), run.end(),
                       [&](int index) { return like[static_cast<std::size_t>(index)]; });
}

void keep(std::vector<key_findings>& keys, const Accept& accept) {
    for (key_findings& key : keys)
        std::erase_if(key.patterns, [&](const found_pattern& found) { return !accept(found); });
}

void filter(const question& question, const Log& log, std::vector<key_findings>& keys) {
    const int recordings = leastRecordings(question, log);
    keep(keys, [&](const found_pattern& found) {
        const int length = found.pattern->mSequence.size();
        return found.pattern->mCount >= question.minCount &&
               found.figures->occurrences >= question.minOccurrences &&
               found.figures->recordings >= recordings && length >= question.minLength &&
               length <= question.maxLength;
    });
    for (const QRegularExpression& glob : question.through) {
        const std::vector<bool> like = keysLike(glob, keys);
        keep(keys, [&](const found_pattern& found) { return passes(*found.pattern, like); });
    }
}

void takeFirst(std::vector<key_findings>& keys, Measure measure, int count) {
    Patterns all;
    for (const key_findings& key : keys)
        all.insert(all.end(), key.patterns.begin(), key.patterns.end());
    all = sorted(std::move(all), measure);
    std::unordered_set<const domain::Pattern*> first;
    for (const found_pattern& found : all) {
        if (static_cast<int>(first.size()) < count)
            first.insert(found.pattern);
    }
    keep(keys, [&](const found_pattern& found) { return first.contains(found.pattern); });
}

} // namespace

bool is_asked(const question& question) {
    return question.minCount > 0 || question.minOccurrences > 0 || question.minRecordings > 0 ||
           question.minLength > 0 || question.maxLength < std::numeric_limits<int>::max() ||
           !question.through.empty() || question.loopsOnce || is_sorted(question);
}

bool is_sorted(const question& question) {
    return question.sort || question.top > 0;
}

Measure order_of(const question& question) {
    return question.sort.value_or(Measure::Count);
}

void choose(const question& question, const Log& log, std::vector<key_findings>& keys) {
    filter(question, log, keys);
    if (question.loopsOnce)
        list_loops_once(keys);
    if (is_sorted(question)) {
        for (key_findings& key : keys)
            key.patterns = sorted(std::move(key.patterns), order_of(question));
    }
    if (question.top > 0)
        takeFirst(keys, order_of(question), question.top);
}

} // namespace report
