#include "import/importwrittentexts.h"
#include "tests/import/imported.h"

#include <gmock/gmock.h>
#include <minizip/zip.h>

#include <cctype>
#include <random>
#include <vector>

namespace {

void checkScripts(const std::vector<import_row>& rows) {
    checkImports(rows, "--places as-is --no-join ");
}

/// A step of a browser's recorder.
QByteArray steps(const QByteArray& all) {
    return R"({"title":"t","steps":[)" + all + "]}";
}

TEST(ImportScripts, ReadTheStepsOfARecorder) {
    checkScripts({
        {"clicks, one and two",
         steps(
             R"({"type":"click","selectors":[["#a"]]},{"type":"doubleClick","selectors":["aria/B"]})"),
         "",
         R"({ "down": [0, "a"], "up": [0, "a"], "down": [0, "B"], "up": [0, "B"], "down": [0, "B"], "up": [0, "B"] })",
         "4 aria, 2 id"},
        {"the best of the selectors, by attribute",
         steps(
             R"({"type":"click","selectors":[["text/T"],["aria/A[role=\"button\"]"],["[data-testid='id 1']"]]})"),
         "", R"({ "down": [0, "id 1"], "up": [0, "id 1"] })", "2 test"},
        {"the order of names is a rule",
         steps(R"({"type":"click","selectors":[["text/T"],["aria/A[role=\"button\"]"],["#i"]]})"),
         "--rule names~text,id", R"({ "down": [0, "T"], "up": [0, "T"] })", "2 text"},
        {"text of what may be a field is no name",
         steps(R"({"type":"click","selectors":[["text/typed"],["#main > div"]]})"), "",
         R"({ "down": [0, "#main > div"], "up": [0, "#main > div"] })", "2 path"},
        {"typing is one press on its field",
         steps(
             R"({"type":"change","value":"secret","selectors":["#f"]},{"type":"change","value":"secrets","selectors":["#f"]},{"type":"click","selectors":["aria/secret"]})"),
         "", R"({ "down": [0, "f"], "up": [0, "f"] })", "skipped: 1 typing"},
        {"no fields", steps(R"({"type":"change","value":"x","selectors":["#f"]})"), "--no-fields",
         "", "skipped: 1 typing"},
        {"a choice in a menu",
         steps(R"({"type":"change","value":"red","selectors":["select.colour"]})"), "",
         R"({ "menu": [0, "select.colour:red"] })", "1 path"},
        {"what is no press",
         steps(R"({"type":"hover","selectors":["#a"]},{"type":"fly"},{"type":"click"})"), "", "",
         "1 step of an unknown kind"},
        {"unstable ids give way, digits of others to #",
         steps(R"({"type":"click","selectors":["#a1b2c3d4e5","[name='row12']"]})"), "",
         R"({ "down": [0, "row#"], "up": [0, "row#"] })", "2 name"},
        {"a cut script", steps(R"({"type":"click","selectors":["#a"]},{"type":)").chopped(2), "",
         R"({ "down": [0, "a"], "up": [0, "a"] })", "ends or breaks within"},
    });
}

QByteArray commands(const QByteArray& all) {
    return R"({"id":"x","tests":[{"name":"n","commands":[)" + all + R"(]},{"commands":[]}]})";
}

TEST(ImportScripts, ReadTheTestsOfAnEditor) {
    checkScripts({
        {"presses, releases, choices",
         commands(
             R"({"command":"mouseDownAt","target":"id=a","value":"1,2"},{"command":"mouseUp","target":"name=b"},{"command":"select","target":"id=s","value":"label=Red"})"),
         "", R"({ "down": [0, "a"], "up": [0, "b"], "menu": [0, "s:Red"] })",
         "without events: 1 recording"},
        {"locators by their order",
         commands(
             R"({"command":"click","target":"css=.x","targets":[["xpath=//button[@id='go']","x"],["linkText=Go","l"]]})"),
         "", R"({ "down": [0, "go"], "up": [0, "go"] })", "2 id"},
        {"link texts", commands(R"({"command":"click","target":"linkText=Log out"})"), "",
         R"({ "down": [0, "Log out"], "up": [0, "Log out"] })", "2 text"},
        {"typed text names nothing",
         commands(
             R"({"command":"type","target":"id=q","value":"milk"},{"command":"click","target":"linkText=buy milk"},{"command":"click","target":"css=input[value='milk']"})"),
         "",
         R"({ "down": [0, "q"], "up": [0, "q"], "down": [0, "a"], "up": [0, "a"], "down": [0, "input[value=]"], "up": [0, "input[value=]"] })",
         ""},
        {"disabled and other commands",
         commands(R"({"command":"//click","target":"id=a"},{"command":"open","target":"/"})"), "",
         "", "skipped: 1 disabled, 1 open"},
    });
}

TEST(ImportXes, ReadsTracesOfEvents) {
    const QByteArray head = R"(<?xml version="1.0"?><log><string key="concept:name" value="no"/>)";
    const QByteArray event =
        R"(<event><string key="concept:name" value="A"><string key="concept:name" value="inner"/></string><string key="app" value="Mail"/><date key="time:timestamp" value="1970-01-01T00:00:01Z"/></event>)";
    const QByteArray started =
        R"(<event><string key="concept:name" value="B"/><string key="lifecycle:transition" value="start"/></event>)";
    checkScripts({
        {"names and times", head + "<trace>" + event + started + "</trace><trace/></log>", "",
         R"({ "down": [1000, "A"] })", "skipped: 1 start"},
        {"the lifecycle asked for", head + "<trace>" + started + "</trace></log>",
         "--lifecycle start", R"({ "down": [0, "B"] })", ""},
        {"keys of attributes", head + "<trace>" + event + "</trace></log>",
         "--key app,concept:name", R"({ "down": [1000, "Mail:A"] })", ""},
        {"no key", head + "<trace>" + event + "</trace></log>", "--key z", "", "1 no key"},
        {"cut off", head + "<trace>" + event + "<event>", "", R"({ "down": [1000, "A"] })",
         "line 1"},
        {"deep", head + "<trace>" + QByteArray("<list>").repeated(100'000), "", "", "too deep"},
    });
}

QByteArray zipped(const std::vector<std::pair<const char*, QByteArray>>& members) {
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("a.zip"));
    zipFile zip = zipOpen64(QFile::encodeName(path).constData(), 0);
    for (const auto& [name, content] : members) {
        zipOpenNewFileInZip64(zip, name, nullptr, nullptr, 0, nullptr, 0, nullptr, Z_DEFLATED, 9,
                              0);
        zipWriteInFileInZip(zip, content.constData(), static_cast<unsigned>(content.size()));
        zipCloseFileInZip(zip);
    }
    zipClose(zip, nullptr);
    QFile file(path);
    file.open(QIODevice::ReadOnly);
    return file.readAll();
}

const QByteArray BEGIN =
    R"({"version":10,"type":"context-options","origin":"library","wallTime":1000,"monotonicTime":400,"testIdAttributeName":"data-q"})"
    "\n";

QByteArray action(const QByteArray& method, const QByteArray& params, const QByteArray& end = "") {
    static int id = 0;
    const QByteArray call = R"("callId":"c)" + QByteArray::number(++id) + '"';
    return R"({"type":"before",)" + call + R"(,"startTime":500,"class":"Frame","method":")" +
           method + R"(","params":{)" + params + "}}\n" + R"({"type":"input",)" + call +
           R"(,"point":{"x":1,"y":2}})" + "\n" + R"({"type":"after",)" + call + end + "}\n";
}

TEST(ImportTraces, ReadActionsOfContexts) {
    const char* const press = R"({ "down": [1100, "Save", 1, 2], "up": [1100, "Save", 1, 2] })";
    const auto click = [](const QByteArray& selector) {
        return zipped({{"0.trace", BEGIN + action("click", R"("selector":")" + selector + '"')}});
    };
    checkScripts({
        {"a role with a name", click(R"(internal:role=button[name=\"Save\"i] >> nth=0)"), "", press,
         "2 aria"},
        {"the test id of the trace", click(R"([data-q=\"Save\"])"), "", press, "2 test"},
        {"a described element", click(R"(div >> internal:describe=\"Save\")"), "", press, "2 test"},
        {"text that people wrote into the test", click(R"(internal:text=\"Save\"i)"), "", press,
         "2 text"},
        {"the named element around it",
         click(R"(internal:role=toolbar[name=\"Top\"i] >> .x[title=\"Save\"])"), "",
         R"({ "down": [1100, "Top:Save", 1, 2], "up": [1100, "Top:Save", 1, 2] })", "2 title"},
        {"typing, a choice, a failure",
         zipped(
             {{"0.trace",
               BEGIN + action("fill", R"("selector":"#f","value":"secret")") +
                   action("press", R"("selector":"#f","key":"Enter")") +
                   action("selectOption", R"("selector":"#s","options":[{"valueOrLabel":"Red"}])") +
                   action("click", R"("selector":"#a")", R"(,"error":{"message":"m"})") +
                   action("goto", "")}}),
         "",
         R"({ "down": [1100, "f", 1, 2], "up": [1100, "f", 1, 2], "menu": [1100, "s:Red", 1, 2] })",
         "1 action that failed"},
        {"several contexts, the runner's steps left out",
         zipped({{"a.trace", BEGIN + action("tap", R"("selector":"#a")")},
                 {"test.trace", "{}"},
                 {"b.trace", BEGIN + action("check", R"("selector":"#b")")},
                 {"r.trace", R"({"version":8,"type":"context-options","origin":"testRunner"})"}}),
         "",
         R"({ "down": [1100, "a", 1, 2], "up": [1100, "a", 1, 2] }, { "down": [1100, "b", 1, 2], "up": [1100, "b", 1, 2] })",
         "2 recordings"},
        {"version 3",
         zipped(
             {{"t.trace",
               R"({"version":3,"type":"context-options"}{"type":"action","metadata":{"startTime":7,"type":"Frame","method":"dblclick","params":{"selector":"#a"},"point":{"x":1,"y":2}}})"}}),
         "",
         R"({ "down": [7, "a", 1, 2], "up": [7, "a", 1, 2], "down": [7, "a", 1, 2], "up": [7, "a", 1, 2] })",
         ""},
        {"a version to come, as far as it is understood",
         zipped({{"t.trace", R"({"version":11,"type":"context-options"})" +
                                 action("tap", R"("selector":"#a")")}}),
         "", R"({ "down": [500, "a", 1, 2], "up": [500, "a", 1, 2] })",
         "of version 11; known are 3 to 10, so something may be missing"},
        {"a version too old", zipped({{"t.trace", R"({"version":2,"type":"context-options"})"}}),
         "", "", "of version 2; known are 3 to 10"},
        {"text that was typed names nothing, but how it was looked for does",
         zipped(
             {{"t.trace", BEGIN + action("fill", R"("selector":"#f","value":"secret")") +
                              action("tap", R"("selector":"internal:attr=[title=\"secret\"i]")") +
                              action("tap", R"("selector":"internal:text=\"secret\"i")") +
                              action("tap", R"("selector":"internal:label=\"secret\"i")")}}),
         "",
         R"({ "down": [1100, "f", 1, 2], "up": [1100, "f", 1, 2], "down": [1100, "title", 1, 2], "up": [1100, "title", 1, 2], "down": [1100, "text", 1, 2], "up": [1100, "text", 1, 2], "down": [1100, "label", 1, 2], "up": [1100, "label", 1, 2] })",
         "6 path"},
        {"an action without end, and a cut line",
         zipped({{"t.trace", BEGIN + action("click", R"("selector":"#a")").chopped(20)}}), "", "",
         "ends within an event"},
        {"no trace", zipped({{"x.txt", "x"}}), "", "", "no trace in it"},
        {"a cut archive", click("#a").chopped(30), "", "", "no zip file, or its end is missing"},
        {"a bomb", zipped({{"t.trace", BEGIN + QByteArray(8 << 20, ' ')}}), "--ratio 10", "",
         "unpacks to too much"},
    });
}

/// Against comparing each name with each text.
TEST(WrittenTexts, TellsEveryNameThatRepeatsOne) {
    std::mt19937 random(5);
    const auto word = [&](std::size_t longest) {
        std::string text;
        for (std::size_t i = 1 + random() % longest; i > 0; --i)
            text += "aab -"[random() % 5];
        return QString::fromStdString(text).simplified().toStdString();
    };
    const auto isBorder = [](const std::string& name, std::size_t at) {
        return at == 0 || at >= name.size() || std::isalnum(name[at - 1]) == 0 ||
               std::isalnum(name[at]) == 0;
    };
    for (int round = 0; round < 300; ++round) {
        import::WrittenTexts written;
        std::vector<std::string> texts(1 + random() % 12);
        for (std::string& text : texts)
            written.note(text = word(9));
        for (int i = 0; i < 40; ++i) {
            const std::string name = word(14);
            bool isRepeated = false;
            for (const std::string& text : texts) {
                if (text.size() < 2)
                    continue;
                isRepeated |= name == text || (name.size() >= 6 && text.starts_with(name));
                for (std::size_t at = name.find(text); at < name.size() && text.size() >= 3;
                     at = name.find(text, at + 1))
                    isRepeated |= text.size() >= 6 ||
                                  (isBorder(name, at) && isBorder(name, at + text.size()));
            }
            EXPECT_EQ(written.isRepeatedBy(name), isRepeated) << name;
        }
    }
}

} // namespace
