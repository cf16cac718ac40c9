#include "report/reportmerger.h"

#include "collections/sharedvalues.h"
#include "domain/domainrunhash.h"

#include <algorithm>
#include <functional>
#include <new>

namespace report {

namespace {

void require(bool hasMemory) {
    if (!hasMemory)
        throw std::bad_alloc();
}

/// Adds places of a later log, whose recordings are numbered on.
void addPlaces(domain::pattern_figures& to, const domain::pattern_figures& from, int before) {
    auto free = std::find(to.places.begin(), to.places.end(), domain::place());
    for (const domain::place& place : from.places) {
        if (place.recording > 0 && free != to.places.end())
            *free++ = {before + place.recording, place.event};
    }
}

/// All patterns, by where their sequences stand in memory.
std::vector<domain::Pattern*> byPlace(const domain::Nest& nest) {
    std::vector<domain::Pattern*> patterns;
    for (int i = 0; i < nest.size(); ++i) {
        const domain::Branch* branch = nest.branchAt(i);
        if (!branch)
            continue;
        for (domain::Pattern* pattern : branch->mPatterns)
            patterns.push_back(pattern);
    }
    std::sort(patterns.begin(), patterns.end(),
              [](const domain::Pattern* a, const domain::Pattern* b) {
                  return std::less<>()(a->run().data(), b->run().data());
              });
    return patterns;
}

} // namespace

std::size_t Merger::run_hash::operator()(const domain::Pattern* pattern) const {
    return domain::RunHash::of(pattern->run());
}

void Merger::add(Log& part) {
    mRecordingsBefore = mWhole.recordings;
    addTotals(part);
    addKeys(part);
    if (!mHasSameIndices)
        renameIn(part.nest);
    std::size_t next = 0;
    for (int i = 0; i < part.nest.size(); ++i) {
        domain::Branch* branch = part.nest.branchAt(i);
        if (!branch || !branch->isValid())
            continue;
        const auto at = static_cast<std::size_t>(i);
        addEvents(mPlaces[at], *branch, part.figures.keys[at]);
        while (branch->hasPatterns())
            addFront(branch->mPatterns, part.figures.patterns[next++]);
    }
}

void Merger::addTotals(const Log& part) {
    if (!mNames.contains(part.path))
        mNames += part.path;
    for (const QString& fault : part.faults) {
        if (!mWhole.faults.contains(fault))
            mWhole.faults += fault;
    }
    mWhole.complete = mWhole.complete && part.complete;
    mWhole.recordings += part.recordings;
    mWhole.events += part.events;
    mWhole.longestRun = std::max(mWhole.longestRun, part.longestRun);
}

/// New keys get the next indices, in the part's order, which is that of their first appearance.
void Merger::addKeys(const Log& part) {
    mPlaces.clear();
    mHasSameIndices = true;
    for (const QString& key : part.keys) {
        const auto [known, isNew] = mIndices.try_emplace(key, mWhole.nest.size());
        if (isNew) {
            require(mWhole.nest.addSlot());
            mWhole.keys.push_back(key);
            mWhole.figures.keys.emplace_back();
        }
        mHasSameIndices = mHasSameIndices && known->second == static_cast<int>(mPlaces.size());
        mPlaces.push_back(known->second);
    }
}

/// From the part's indices to the whole's. What were pieces of one trace are pieces of one again,
/// which is most of the memory.
void Merger::renameIn(domain::Nest& nest) const {
    std::vector<domain::Pattern*> left = byPlace(nest);
    for (auto first = left.begin(); first != left.end();) {
        const int* const begin = (*first)->run().data();
        const int* end = begin;
        auto last = first;
        for (; last != left.end() && (last == first || (*last)->run().data() < end); ++last)
            end = std::max(end, (*last)->run().data() + (*last)->run().size());
        std::vector<int> renamed(begin, end);
        for (int& index : renamed)
            index = mPlaces[static_cast<std::size_t>(index)];
        SharedValues<int> trace;
        require(trace.setTo(renamed));
        for (; first != last; ++first) {
            const std::span<const int> run = (*first)->run();
            (*first)->mSequence.referTo(trace, static_cast<int>(run.data() - begin),
                                        static_cast<int>(run.size()));
        }
    }
}

void Merger::addEvents(int index, const domain::Branch& branch,
                       const domain::key_figures& figures) {
    domain::Branch events;
    events.mKey = branch.mKey;
    events.mGesture = branch.mGesture;
    events.mBounds = branch.mBounds;
    require(mWhole.nest.merge(index, events));
    domain::key_figures& whole = mWhole.figures.keys[static_cast<std::size_t>(index)];
    whole.events += figures.events;
    whole.recordings += figures.recordings;
}

/// Adds the first of a part's patterns, and takes it away there.
void Merger::addFront(domain::PatternList& patterns, const domain::pattern_figures& figures) {
    domain::Pattern* pattern = patterns.front();
    const auto [known, isNew] = mKnown.try_emplace(pattern, mFigures.size());
    if (isNew) {
        const int anchor = pattern->run()[0];
        ManagedList<domain::Pattern*>& to = mWhole.nest.branchAt(anchor)->mPatterns;
        patterns.moveFrontTo(mMoving);
        mMoving.moveTo(to);
        mFigures.push_back({figures, anchor});
        mFigures.back().figures.places = {};
    } else {
        patterns.popFront();
        known->first->mCount += figures.recordings;
        mFigures[known->second].figures.occurrences += figures.occurrences;
        mFigures[known->second].figures.recordings += figures.recordings;
    }
    addPlaces(mFigures[known->second].figures, figures, mRecordingsBefore);
}

void Merger::finish() {
    mWhole.path = mNames.join(QStringLiteral(" + "));
    if (mWhole.events > 0)
        mWhole.faults.removeAll(NO_EVENT);
    mWhole.figures.patterns = domain::in_nest_order(mFigures, mWhole.nest);
}

} // namespace report
