#include "import/importscriptreader.h"

#include "import/importjsonwalk.h"
#include "import/importtext.h"

#include <array>

namespace import {

namespace {

enum class StepAct { Click, DoubleClick, Down, Up, Type, Choose, None };

struct named_step {
    std::string_view name;
    StepAct act;
};

constexpr std::array<named_step, 3> STEPS{
    {{"click", StepAct::Click}, {"doubleClick", StepAct::DoubleClick}, {"change", StepAct::Type}}};

constexpr std::array<std::string_view, 10> OTHER_STEPS{
    "setViewport",    "navigate",          "scroll",    "hover", "keyDown", "keyUp", "close",
    "waitForElement", "waitForExpression", "customStep"};

constexpr std::array<named_step, 16> COMMANDS{{{"click", StepAct::Click},
                                               {"clickAt", StepAct::Click},
                                               {"submit", StepAct::Click},
                                               {"check", StepAct::Click},
                                               {"uncheck", StepAct::Click},
                                               {"doubleClick", StepAct::DoubleClick},
                                               {"doubleClickAt", StepAct::DoubleClick},
                                               {"mouseDown", StepAct::Down},
                                               {"mouseDownAt", StepAct::Down},
                                               {"mouseUp", StepAct::Up},
                                               {"mouseUpAt", StepAct::Up},
                                               {"type", StepAct::Type},
                                               {"sendKeys", StepAct::Type},
                                               {"editContent", StepAct::Type},
                                               {"select", StepAct::Choose},
                                               {"addSelection", StepAct::Choose}}};

template <typename Acts>
StepAct stepOf(const Acts& acts, std::string_view name) {
    for (const named_step& known : acts) {
        if (known.name == name)
            return known.act;
    }
    return StepAct::None;
}

bool takePrefix(std::string_view& text, std::string_view prefix) {
    if (!text.starts_with(prefix))
        return false;
    text.remove_prefix(prefix.size());
    return true;
}

/// Puts steps into recordings.
class Steps {
public:
    Steps(const naming& naming, bool fields, Collector& into)
        : mNaming(naming)
        , mFields(fields)
        , mInto(into) {}

    void begin() {
        mInto.beginRecording();
        mField.clear();
    }

    void end() { mInto.endRecording(); }

    /// `name`: of the step, for what is skipped.
    void add(StepAct act, std::string_view name, const Locator& locator, std::string_view choice) {
        const chosen_name element = locator.choose(mNaming, mTyped);
        event event;
        event.key = element.text;
        event.named = element.named;
        if (act != StepAct::Type)
            mField.clear();
        switch (act) {
        case StepAct::None:
            return mInto.skip(name);
        case StepAct::DoubleClick:
            mInto.addPress(event);
            return mInto.addPress(event);
        case StepAct::Click:
            return mInto.addPress(event);
        case StepAct::Down:
            return mInto.add(event);
        case StepAct::Up:
            event.gesture = Gesture::Up;
            return mInto.add(event);
        case StepAct::Type:
            return addTyping(event);
        case StepAct::Choose:
            return addChoice(event, choice);
        }
    }

    /// Before the step that types it.
    void noteTyped(std::string_view text) { mTyped.note(text); }

    Collector& into() { return mInto; }

    const import::naming& naming() const { return mNaming; }

private:
    /// Typing piece by piece into one field is one press on it.
    void addTyping(const event& event) {
        if (!mFields || (!mField.empty() && mField == event.key))
            return mInto.skip("typing");
        mField = event.key;
        mInto.addPress(event);
    }

    void addChoice(event event, std::string_view choice) {
        std::string key(event.key);
        const std::string item = cleaned(choice);
        if (!key.empty() && !item.empty())
            key += ':' + item;
        event.key = key;
        event.gesture = Gesture::Menu;
        mInto.add(event);
    }

    const import::naming& mNaming;
    const bool mFields;
    Collector& mInto;
    std::string mField; // the field typed into last
    WrittenTexts mTyped;
};

/// "Save[role=\"button\"]": the role stands behind the name.
void addAria(Locator& locator, std::string_view text) {
    constexpr std::string_view ROLE = "[role=\"";
    const std::size_t at = text.rfind(ROLE);
    if (at == std::string_view::npos)
        return locator.addAria(text, {});
    std::string_view role = text.substr(at + ROLE.size());
    role = role.substr(0, role.find('"'));
    locator.addAria(text.substr(0, at), role);
}

void addSelector(Locator& locator, std::string_view selector, const naming& naming) {
    if (takePrefix(selector, "aria/"))
        addAria(locator, selector);
    else if (takePrefix(selector, "text/"))
        locator.addText(selector);
    else if (takePrefix(selector, "xpath/"))
        locator.addXPath(selector, naming);
    else {
        takePrefix(selector, "pierce/");
        locator.addCss(selector, naming);
    }
}

/// A step's selectors are alternatives; each is a text or a way of several, from the outside in.
Locator locatorOfStep(const JsonValue& step, const naming& naming) {
    Locator locator;
    const JsonValue* const selectors = member(step, "selectors");
    if (!selectors || !selectors->IsArray())
        return locator;
    for (const JsonValue& selector : selectors->GetArray()) {
        if (selector.IsString())
            addSelector(locator, text(selector), naming);
        else if (selector.IsArray() && !selector.Empty())
            addSelector(locator, text(selector[selector.Size() - 1]), naming);
    }
    return locator;
}

void addStep(Steps& steps, const JsonValue& step) {
    const std::string_view type = text(step, "type");
    const StepAct act = stepOf(STEPS, type);
    const Locator locator = locatorOfStep(step, steps.naming());
    if (act == StepAct::None &&
        std::find(OTHER_STEPS.begin(), OTHER_STEPS.end(), type) == OTHER_STEPS.end())
        return steps.into().report("step of an unknown kind");
    // The value of a choice is an item of the menu; that of a field was typed.
    if (act == StepAct::Type && locator.isSelect())
        return steps.add(StepAct::Choose, type, locator, text(step, "value"));
    if (act == StepAct::Type)
        steps.noteTyped(text(step, "value"));
    steps.add(act, type, locator, {});
}

void addTarget(Locator& locator, std::string_view target, const naming& naming) {
    if (takePrefix(target, "id="))
        locator.addAttribute("id", target, naming);
    else if (takePrefix(target, "name="))
        locator.addAttribute("name", target, naming);
    else if (takePrefix(target, "css="))
        locator.addCss(target, naming);
    else if (takePrefix(target, "linkText=") || takePrefix(target, "link=") ||
             takePrefix(target, "partialLinkText="))
        locator.addLinkText(target);
    else if (takePrefix(target, "xpath=") || target.starts_with("//"))
        locator.addXPath(target, naming);
    else
        locator.addPath(target);
}

Locator locatorOfCommand(const JsonValue& command, const naming& naming) {
    Locator locator;
    addTarget(locator, text(command, "target"), naming);
    const JsonValue* const targets = member(command, "targets");
    if (!targets || !targets->IsArray())
        return locator;
    for (const JsonValue& target : targets->GetArray()) {
        if (target.IsArray() && !target.Empty())
            addTarget(locator, text(target[0]), naming);
    }
    return locator;
}

void addCommand(Steps& steps, const JsonValue& command) {
    std::string_view name = text(command, "command");
    if (name.starts_with("//"))
        return steps.into().skip("disabled");
    const StepAct act = stepOf(COMMANDS, name);
    std::string_view choice = text(command, "value");
    if (!takePrefix(choice, "label=") && !takePrefix(choice, "value="))
        takePrefix(choice, "id=");
    if (act == StepAct::Type)
        steps.noteTyped(choice);
    steps.add(act, name.empty() ? "(no command)" : name,
              act == StepAct::None ? Locator() : locatorOfCommand(command, steps.naming()), choice);
}

using Add = void (*)(Steps&, const JsonValue&);

bool addAll(JsonScanner& scanner, Json& json, Steps& steps, Add add) {
    return each_element(scanner, [&] {
        return with_value(
            scanner, json, [&](const JsonValue& value) { add(steps, value); },
            [&] { steps.into().report("no step"); });
    });
}

bool readRecorder(JsonScanner& scanner, Json& json, Steps& steps) {
    steps.begin();
    const bool isWhole = each_member(scanner, [&](const std::string& name) {
        return name == "steps" ? addAll(scanner, json, steps, addStep) : scanner.skipValue();
    });
    steps.end();
    return isWhole;
}

bool readTest(JsonScanner& scanner, Json& json, Steps& steps) {
    steps.begin();
    const bool isWhole = each_member(scanner, [&](const std::string& name) {
        return name == "commands" ? addAll(scanner, json, steps, addCommand) : scanner.skipValue();
    });
    steps.end();
    return isWhole;
}

bool readSide(JsonScanner& scanner, Json& json, Steps& steps) {
    return each_member(scanner, [&](const std::string& name) {
        if (name != "tests")
            return scanner.skipValue();
        return each_element(scanner, [&] { return readTest(scanner, json, steps); });
    });
}

} // namespace

outcome ScriptReader::read(QIODevice& source, Collector& into) {
    Bytes bytes(source);
    JsonScanner scanner(bytes);
    Json json;
    Steps steps(mNaming, mFields, into);
    const bool isWhole =
        mKind == Kind::Side ? readSide(scanner, json, steps) : readRecorder(scanner, json, steps);
    if (!bytes.fault().isEmpty())
        return outcome_of(bytes.fault());
    return outcome_of(isWhole ? QString()
                              : QStringLiteral("the text ends or breaks within a script"));
}

} // namespace import
