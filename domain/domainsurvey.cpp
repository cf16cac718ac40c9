#include "domain/domainsurvey.h"

#include <algorithm>
#include <utility>

namespace domain {

namespace {

/// Whether the recording hands the branch on to the result.
bool isHandedOn(const Nest& nest, int index) {
    const Branch* branch = nest.branchAt(index);
    return branch && branch->mGesture != GESTURE_NONE;
}

/// True once for each recording.
bool isFirstIn(int recording, int& latest) {
    return std::exchange(latest, recording) != recording;
}

} // namespace

Survey::Survey() {
    cycleBuilder().noteFinds(&mFinds);
}

void Survey::on(Nest& nest, const Trace& trace) {
    mFinds.clear();
    Blackboard::on(nest, trace);
    ++mRecordings;
    countKeys(nest, trace);
    for (const find& find : mFinds) {
        const int anchor = trace.mIndices[find.first];
        if (isHandedOn(nest, anchor))
            countFind(find, anchor);
    }
}

void Survey::countKeys(const Nest& nest, const Trace& trace) {
    mKeys.resize(std::max(mKeys.size(), static_cast<std::size_t>(nest.size())));
    for (const int index : trace.mIndices) {
        if (index >= nest.size())
            continue;
        seen_key& key = mKeys[static_cast<std::size_t>(index)];
        if (isFirstIn(mRecordings, key.latest)) {
            key.isHandedOn = isHandedOn(nest, index);
            key.recordings += key.isHandedOn ? 1 : 0;
        }
        key.events += key.isHandedOn ? 1 : 0;
    }
}

void Survey::countFind(const find& find, int anchor) {
    anchored_figures& pattern = patternOf(find, anchor);
    pattern_figures& figures = pattern.figures;
    if (figures.occurrences < static_cast<int>(figures.places.size()))
        figures.places[static_cast<std::size_t>(figures.occurrences)] = {mRecordings,
                                                                         find.first + 1};
    ++figures.occurrences;
    figures.recordings += isFirstIn(mRecordings, pattern.latest) ? 1 : 0;
}

/// Runs of one hash are taken for the same; if two were not, `figures` would notice.
anchored_figures& Survey::patternOf(const find& find, int anchor) {
    const auto number = static_cast<std::size_t>(mNumbers.of(find.hash));
    if (number == mPatterns.size())
        mPatterns.push_back({{}, anchor, 0});
    return mPatterns[number];
}

Figures Survey::figures(const Nest& nest) const {
    Figures figures;
    figures.patterns = in_nest_order(mPatterns, nest);
    figures.keys.assign(mKeys.begin(), mKeys.end());
    figures.keys.resize(static_cast<std::size_t>(nest.size()));
    return figures;
}

} // namespace domain
