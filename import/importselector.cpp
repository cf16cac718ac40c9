#include "import/importselector.h"

#include <algorithm>
#include <string>
#include <vector>

namespace import {

namespace {

std::string_view withoutBlanks(std::string_view text) {
    while (!text.empty() && text.front() == ' ')
        text.remove_prefix(1);
    while (!text.empty() && text.back() == ' ')
        text.remove_suffix(1);
    return text;
}

/// The parts between `>>` outside of quotes.
std::vector<std::string_view> partsOf(std::string_view selector) {
    std::vector<std::string_view> parts;
    char quote = '\0';
    std::size_t from = 0;
    for (std::size_t at = 0; at < selector.size(); ++at) {
        const char c = selector[at];
        if (c == '\\')
            ++at;
        else if (quote != '\0')
            quote = c == quote ? '\0' : quote;
        else if (c == '"' || c == '\'')
            quote = c;
        else if (selector.substr(at, 2) == ">>") {
            parts.push_back(withoutBlanks(selector.substr(from, at - from)));
            from = at + 2;
        }
    }
    parts.push_back(withoutBlanks(selector.substr(std::min(from, selector.size()))));
    return parts;
}

/// Engines that choose among elements and name none.
bool isChoice(std::string_view engine) {
    return engine == "nth" || engine == "visible" || engine == "internal:has" ||
           engine == "internal:has-not" || engine == "internal:has-text" ||
           engine == "internal:has-not-text" || engine == "internal:and" ||
           engine == "internal:or" || engine == "internal:control";
}

struct engine_part {
    std::string_view engine; // empty for a CSS selector
    std::string_view body;
};

engine_part parted(std::string_view part) {
    const std::size_t equals = part.find('=');
    const std::string_view engine = part.substr(0, std::min(equals, part.size()));
    const bool isEngine = equals != std::string_view::npos && !engine.empty() &&
                          engine.find_first_of(" >[]().#*,\"'") == std::string_view::npos;
    if (isEngine)
        return {engine, part.substr(equals + 1)};
    return {{}, part};
}

/// The text of `"Save"i`, `"Save"s`, `Save` or `/save/i`; its escapes undone.
std::string textOf(std::string_view body) {
    const char quote = body.empty() ? '\0' : body.front();
    if (quote != '"' && quote != '\'' && quote != '/')
        return std::string(body);
    std::string text;
    for (std::size_t at = 1; at < body.size() && body[at] != quote; ++at) {
        if (body[at] == '\\' && at + 1 < body.size())
            ++at;
        text += body[at];
    }
    return text;
}

/// The value of `[name=...]` in a role's or an attribute's engine.
std::string attributeIn(std::string_view body, std::string_view name) {
    const std::string mark = '[' + std::string(name) + '=';
    const std::size_t at = body.find(mark);
    return at == std::string_view::npos ? std::string() : textOf(body.substr(at + mark.size()));
}

void addAttribute(Locator& locator, std::string_view body, const naming& naming) {
    const std::size_t equals = body.find('=');
    if (body.empty() || body.front() != '[' || equals == std::string_view::npos)
        return;
    locator.addAttribute(body.substr(1, equals - 1), textOf(body.substr(equals + 1)), naming);
    locator.addPath(body.substr(1, equals - 1));
}

void addTestId(Locator& locator, std::string_view body) {
    const std::size_t equals = body.find('=');
    if (equals != std::string_view::npos)
        locator.addTest(textOf(body.substr(equals + 1)));
}

void addPart(Locator& locator, const engine_part& part, const naming& naming) {
    const auto [engine, body] = part;
    if (engine == "internal:role" || engine == "role")
        locator.addAria(attributeIn(body, "name"), body.substr(0, body.find('[')));
    else if (engine == "internal:describe")
        locator.addTest(textOf(body));
    else if (engine == "internal:testid")
        addTestId(locator, body);
    else if (engine == "internal:label") {
        locator.addAria(textOf(body), {});
        locator.addPath("label");
    } else if (engine == "internal:attr")
        addAttribute(locator, body, naming);
    else if (engine == "internal:text" || engine == "text") {
        locator.trustText();
        locator.addText(textOf(body));
        locator.addPath("text");
    } else if (engine == "id" || is_test_id(engine, naming))
        locator.addAttribute(engine, textOf(body), naming);
    else if (engine == "xpath" || body.starts_with("//"))
        locator.addXPath(body, naming);
    else if (engine.empty() || engine == "css")
        locator.addCss(body, naming);
    else
        locator.addPath(body);
}

/// The parts that are elements, from the outside in.
std::vector<engine_part> elementsOf(std::string_view selector) {
    std::vector<engine_part> elements;
    for (const std::string_view part : partsOf(selector)) {
        const engine_part element = parted(part);
        if (!isChoice(element.engine))
            elements.push_back(element);
    }
    return elements;
}

/// What people called an element stands behind it, as a part of its own.
std::size_t firstOfLast(const std::vector<engine_part>& elements) {
    std::size_t first = elements.size();
    while (first > 0 && elements[--first].engine == "internal:describe") {
    }
    return first;
}

} // namespace

Locator locator_of(std::string_view selector, const naming& naming) {
    Locator locator;
    const std::vector<engine_part> elements = elementsOf(selector);
    for (std::size_t i = firstOfLast(elements); i < elements.size(); ++i)
        addPart(locator, elements[i], naming);
    return locator;
}

Locator locator_before(std::string_view selector, const naming& naming) {
    Locator locator;
    const std::vector<engine_part> elements = elementsOf(selector);
    const std::size_t first = firstOfLast(elements);
    if (first > 0 && first < elements.size())
        addPart(locator, elements[first - 1], naming);
    return locator;
}

} // namespace import
