#include "domain/domainnestreader.h"
#include "domain/domainsurvey.h"
#include "fuzz/plain/plaincyclebuilder.h"

#include <gtest/gtest.h>

#include <map>
#include <random>
#include <set>

namespace {

using Recording =
    std::vector<int>; // keys in the order of their presses; negative ones are releases

constexpr int FIRST_MENU = 6;

/// Figures by keys in the place of indices, of what has any.
struct tally {
    std::map<int, domain::key_figures> keys;
    std::map<std::vector<int>, domain::pattern_figures> runs;
};

/// The finds of one recording by the plain rules.
class Finds : public PlainCycleBuilder {
public:
    explicit Finds(const std::vector<int>& trace)
        : PlainCycleBuilder(trace, {FIRST_MENU, FIRST_MENU + 1}) {}

    std::map<std::vector<int>, std::vector<int>> mBegins;

protected:
    void merge(int /*branch*/, const std::vector<int>& sequence) override {
        mBegins[sequence].push_back(mFirst);
    }
};

tally plainTally(const std::vector<Recording>& recordings) {
    tally tally;
    int number = 0;
    for (const Recording& recording : recordings) {
        number += recording.empty() ? 0 : 1;
        std::vector<int> trace;
        std::copy_if(recording.begin(), recording.end(), std::back_inserter(trace),
                     [](int key) { return key >= 0; });
        for (const int key : trace)
            ++tally.keys[key].events;
        for (const int key : std::set<int>(trace.begin(), trace.end()))
            ++tally.keys[key].recordings;
        Finds finds(trace);
        finds.run();
        for (const auto& [run, begins] : finds.mBegins) {
            domain::pattern_figures& figures = tally.runs[run];
            ++figures.recordings;
            for (const int begin : begins) {
                if (figures.occurrences++ < 3)
                    figures.places.at(static_cast<std::size_t>(figures.occurrences - 1)) = {
                        number, begin + 1};
            }
        }
    }
    return tally;
}

void give(domain::NestReader& reader, const Recording& recording) {
    reader.beginRecording();
    for (const int key : recording) {
        domain::Branch event;
        event.mKey = QString::number(key < 0 ? -key - 1 : key);
        const int press = key >= FIRST_MENU ? domain::GESTURE_MENU : domain::GESTURE_DOWN;
        event.mGesture = key < 0 ? domain::GESTURE_UP : press;
        reader.addBranch(event);
    }
    reader.endRecording();
}

tally tallyOf(const std::vector<Recording>& recordings) {
    domain::Survey survey;
    domain::NestReader reader(survey);
    domain::Nest nest;
    reader.begin(nest);
    for (const Recording& recording : recordings)
        give(reader, recording);
    const domain::Figures figures = survey.figures(nest);
    const auto keyAt = [&](int index) { return nest.branchAt(index)->mKey.toInt(); };
    tally tally;
    auto next = figures.patterns.begin();
    for (int i = 0; i < nest.size(); ++i) {
        if (figures.keys[static_cast<std::size_t>(i)].events > 0)
            tally.keys[keyAt(i)] = figures.keys[static_cast<std::size_t>(i)];
        for (const domain::Pattern* pattern : nest.branchAt(i)->mPatterns) {
            std::vector<int> run;
            for (const int index : pattern->run())
                run.push_back(keyAt(index));
            tally.runs[run] = *next++;
        }
    }
    return tally;
}

TEST(Survey, AgreesWithPlainRulesOnRandomLogs) {
    std::mt19937 rng(13);
    const auto below = [&](int limit) {
        return static_cast<int>(rng() % static_cast<unsigned>(limit));
    };
    for (int log = 0; log < 300; ++log) {
        const int keys = 2 + below(FIRST_MENU);
        std::vector<Recording> recordings(static_cast<std::size_t>(below(8)));
        for (Recording& recording : recordings) {
            for (int events = below(90); events > 0; --events)
                recording.push_back(below(9) == 0 ? -1 - below(FIRST_MENU) : below(keys));
        }
        const tally found = tallyOf(recordings);
        const tally plain = plainTally(recordings);
        ASSERT_EQ(found.keys, plain.keys) << log;
        ASSERT_EQ(found.runs, plain.runs) << log;
    }
}

} // namespace
