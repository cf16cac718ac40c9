#include "import/importnames.h"

#include "import/importtext.h"

#include <algorithm>

namespace import {

namespace {

constexpr std::array<std::string_view, 8> TEST_IDS{
    "data-name", "data-testid", "data-test-id", "data-test",
    "data-cy",   "data-qa",     "data-attr",    "data-dd-action-name"};
constexpr std::size_t LONG_HEX = 8;
constexpr std::size_t SHORT_HASH = 5;

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

bool isHex(char c) {
    return isDigit(c) || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F');
}

/// A run of hexadecimal digits that holds both digits and letters, or digits alone.
bool isHash(std::string_view part) {
    return std::all_of(part.begin(), part.end(), isHex) &&
           std::any_of(part.begin(), part.end(), isDigit);
}

/// "css-1q2w3e": letters and digits mixed behind a dash or underscore.
bool isMixed(std::string_view part) {
    int changes = 0;
    for (std::size_t i = 1; i < part.size(); ++i)
        changes += isDigit(part[i]) != isDigit(part[i - 1]) ? 1 : 0;
    return part.size() >= SHORT_HASH && changes >= 2;
}

/// ":r1a:" and "radix-:r1a:".
bool isNumbered(std::string_view name) {
    const std::size_t from = name.find(":r");
    return from != std::string_view::npos && name.find(':', from + 1) != std::string_view::npos;
}

bool hasUnstablePart(std::string_view name) {
    constexpr std::string_view BORDERS = "-_.:";
    while (!name.empty()) {
        const std::size_t end = std::min(name.find_first_of(BORDERS), name.size());
        const std::string_view part = name.substr(0, end);
        if ((part.size() >= LONG_HEX && isHash(part)) || isMixed(part))
            return true;
        name.remove_prefix(std::min(end + 1, name.size()));
    }
    return false;
}

std::string withoutDigits(const std::string& name) {
    std::string text;
    for (std::size_t i = 0; i < name.size(); ++i) {
        if (!isDigit(name[i]))
            text += name[i];
        else if (i == 0 || !isDigit(name[i - 1]))
            text += '#';
    }
    return text;
}

bool hidesDigits(Named named) {
    return named == Named::Id || named == Named::Name || named == Named::Path;
}

bool canBeUnstable(Named named) {
    return named == Named::Id || named == Named::Name;
}

} // namespace

bool is_unstable(std::string_view name) {
    const auto digits = std::count_if(name.begin(), name.end(), isDigit);
    return 2 * digits > static_cast<std::ptrdiff_t>(name.size()) || isNumbered(name) ||
           hasUnstablePart(name);
}

chosen_name choose_name(const element_names& names, const naming& naming) {
    for (const Named named : naming.order) {
        const std::string_view name = names[static_cast<std::size_t>(named)];
        if (name.empty() || (canBeUnstable(named) && is_unstable(name)))
            continue;
        std::string text = cleaned(name);
        if (hidesDigits(named) && !naming.keepsDigits)
            text = withoutDigits(text);
        if (!text.empty())
            return {text, named};
    }
    return {};
}

bool is_test_id(std::string_view attribute, const naming& naming) {
    return std::find(naming.testIds.begin(), naming.testIds.end(), attribute) !=
               naming.testIds.end() ||
           std::find(TEST_IDS.begin(), TEST_IDS.end(), attribute) != TEST_IDS.end();
}

} // namespace import
