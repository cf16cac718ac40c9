#include "import/importlocator.h"

#include "import/importtext.h"

#include <algorithm>

namespace import {

namespace {

constexpr std::array<std::string_view, 6> LABELS{"button", "a", "option", "summary", "th", "label"};
constexpr std::array<std::string_view, 13> LABEL_ROLES{
    "button",        "link",     "tab",      "menuitem",     "menuitemcheckbox",
    "menuitemradio", "option",   "treeitem", "columnheader", "rowheader",
    "switch",        "checkbox", "radio"};

template <std::size_t Size>
bool holds(const std::array<std::string_view, Size>& names, std::string_view name) {
    return std::find(names.begin(), names.end(), name) != names.end();
}

bool isNameCharacter(char c) {
    return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '-' ||
           c == '_' || static_cast<unsigned char>(c) >= 0x80;
}

/// The name at the front of `text`, taken off it; a backslash lets any character join.
std::string takeName(std::string_view& text) {
    std::string name;
    while (!text.empty() &&
           (isNameCharacter(text.front()) || (text.front() == '\\' && text.size() > 1))) {
        text.remove_prefix(text.front() == '\\' ? 1 : 0);
        name += text.front();
        text.remove_prefix(1);
    }
    return name;
}

/// Without quotes around it.
std::string_view unquoted(std::string_view text) {
    if (text.size() > 1 && (text.front() == '"' || text.front() == '\'') &&
        text.back() == text.front())
        return text.substr(1, text.size() - 2);
    return text;
}

/// Where the bracket that opens at `from` closes, quotes passed over; the end where it does not.
std::size_t closing(std::string_view text, std::size_t from) {
    char quote = '\0';
    for (std::size_t at = from; at < text.size(); ++at) {
        const char c = text[at];
        if (quote != '\0')
            quote = c == quote ? '\0' : quote;
        else if (c == '"' || c == '\'')
            quote = c;
        else if (c == ']')
            return at;
    }
    return text.size();
}

/// What follows the last border outside of brackets and quotes.
std::string_view lastOf(std::string_view text, std::string_view borders) {
    std::size_t from = 0;
    for (std::size_t at = 0; at < text.size(); ++at) {
        if (text[at] == '[')
            at = closing(text, at);
        else if (borders.find(text[at]) != std::string_view::npos)
            from = at + 1;
    }
    return text.substr(std::min(from, text.size()));
}

} // namespace

void Locator::keep(Named source, std::string_view name) {
    std::string& kept = mNames[static_cast<std::size_t>(source)];
    if (kept.empty())
        kept = name;
}

void Locator::addAttribute(std::string_view attribute, std::string_view value,
                           const naming& naming) {
    if (is_test_id(attribute, naming))
        keep(Named::Test, value);
    else if (attribute == "aria-label")
        keep(Named::Aria, value);
    else if (attribute == "id")
        keep(Named::Id, value);
    else if (attribute == "name")
        keep(Named::Name, value);
    else if (attribute == "title" || attribute == "alt" || attribute == "placeholder")
        keep(Named::Title, value);
    else if (attribute == "role")
        mRole = value;
}

void Locator::addCss(std::string_view selector, const naming& naming) {
    std::string_view rest = lastOf(selector, " >+~");
    const std::string tag = takeName(rest);
    if (mTag.empty())
        mTag = tag;
    while (!rest.empty()) {
        const char mark = rest.front();
        rest.remove_prefix(1);
        if (mark == '#')
            keep(Named::Id, takeName(rest));
        else if (mark == '[') {
            const std::size_t end = closing(rest, 0);
            std::string_view inside = rest.substr(0, end);
            const std::string attribute = takeName(inside);
            inside.remove_prefix(std::min(inside.find('=') + 1, inside.size()));
            addAttribute(attribute, unquoted(inside), naming);
            rest.remove_prefix(std::min(end + 1, rest.size()));
        }
    }
    addPath(selector);
}

void Locator::addXPath(std::string_view path, const naming& naming) {
    const std::string_view step = lastOf(path, "/");
    std::string_view rest = step;
    const std::string tag = takeName(rest);
    if (mTag.empty())
        mTag = tag;
    const std::size_t at = rest.find('@');
    if (at != std::string_view::npos) {
        rest.remove_prefix(at + 1);
        const std::string attribute = takeName(rest);
        const std::size_t end = closing(rest, 0);
        addAttribute(attribute,
                     unquoted(rest.substr(std::min<std::size_t>(1, end),
                                          end - std::min<std::size_t>(1, end))),
                     naming);
    }
    addPath(path);
}

void Locator::addAria(std::string_view name, std::string_view role) {
    keep(Named::Aria, name);
    if (mRole.empty())
        mRole = role;
}

void Locator::addLinkText(std::string_view text) {
    if (mTag.empty())
        mTag = "a";
    keep(Named::Text, text);
}

bool Locator::hasLabelText() const {
    return mRole.empty() ? holds(LABELS, mTag) : holds(LABEL_ROLES, mRole);
}

void Locator::addPath(std::string_view path) {
    std::string shown;
    char quote = '\0';
    for (const char c : path) {
        if (quote != '\0')
            quote = c == quote ? '\0' : quote;
        else if (c == '"' || c == '\'')
            quote = c;
        else
            shown += c;
    }
    keep(Named::Path, shown);
}

chosen_name Locator::choose(const naming& naming, WrittenTexts& typed) const {
    element_names found{};
    for (std::size_t i = 0; i < found.size(); ++i) {
        if (!typed.isRepeatedBy(mNames[i]))
            found[i] = mNames[i];
    }
    if (!mTrustsText && !hasLabelText())
        name_from(found, Named::Text) = {};
    chosen_name name = choose_name(found, naming);
    if (name.text.empty())
        name.text = cleaned(mRole.empty() ? mTag : mRole);
    return name;
}

} // namespace import
