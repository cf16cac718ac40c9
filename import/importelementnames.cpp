#include "import/importelementnames.h"

#include "import/importtext.h"

#include <algorithm>
#include <array>

namespace import {

namespace {

using Node = NodeTree::Node;
using Kind = NodeTree::Kind;

constexpr Node NONE = NodeTree::NONE;
constexpr int MENU_PARENTS = 3;
constexpr int PATH_PARENTS = 2;
constexpr int FARTHEST = 1000;             // ancestors that are asked for a name
constexpr std::size_t MOST_TEXT = 40;      // characters
constexpr std::size_t LONGEST_TEXT = 1000; // bytes
constexpr int MOST_TEXT_NODES = 1000;      // looked at for a text, in an element of many

template <std::size_t SIZE>
bool isOneOf(std::string_view name, const std::array<std::string_view, SIZE>& names) {
    return std::find(names.begin(), names.end(), name) != names.end();
}

constexpr std::array<std::string_view, 8> INTERACTIVE{"button",   "a",       "input",  "select",
                                                      "textarea", "summary", "option", "label"};
constexpr std::array<std::string_view, 17> INTERACTIVE_ROLES{
    "button",   "link",      "tab",      "switch",           "checkbox",      "radio",
    "menuitem", "option",    "treeitem", "menuitemcheckbox", "menuitemradio", "combobox",
    "textbox",  "searchbox", "slider",   "columnheader",     "rowheader"};

/// Whose text is their label.
constexpr std::array<std::string_view, 9> WITH_TEXT{
    "button",           "link",          "tab",          "menuitem", "option",
    "menuitemcheckbox", "menuitemradio", "columnheader", "rowheader"};

/// Whose texts are no label, besides those of fields.
constexpr std::array<std::string_view, 5> WITHOUT_TEXT{"select", "datalist", "style", "script",
                                                       "noscript"};

constexpr std::array<std::string_view, 3> BUTTONS{"button", "submit", "reset"};

bool isButtonLike(std::string_view tag, std::string_view type) {
    return tag == "input" && isOneOf(type, BUTTONS);
}

/// Also what is of blanks alone.
bool isMask(std::string_view text) {
    return text.find_first_not_of("* \t\r\n") == std::string_view::npos;
}

bool isStars(std::string_view text) {
    return isMask(text) && text.find('*') != std::string_view::npos;
}

/// Up to the character that is one too many.
std::string_view shortened(std::string_view text, std::size_t most) {
    std::size_t characters = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool begins = (static_cast<unsigned char>(text[i]) & 0xc0) != 0x80;
        if (begins && characters++ == most)
            return text.substr(0, i);
    }
    return text;
}

std::string withoutSpareBlanks(std::string_view text) {
    std::string shown;
    for (const char c : text) {
        const bool isBlank = c == ' ' || (c >= '\t' && c <= '\r');
        if (!isBlank)
            shown += c;
        else if (!shown.empty() && shown.back() != ' ')
            shown += ' ';
    }
    if (!shown.empty() && shown.back() == ' ')
        shown.pop_back();
    return shown;
}

} // namespace

chosen_name ElementNames::keyOf(Node pressed) {
    const Node element = elementFor(pressed);
    if (element == NONE)
        return {};
    chosen_name key = choose_name(namesOf(element), mNaming);
    chosen_name around = nameAround(element);
    if (key.text.empty())
        return around;
    if (!around.text.empty())
        key.text = around.text + ':' + key.text;
    return key;
}

/// The element that the press is taken for.
Node ElementNames::elementFor(Node pressed) const {
    while (pressed != NONE && mTree.kind(pressed) != Kind::Element)
        pressed = mTree.parent(pressed);
    const Node field = mTree.fieldAround(pressed);
    if (field != NONE)
        return field;
    Node element = pressed;
    for (int i = 0; i <= mNaming.up && element != NONE; ++i) {
        if (isInteractive(element))
            return element;
        element = mTree.parent(element);
    }
    return pressed;
}

bool ElementNames::isInteractive(Node element) const {
    return mTree.kind(element) == Kind::Element && (isOneOf(mTree.tag(element), INTERACTIVE) ||
                                                    isOneOf(roleOf(element), INTERACTIVE_ROLES));
}

/// As the page says, or as its tag is one.
std::string_view ElementNames::roleOf(Node element) const {
    const std::string_view role = mTree.attribute(element, "role");
    if (!role.empty())
        return role.substr(0, role.find(' '));
    const std::string_view tag = mTree.tag(element);
    if (tag == "a")
        return "link";
    if (tag == "th")
        return mTree.attribute(element, "scope") == "row" ? "rowheader" : "columnheader";
    return isButtonLike(tag, mTree.attribute(element, "type")) ? "button" : tag;
}

bool ElementNames::isMasked(Node element) const {
    const std::string_view classes = mTree.attribute(element, "class");
    constexpr std::array<std::string_view, 3> HIDDEN{"rr-mask", "rr-block", "rr-ignore"};
    return std::any_of(HIDDEN.begin(), HIDDEN.end(), [&](std::string_view hidden) {
        return classes.find(hidden) != std::string_view::npos;
    });
}

element_names ElementNames::namesOf(Node element) {
    element_names names = namesByAttribute(element);
    name_from(names, Named::Name) = usable(mTree.attribute(element, "name"));
    name_from(names, Named::Title) = labelOf(element);
    writeText(element);
    name_from(names, Named::Text) = mText;
    writePath(element);
    name_from(names, Named::Path) = mPath;
    return names;
}

/// The names that an ancestor can lend.
element_names ElementNames::namesByAttribute(Node element) const {
    element_names names;
    name_from(names, Named::Test) = testIdOf(element);
    name_from(names, Named::Aria) = usable(mTree.attribute(element, "aria-label"));
    name_from(names, Named::Id) = usable(mTree.attribute(element, "id"));
    return names;
}

/// The name, or none in its place.
std::string_view ElementNames::usable(std::string_view name) const {
    return isMask(name) || mWritten.isRepeatedBy(name) ? std::string_view() : name;
}

/// Attributes that the rules name come first.
std::string_view ElementNames::testIdOf(Node element) const {
    for (const std::string& name : mNaming.testIds) {
        const std::string_view value = usable(mTree.attribute(element, name));
        if (!value.empty())
            return value;
    }
    for (const node_attribute& attribute : mTree.attributes(element)) {
        if (is_test_id(attribute.name, mNaming) && !usable(attribute.value).empty())
            return attribute.value;
    }
    return {};
}

std::string_view ElementNames::labelOf(Node element) const {
    for (const std::string_view name : {"title", "alt", "placeholder"}) {
        const std::string_view value = usable(mTree.attribute(element, name));
        if (!value.empty())
            return value;
    }
    return {};
}

void ElementNames::writeText(Node element) {
    mText.clear();
    const std::string_view role = roleOf(element);
    if (!isOneOf(role, WITH_TEXT) || mTree.fieldAround(element) != NONE || isInMasked(element))
        return;
    const std::string text = textOf(element);
    if (usable(text).empty())
        return;
    mText = role;
    mText += ' ';
    mText += shortened(text, MOST_TEXT);
}

bool ElementNames::isInMasked(Node element) const {
    for (int i = 0; i < FARTHEST && element != NONE; ++i) {
        if (isMasked(element))
            return true;
        element = mTree.parent(element);
    }
    return element != NONE;
}

/// What can be read on the element, fields and what is masked aside.
std::string ElementNames::textOf(Node element) const {
    if (isButtonLike(mTree.tag(element), mTree.attribute(element, "type")))
        return std::string(mTree.attribute(element, "value"));
    std::string text;
    Node node = mTree.firstChild(element);
    for (int i = 0; i < MOST_TEXT_NODES && node != NONE && text.size() < LONGEST_TEXT; ++i) {
        const bool isText = mTree.kind(node) == Kind::Text;
        if (isText && !isStars(mTree.text(node)))
            text += mTree.text(node);
        node = isText || hidesText(node) ? mTree.behind(node, element)
                                         : mTree.following(node, element);
    }
    return withoutSpareBlanks(text);
}

bool ElementNames::hidesText(Node node) const {
    return mTree.isField(node) || isMasked(node) || roleOf(node) == "combobox" ||
           isOneOf(mTree.tag(node), WITHOUT_TEXT);
}

/// By tags, up to an ancestor that has a name.
void ElementNames::writePath(Node element) {
    mPath = mTree.tag(element);
    for (int i = 0; i < PATH_PARENTS; ++i) {
        element = mTree.parent(element);
        const std::string_view tag = mTree.tag(element);
        if (tag.empty() || tag == "body" || tag == "html" || !lentBy(element).text.empty())
            return;
        mPath.insert(0, std::string(tag) + '>');
    }
}

chosen_name ElementNames::lentBy(Node element) const {
    return choose_name(namesByAttribute(element), mNaming);
}

/// Of the nearest ancestor that has one; farther ones say little of where an element is.
chosen_name ElementNames::nameAround(Node element) const {
    for (int i = 0; i < FARTHEST && element != NONE; ++i) {
        element = mTree.parent(element);
        chosen_name name = lentBy(element);
        if (!name.text.empty())
            return name;
    }
    return {};
}

bool ElementNames::isChoice(Node pressed) const {
    if (mTree.fieldAround(pressed) != NONE)
        return false;
    for (int i = 0; i <= MENU_PARENTS && pressed != NONE; ++i) {
        const std::string_view role = roleOf(pressed);
        if (role.starts_with("menuitem") || role == "option")
            return true;
        pressed = mTree.parent(pressed);
    }
    return false;
}

bool ElementNames::isInLabel(Node pressed) const {
    const Node element = elementFor(pressed);
    return element != NONE && mTree.tag(element) == "label";
}

Node ElementNames::listOf(Node option) const {
    if (mTree.tag(option) != "option")
        return NONE;
    while (option != NONE && mTree.tag(option) != "select")
        option = mTree.parent(option);
    return option;
}

std::string ElementNames::valueOf(Node option) const {
    const std::string_view value = mTree.attribute(option, "value");
    return value.empty() ? textOf(option) : std::string(value);
}

std::string ElementNames::optionOf(Node list, std::string_view value) const {
    if (mTree.tag(list) != "select" || isMask(value) || isInMasked(list))
        return {};
    for (Node node = list; node != NONE; node = mTree.following(node, list)) {
        if (mTree.tag(node) == "option" &&
            (mTree.attribute(node, "value") == value || mTree.attribute(node, "label") == value ||
             textOf(node) == value))
            return cleaned(value);
    }
    return {};
}

} // namespace import
