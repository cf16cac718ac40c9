// Holds the search for repeated runs against its plain rules: the same patterns on the same
// branches in the same order.

#include "domain/domaincyclebuilderiterative.h"
#include "fuzz/fuzzinput.h"
#include "fuzz/fuzztarget.h"
#include "fuzz/plain/plaincyclebuilder.h"
#include "tests/common/describe.h"

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

std::vector<std::string> plainPatterns(PlainCycleBuilder plain, int branches) {
    std::vector<std::string> texts(static_cast<std::size_t>(branches));
    domain::Pattern pattern;
    for (const auto& [index, patterns] : plain.run()) {
        std::string& text = texts[static_cast<std::size_t>(index)];
        for (const auto& found : patterns) {
            model::fill(pattern, found.sequence, found.count);
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

} // namespace

/// The number of keys, which of them are menus, and the trace.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static domain::CycleBuilderIterative builder; // one for all: nothing may be left over
    fuzz::Input input(data, size);
    const int keys = 1 + input.below(MOST_KEYS);
    const int menuChoice = input.byte();
    std::vector<int> indices;
    while (!input.isUsedUp() && indices.size() < LONGEST_TRACE)
        indices.push_back(input.below(keys));

    domain::Nest nest;
    domain::Trace trace;
    model::fill(nest, trace, indices);
    const std::set<int> menus = chooseMenus(nest, menuChoice);
    fuzz::require(builder.begin(nest, trace), "a short trace can be prepared");
    builder.run();
    fuzz::requireSame(joined(patternsOf(nest)),
                      joined(plainPatterns(PlainCycleBuilder(indices, menus), nest.size())));
    return 0;
}
