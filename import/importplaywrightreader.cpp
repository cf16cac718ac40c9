#include "import/importplaywrightreader.h"

#include "import/importjsonwalk.h"
#include "import/importselector.h"
#include "import/importtext.h"
#include "import/importtextmap.h"
#include "import/importzip.h"

#include <QFile>
#include <QTemporaryFile>

#include <array>

namespace import {

namespace {

constexpr int FIRST_VERSION = 3;
constexpr int LAST_VERSION = 10;
constexpr std::size_t MOST_OPEN = 10'000; // actions that have begun and not ended

enum class Act { Press, DoublePress, Type, Choose, None };

struct named_act {
    std::string_view method;
    Act act;
};

constexpr std::array<named_act, 9> ACTS{{{"click", Act::Press},
                                         {"tap", Act::Press},
                                         {"check", Act::Press},
                                         {"uncheck", Act::Press},
                                         {"dblclick", Act::DoublePress},
                                         {"fill", Act::Type},
                                         {"type", Act::Type},
                                         {"press", Act::Type},
                                         {"selectOption", Act::Choose}}};

Act actOf(std::string_view method) {
    for (const named_act& known : ACTS) {
        if (known.method == method)
            return known.act;
    }
    return Act::None;
}

std::optional<place> placeOf(const JsonValue& event) {
    const JsonValue* const point = member(event, "point");
    if (!point)
        return std::nullopt;
    const auto x = number(*point, "x");
    const auto y = number(*point, "y");
    return x && y ? std::optional(place{*x, *y}) : std::nullopt;
}

/// The item of the choice, if the trace names it as people see it.
std::string itemOf(const JsonValue& params) {
    const JsonValue* const options = member(params, "options");
    if (!options || !options->IsArray() || options->Empty())
        return {};
    const JsonValue& first = (*options)[0];
    const std::string_view label = text(first, "label");
    return cleaned(label.empty() ? text(first, "valueOrLabel") : label);
}

/// The events of one member of the archive.
class Context {
public:
    Context(const options& options, Collector& into)
        : mFields(options.fields)
        , mNaming(options.rules.naming())
        , mInto(into) {}

    /// Empty, or why the rest of the member is not to be read.
    QString take(const JsonValue& event) {
        const std::string_view type = text(event, "type");
        if (type == "context-options")
            return begin(event);
        if (!mIsBegun)
            return QStringLiteral("it does not begin as a trace");
        if (type == "before")
            before(event);
        else if (type == "input")
            input(event);
        else if (type == "after")
            after(event);
        else if (type == "action")
            whole(event);
        return {};
    }

    /// Empty, or why what was read may be wrong: versions to come say most in the same way.
    QString doubt() const { return mDoubt; }

    /// Whether it is one of the test runner's, which has steps and no actions.
    bool isRunner() const { return mIsRunner; }

    void end() {
        mInto.report("action that did not end", static_cast<std::int64_t>(mOpen.size()));
        mInto.endRecording();
    }

private:
    struct open_action {
        Act act = Act::None;
        std::string key;
        Named named = Named::Path;
        double time = 0;
        std::optional<place> at;
    };

    QString begin(const JsonValue& event) {
        const int version = static_cast<int>(number(event, "version").value_or(0));
        QString known = QStringLiteral("it is of version %1; known are %2 to %3")
                            .arg(version)
                            .arg(FIRST_VERSION)
                            .arg(LAST_VERSION);
        if (version < FIRST_VERSION)
            return known;
        if (version > LAST_VERSION)
            mDoubt = known + QStringLiteral(", so something may be missing");
        mIsRunner = text(event, "origin") == "testRunner";
        const std::string_view testId = text(event, "testIdAttributeName");
        if (!testId.empty())
            mNaming.testIds.emplace_back(testId);
        const auto wall = number(event, "wallTime");
        const auto monotonic = number(event, "monotonicTime");
        mEpoch = wall && monotonic ? *wall - *monotonic : 0;
        if (!mIsBegun && !mIsRunner)
            mInto.beginRecording();
        mIsBegun = true;
        return {};
    }

    void before(const JsonValue& event) {
        const open_action action = actionOf(event);
        if (action.act == Act::None)
            return;
        if (mOpen.size() >= MOST_OPEN) {
            mInto.report("action that did not end", static_cast<std::int64_t>(mOpen.size()));
            mOpen.clear();
        }
        mOpen.insert_or_assign(std::string(text(event, "callId")), action);
    }

    void input(const JsonValue& event) {
        const auto open = mOpen.find(text(event, "callId"));
        if (open != mOpen.end() && !open->second.at)
            open->second.at = placeOf(event);
    }

    void after(const JsonValue& event) {
        const auto open = mOpen.find(text(event, "callId"));
        if (open == mOpen.end())
            return;
        open_action action = open->second;
        mOpen.erase(open);
        if (!action.at)
            action.at = placeOf(event);
        finish(action, event);
    }

    /// Up to version 3 an action is one event.
    void whole(const JsonValue& event) {
        const JsonValue* const metadata = member(event, "metadata");
        const JsonValue& described = metadata ? *metadata : event;
        open_action action = actionOf(described);
        action.at = placeOf(described);
        if (action.act != Act::None)
            finish(action, described);
    }

    open_action actionOf(const JsonValue& event) {
        open_action action;
        const std::string_view method = text(event, "method");
        action.act = actOf(method);
        if (action.act == Act::None) {
            mInto.skip(method.empty() ? "(no method)" : method);
            return action;
        }
        action.time = number(event, "startTime").value_or(0) + mEpoch;
        const JsonValue* const params = member(event, "params");
        if (!params)
            return action;
        if (action.act == Act::Type)
            noteTyped(*params);
        nameBy(text(*params, "selector"), action);
        if (action.act == Act::Choose && !action.key.empty()) {
            const std::string item = itemOf(*params);
            action.key += item.empty() ? item : ':' + item;
        }
        return action;
    }

    void noteTyped(const JsonValue& params) {
        mTyped.note(text(params, "value"));
        mTyped.note(text(params, "text"));
    }

    void nameBy(std::string_view selector, open_action& action) {
        if (selector.empty())
            return;
        const chosen_name name = locator_of(selector, mNaming).choose(mNaming, mTyped);
        const chosen_name front = locator_before(selector, mNaming).choose(mNaming, mTyped);
        const bool isTelling = !front.text.empty() && front.named <= Named::Id;
        action.key = isTelling && !name.text.empty() ? front.text + ':' + name.text : name.text;
        action.named = name.named;
    }

    void finish(const open_action& action, const JsonValue& end) {
        if (member(end, "error") && !member(end, "error")->IsNull())
            return mInto.report("action that failed");
        const bool isSameField = action.act == Act::Type && mField == action.key;
        mField = action.act == Act::Type ? action.key : std::string();
        if (action.act == Act::Type && (!mFields || isSameField))
            return mInto.skip("typing");
        event event{Gesture::Down, action.key, action.named, action.time, action.at};
        if (action.act == Act::Choose) {
            event.gesture = Gesture::Menu;
            return mInto.add(event);
        }
        mInto.addPress(event);
        if (action.act == Act::DoublePress)
            mInto.addPress(event);
    }

    const bool mFields;
    naming mNaming;
    Collector& mInto;
    WrittenTexts mTyped;
    text_map<open_action> mOpen;
    std::string mField; // the field typed into last; empty when something else came between
    QString mDoubt;
    double mEpoch = 0;
    bool mIsBegun = false;
    bool mIsRunner = false;
};

/// Pictures of the page are most of a trace, in lines of any size, and nothing of them is read.
bool isPicture(Bytes& bytes) {
    constexpr std::string_view BEGINNING = R"({"type":"frame-snapshot")";
    while (bytes.held().size() < BEGINNING.size() && bytes.more()) {
    }
    return bytes.held().starts_with(BEGINNING);
}

/// Empty, or what is wrong with the member.
QString readContext(QIODevice& member, const options& options, Collector& into) {
    Bytes bytes(member);
    JsonScanner scanner(bytes);
    Json json;
    Context context(options, into);
    QString fault;
    while (fault.isEmpty() && !context.isRunner() && scanner.peek() != JsonScanner::Next::End) {
        const bool isWhole =
            isPicture(bytes)
                ? scanner.skipValue()
                : with_value(
                      scanner, json, [&](const JsonValue& event) { fault = context.take(event); },
                      [&] { into.report("line that is no event, or too long"); });
        if (!isWhole)
            fault = QStringLiteral("it ends within an event");
    }
    context.end();
    if (fault.isEmpty())
        fault = context.doubt();
    return bytes.fault().isEmpty() ? fault : bytes.fault();
}

bool isContext(const std::string& name) {
    return name.ends_with(".trace") && name != "test.trace" && !name.ends_with("/test.trace");
}

outcome readArchive(const QString& path, const options& options, Collector& into) {
    Zip zip(path, options.unpacking);
    if (!zip.isArchive())
        return outcome_of(QStringLiteral("it is no zip file, or its end is missing"));
    QStringList faults;
    bool hasContext = false;
    while (zip.nextMember()) {
        if (!isContext(zip.memberName()))
            continue;
        hasContext = true;
        const QString fault = readContext(zip, options, into);
        if (!fault.isEmpty())
            faults.append(QString::fromStdString(zip.memberName()) + QStringLiteral(": ") + fault);
    }
    if (zip.isBroken())
        faults.append(QStringLiteral("the list of its members is damaged"));
    else if (!hasContext)
        faults.append(QStringLiteral("there is no trace in it"));
    return outcome_of(faults.join(QStringLiteral("; ")));
}

bool copied(QIODevice& source, QTemporaryFile& copy) {
    if (!copy.open())
        return false;
    QByteArray piece;
    while (!(piece = source.read(1 << 20)).isEmpty()) {
        if (copy.write(piece) != piece.size())
            return false;
    }
    return copy.flush();
}

} // namespace

outcome PlaywrightReader::read(QIODevice& source, Collector& into) {
    const auto* const file = qobject_cast<QFile*>(&source);
    if (file && !file->isSequential() && !file->fileName().isEmpty()) // standard input has none
        return readArchive(file->fileName(), mOptions, into);
    QTemporaryFile copy;
    if (!copied(source, copy))
        return {outcome::Kind::Unreadable, copy.errorString()};
    return readArchive(copy.fileName(), mOptions, into);
}

} // namespace import
