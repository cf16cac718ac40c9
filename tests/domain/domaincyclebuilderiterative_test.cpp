#include "domain/domaincyclebuilderiterative.h"
#include "tests/common/describe.h"

#include <gmock/gmock.h>

#include <set>
#include <string>
#include <vector>

namespace {

using domain::CycleBuilderIterative;
using testing::ElementsAre;

/// The nest of `indices` after a whole run; the branches of `menus` are menu branches.
void analyse(domain::Nest& nest, const std::vector<int>& indices, const std::set<int>& menus = {}) {
    domain::Trace trace;
    model::fill(nest, trace, indices);
    for (const int menu : menus) {
        if (domain::Branch* branch = nest.branchAt(menu))
            branch->mGesture = domain::GESTURE_MENU;
    }
    CycleBuilderIterative builder;
    ASSERT_TRUE(builder.begin(nest, trace));
    builder.run();
}

std::vector<std::string> patternsOf(const domain::Nest& nest) {
    std::vector<std::string> texts;
    for (int i = 0; i < nest.size(); ++i)
        texts.push_back(model::describe(nest.branchAt(i)->mPatterns));
    return texts;
}

TEST(CycleBuilder, FindsTheRunsOfSmallTraces) {
    const struct {
        const char* name;
        std::vector<int> trace;
        std::set<int> menus;
        std::vector<std::string> patterns; ///< By branch.
    } rows[] = {
        {"empty", {}, {}, {}},
        {"two events", {0, 0}, {}, {""}},
        {"immediate repeats", {0, 0, 0}, {}, {""}},
        {"there and back", {1, 0, 1}, {}, {"", "1,0,1x0"}},
        {"overlapping and nested", {0, 1, 0, 1, 0}, {}, {"0,1,0x1 0,1,0,1,0x0", "1,0,1x0"}},
        {"a menu branch stores nothing", {0, 1, 2, 0, 1}, {1}, {"0,1,2,0x0", "", ""}},
        {"a repeat at once spoils the longer run", {0, 0, 1, 0}, {}, {"0,1,0x0", ""}},
        // The pass for 3 jumps from 0 over the collapsed step to 2: the run 1,0,2,1 is never tried.
        {"a menu branch collapses", {0, 1, 0, 2, 1, 3}, {0}, {"", "", "", ""}},
        {"a distance of 5 is too far for 47 events", {0, 1, 2, 3, 4, 0}, {}, {"", "", "", "", ""}},
    };

    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        domain::Nest nest;
        analyse(nest, row.trace, row.menus);
        EXPECT_EQ(patternsOf(nest), row.patterns);
    }
}

TEST(CycleBuilder, CollapsesARunThatItCannotStore) {
    domain::Nest nest;
    domain::Trace trace;
    model::fill(nest, trace, {0, 1, 0, 1, 0});
    domain::Nest none; // no branch for any index
    CycleBuilderIterative builder;
    ASSERT_TRUE(builder.begin(none, trace));
    builder.run(2);
    EXPECT_TRUE(builder.isCycle(0, 4)); // only because the 0 between is collapsed
    builder.run();
    EXPECT_EQ(none.size(), 0);
}

TEST(CycleBuilder, SharesTheTraceAmongItsPatternsUntilOneChanges) {
    domain::Nest nest;
    analyse(nest, {0, 1, 0, 1, 0});
    domain::PatternList& patterns = nest.branchAt(0)->mPatterns;
    const domain::Pattern& shorter = *patterns.at(0);
    const domain::Pattern& longer = *patterns.at(1);
    EXPECT_EQ(shorter.run().data(), longer.run().data());
    domain::Pattern copy;
    copy = longer;
    EXPECT_EQ(copy.run().data(), longer.run().data());
    patterns.at(0)->mSequence[1] = 7;
    EXPECT_EQ(model::describe(patterns), "0,7,0x1 0,1,0,1,0x0");
}

TEST(CycleBuilder, StoresNoRunThroughANegativeIndex) {
    domain::Nest nest;
    domain::Trace trace;
    model::fill(nest, trace, {0});
    for (const int index : {-1, 0, -1})
        trace.mIndices.add(index);
    CycleBuilderIterative builder;
    ASSERT_TRUE(builder.begin(nest, trace));
    builder.run();
    EXPECT_FALSE(nest.branchAt(0)->hasPatterns());
}

} // namespace
