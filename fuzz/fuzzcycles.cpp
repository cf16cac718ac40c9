// Holds the search for repeated runs against its plain rules: the same patterns on the same
// branches in the same order.

#include "domain/domaincyclebuilderiterative.h"
#include "fuzz/fuzzinput.h"
#include "fuzz/fuzztarget.h"
#include "fuzz/plain/plaincyclebuilder.h"
#include "tests/common/describe.h"

#include <algorithm>
#include <map>
#include <set>
#include <string>
#include <vector>

namespace {

constexpr std::size_t LONGEST_TRACE = 200; // the plain form needs time
constexpr int MOST_KEYS = 24;

/// Makes menus of some branches.
std::set<int> chooseMenus(domain::Nest& nest, int choice) {
    std::set<int> menus;
    for (int index = 0; index < nest.size(); ++index) {
        if ((choice >> index % 8) % 2 == 0)
            continue;
        nest.branchAt(index)->mGesture = domain::GESTURE_MENU;
        menus.insert(index);
    }
    return menus;
}

std::vector<std::string> patternsOf(const domain::Nest& nest) {
    std::vector<std::string> texts(static_cast<std::size_t>(nest.size()));
    for (int i = 0; i < nest.size(); ++i)
        texts[static_cast<std::size_t>(i)] = model::describe(nest.branchAt(i)->mPatterns);
    return texts;
}

using Found = std::map<int, std::vector<PlainCycleBuilder::found>>;

std::vector<std::string> textsOf(const Found& found, int branches) {
    std::vector<std::string> texts(static_cast<std::size_t>(branches));
    domain::Pattern pattern;
    for (const auto& [index, patterns] : found) {
        std::string& text = texts[static_cast<std::size_t>(index)];
        for (const auto& [sequence, count] : patterns) {
            model::fill(pattern, sequence, count);
            text += (text.empty() ? "" : " ") + model::describe(pattern);
        }
    }
    return texts;
}

std::string joined(const std::vector<std::string>& lines) {
    std::string text;
    for (const std::string& line : lines)
        text += line + '\n';
    return text;
}

/// Some passes in any order, then all of a whole run. `run` itself may come to the end of its time
/// budget where the fuzzer is kept waiting.
Found search(domain::CycleBuilderIterative& builder, PlainCycleBuilder& plain, int choice,
             int length) {
    for (; choice > 0; choice /= 4) {
        const int distance = 2 + choice % (length / 4 + 3);
        builder.run(distance);
        plain.pass(distance);
    }
    for (int distance = 2; distance < std::max(length / 8, 5); ++distance)
        builder.run(distance);
    return plain.run();
}

} // namespace

/// The number of keys, which of them are menus, passes ahead of the run, and the trace.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static domain::CycleBuilderIterative builder; // one for all: nothing may be left over
    fuzz::Input input(data, size);
    const int keys = 1 + input.below(MOST_KEYS);
    const int menuChoice = input.byte();
    const int passChoice = input.below(4) == 0 ? input.byte() : 0;
    std::vector<int> indices;
    while (!input.isUsedUp() && indices.size() < LONGEST_TRACE)
        indices.push_back(input.below(keys));

    domain::Nest nest;
    domain::Trace trace;
    model::fill(nest, trace, indices);
    const std::set<int> menus = chooseMenus(nest, menuChoice);
    fuzz::require(builder.begin(nest, trace), "a short trace can be prepared");
    PlainCycleBuilder plain(indices, menus);
    const Found found = search(builder, plain, passChoice, trace.mIndices.size());
    fuzz::requireSame(joined(patternsOf(nest)), joined(textsOf(found, nest.size())));
    return 0;
}
