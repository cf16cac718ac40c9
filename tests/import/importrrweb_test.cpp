#include "import/importformat.h"
#include "import/importnodetree.h"
#include "import/importrrwebparser.h"
#include "import/importrrwebreader.h"

#include <QBuffer>
#include <QJsonArray>
#include <QJsonDocument>
#include <QStringEncoder>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <map>
#include <random>

namespace {

using testing::Contains;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Key;
using testing::Not;

struct Imported {
    std::string log;
    std::vector<std::string> keys; // with how they were named
    std::map<std::string, std::int64_t, std::less<>> skipped;
    std::map<std::string, std::int64_t, std::less<>> reported;
    std::int64_t recordings = 0;
    std::string fault;
};

Imported importOf(QByteArray text, const QString& rule = {}) {
    import::Rules rules;
    rules.add(rule);
    QBuffer source(&text);
    source.open(QIODevice::ReadOnly);
    QByteArray log;
    QBuffer target(&log);
    target.open(QIODevice::WriteOnly);
    import::KeyTable keys(rules);
    import::LogWriter writer(target);
    import::Collector into(keys, writer);
    const import::outcome outcome = import::RrwebReader(rules.naming()).read(source, into);
    writer.finish();
    Imported result{log.toStdString(),       {},
                    into.skipped().counts(), into.reported().counts(),
                    into.recordings(),       outcome.fault.toStdString()};
    for (const import::key_entry& entry : keys.keys()) {
        const auto named = std::max_element(entry.named.begin(), entry.named.end());
        const auto by = static_cast<std::size_t>(named - entry.named.begin());
        result.keys.push_back(std::string(import::NAMED_BY[by]) + " " + entry.key);
    }
    return result;
}

/// A page in short: `tag[attribute=value,...]!("text" child ...)`, where `!` marks the element that
/// is pressed. The document has the number 1, its children go on from 2 in the order of the text.
class Page {
public:
    explicit Page(std::string_view text, int firstId = 2)
        : mText(text)
        , mId(firstId) {
        while (!mText.empty())
            nodes += (nodes.isEmpty() ? "" : ",") + node();
    }

    QByteArray snapshot() const {
        return R"({"type":2,"data":{"node":{"type":0,"childNodes":[)" + nodes +
               R"(],"id":1},"initialOffset":{"left":0,"top":0}},"timestamp":1})";
    }

    QByteArray nodes;
    int pressed = -1;

private:
    bool take(char c) {
        if (mText.empty() || mText.front() != c)
            return false;
        mText.remove_prefix(1);
        return true;
    }

    QByteArray until(const char* ends) {
        const std::size_t end = std::min(mText.find_first_of(ends), mText.size());
        const QByteArray taken(mText.data(), qsizetype(end));
        mText.remove_prefix(end);
        return taken;
    }

    QByteArray node() {
        while (take(' ')) {
        }
        const QByteArray id = R"(,"id":)" + QByteArray::number(mId++);
        if (take('"')) {
            const QByteArray text = until("\"");
            take('"');
            return R"({"type":3,"textContent":")" + text + '"' + id + '}';
        }
        QByteArray made = R"({"type":2,"tagName":")" + until("[!( )") + R"(","attributes":{)";
        for (char before = '['; take(before); before = ',') {
            made += (before == ',' ? ",\"" : "\"") + until("=");
            take('=');
            made += R"(":")" + until(",]") + '"';
        }
        take(']');
        if (take('!'))
            pressed = mId - 1;
        made += "}" + id + R"(,"childNodes":[)";
        if (take('(')) {
            for (bool isFirst = true; !take(')') && !mText.empty(); isFirst = false)
                made += (isFirst ? "" : ",") + node();
        }
        while (take(' ')) {
        }
        return made + "]}";
    }

    std::string_view mText;
    int mId;
};

QByteArray increment(const QByteArray& data, int time = 1) {
    return R"({"type":3,"data":{)" + data + R"(},"timestamp":)" + QByteArray::number(time) + '}';
}

/// The first numbers are the recorder's: 1 mouse down, 0 up, 2 click, 7 and 9 a touch's.
QByteArray touch(int type, int id, int time = 1, int x = 3, int y = 4) {
    return increment(R"("source":2,"type":)" + QByteArray::number(type) + R"(,"id":)" +
                         QByteArray::number(id) + R"(,"x":)" + QByteArray::number(x) + R"(,"y":)" +
                         QByteArray::number(y),
                     time);
}

QByteArray input(int id, const QByteArray& text) {
    return increment(R"("source":5,"isChecked":false,"id":)" + QByteArray::number(id) +
                     R"(,"text":")" + text + '"');
}

QByteArray array(const QByteArrayList& events) {
    return '[' + events.join(',') + ']';
}

QByteArray packed(QByteArray event, const QByteArray& version = "v1") {
    event.chop(1);
    const QByteArray bytes = qCompress(event + R"(,"v":")" + version + "\"}").mid(4);
    const QByteArray list =
        QJsonDocument(QJsonArray{QString::fromLatin1(bytes)}).toJson(QJsonDocument::Compact);
    return list.mid(1, list.size() - 2);
}

QByteArrayList each(const QByteArrayList& events,
                    const std::function<QByteArray(const QByteArray&)>& change) {
    QByteArrayList changed;
    for (const QByteArray& event : events)
        changed += change(event);
    return changed;
}

TEST(Rrweb, AllWrappingsGiveOneLog) {
    const Page page("div[id=tools](button[title=Save]!(svg)) a(\"More\")");
    QByteArrayList events{R"({"type":4,"data":{"href":"a","width":9,"height":9},"timestamp":1})",
                          page.snapshot()};
    for (int length = 0; length < 140; ++length) // what looks like an end is none, wherever it is
        events += R"({"type":5,"data":{"tag":")" + QByteArray(length, ' ') +
                  R"(}]\"}]\\","payload":{}}})";
    events += {touch(1, 4, 7), touch(0, 4, 8), touch(1, 6, 9), touch(0, 6, 10)};
    const QByteArrayList half[] = {events.mid(0, 70), events.mid(70)};
    const auto inWindow = [](QByteArray event) {
        return R"({"windowId":"w",)" + event.remove(0, 1);
    };
    const auto dataFirst = [](const QByteArray& event) {
        const auto data = event.indexOf("\"data\"");
        const auto behind = event.indexOf(",\"timestamp\"", data);
        return behind < 0 ? event
                          : '{' + event.mid(data, behind - data) + ',' + event.mid(1, data - 1) +
                                event.mid(behind + 1);
    };
    const QByteArray plain = array(events);
    QStringEncoder utf16(QStringConverter::Utf16LE, QStringConverter::Flag::WriteBom);
    const std::map<std::string, QByteArray> wrappings{
        {"events", R"({"events":)" + plain + '}'},
        {"extension", R"({"session":{"id":"s","tags":["a"]},"events":)" + plain + '}'},
        {"matrix", array({array(half[0]), array(half[1])})},
        {"lines", events.join('\n')},
        {"lines of wrappers",
         R"({"events":)" + array(half[0]) + "}\n{\"events\":" + array(half[1]) + '}'},
        {"by window", R"({"version":"2022-12-02","data":{"snapshotsByWindowId":{"w":)" + plain +
                          R"(},"person":{"events":[1]}}})"},
        {"snapshots", R"({"version":"2023-04-28","data":{"id":"i","snapshots":)" +
                          array(each(events, inWindow)) + "}}"},
        {"lines of windows", R"({"window_id":"w","data":)" + array(half[0]) +
                                 "}\n{\"window_id\":\"w\",\"data\":" + array(half[1]) + "}\n"},
        {"data first", array(each(events, dataFirst))},
        {"packed", array(each(events, [](const auto& one) { return packed(one); }))},
        {"packed lines", each(events, [](const auto& one) { return packed(one); }).join('\n')},
        {"UTF-16", utf16(QString::fromUtf8(plain))},
    };
    const Imported expected = importOf(plain);
    EXPECT_EQ(expected.log, "[\n{\n  \"down\": [7, \"tools:Save\", 3, 4],\n"
                            "  \"up\": [8, \"tools:Save\", 3, 4],\n"
                            "  \"down\": [9, \"link More\", 3, 4],\n"
                            "  \"up\": [10, \"link More\", 3, 4]\n}\n]\n");
    for (const auto& [name, text] : wrappings) {
        SCOPED_TRACE(name);
        const Imported result = importOf(text);
        EXPECT_EQ(result.log, expected.log);
        EXPECT_EQ(result.skipped, expected.skipped);
        EXPECT_THAT(result.reported, IsEmpty());
        EXPECT_EQ(result.fault, "");
        if (name != "UTF-16") {
            EXPECT_EQ(import::tell_format(text.toStdString()), import::Format::Rrweb);
        }
    }
}

TEST(Rrweb, OtherJsonIsNotTakenForIt) {
    for (const std::string_view text :
         {R"({"type":3,"user":"u"}{"type":4})", R"({"window_id":"w","event":"click"})",
          R"([{"type":"click","data":{"a":1}}])", R"({"id":1,"snapshots":[{"at":2}]})"})
        EXPECT_EQ(import::tell_format(text), import::Format::JsonLines) << text;
}

TEST(Rrweb, ElementsAreCalledByTheirBestName) {
    struct Row {
        std::string_view page;
        std::string key;
        QString rule = {};
    };

    const std::vector<Row> rows{
        {"button[data-cy=b,aria-label=a,id=i]!", "test b"},
        {"button[data-cy=b,data-mine=m]!", "test m", QStringLiteral("test-id data-mine")},
        {"button[data-cy=b,aria-label=a]!", "aria a", QStringLiteral("omit test")},
        {"button[aria-label=a,id=i]!", "aria a"},
        {"button[id=i,name=n]!", "id i"},
        {"button[id=a81f4e02-9,name=n]!", "name n"},
        {"input[name=n,title=t]!", "name n"},
        {"img[title=t,alt=a]!", "title t"},
        {"input[placeholder=City,value=Rome]!", "title City"},
        {"button!(\"Save \" b(\"all\") \" of it\")", "text button Save all of it"},
        {"button(svg(path!))", "path button>svg>path", QStringLiteral("up 1")},
        {"button[id=save](svg(path!))", "id save"},
        {"button[id=save](i(i(i(i(i!)))))", "path save:i>i>i"},
        {"div[role=tab x]!(\"Log\")", "text tab Log"},
        {"th[scope=row]!(\"Sum\")", "text rowheader Sum"},
        {"input[type=submit,value=Go]!", "text button Go"},
        {"a!(\"0123456789012345678901234567890123456789more\")",
         "text link 0123456789012345678901234567890123456789"},
        {"div!(\"any text\")", "path div"},
        {"body(ul[id=list](li(span!)))", "path list:li>span"},
        {"div[data-qa=card](p[id=p4711](b(button[id=ok]!)))", "id card:ok"},
        {"nav[aria-label=Main](div[id=menu7](a!(\"Home\")))", "text menu#:link Home"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.page);
        const Page page(row.page);
        const QByteArray text = array({page.snapshot(), touch(1, page.pressed)});
        EXPECT_THAT(importOf(text, row.rule).keys, testing::ElementsAre(row.key));
    }
}

/// However a page repeats it: as text, value, label or name, before or after the press.
TEST(Rrweb, WhatPeopleWriteIsInNoKey) {
    const auto texts = [](int id) {
        return increment(R"("source":0,"texts":[{"id":)" + QByteArray::number(id) +
                         R"(,"value":"My Secret"}],"attributes":[],"removes":[],"adds":[])");
    };
    const auto attribute = [](int id, const QByteArray& name, const QByteArray& value) {
        return increment(R"("source":0,"attributes":[{"id":)" + QByteArray::number(id) +
                         R"(,"attributes":{")" + name + R"(":")" + value + "\"}}]");
    };

    struct Row {
        std::string_view page;
        QByteArrayList before;
    };

    const std::vector<Row> rows{
        {"input[value=My Secret]!", {}},
        {"input[value=My Secret,type=submit]! input[value=My Secret]", {}},
        {"input!", {input(2, "My Secret"), attribute(2, "title", "My Secret")}},
        {"input[type=text]!", {attribute(2, "value", "My Secret"), attribute(2, "type", "submit")}},
        {"textarea!(\"My Secret\")", {}},
        {"textarea!(\"\")", {texts(3)}},
        {"div[role=textbox]!(button(\"My Secret\"))", {}},
        {"div[role=combobox]!(\"My Secret\")", {}},
        {"div[contenteditable=](p(a[title=My Secret,id=my-secret]!(\"My Secret\")))", {}},
        {"div[contenteditable=true](h1(\"\") button!(\"\")) ", {texts(4), texts(6)}},
        {"div[contenteditable=true](p(\"\")) button[aria-label=Delete my secret]!", {texts(4)}},
        {"button!(div[contenteditable=true](\"My Secret\"))", {}},
        {"button!(input[value=My Secret] textarea(\"My Secret\"))", {}},
        {"input ul(li(a!(\"Remove my  SECRET now\")))", {input(2, "My Secret")}},
        {"input a[data-testid=item-My Secret,id=My Secret]!", {input(2, "My Secret")}},
        {"input a!",
         {input(2, "My Sec"), input(2, "My Secret"), input(2, ""),
          attribute(3, "data-testid", "My Secret")}},
        {"input div[aria-label=My Secret](button!)", {input(2, "My Secret")}},
        {"button[title=My Secret]!", {input(99, "My Secret")}},
        {"select!(option[value=a](\"A\"))", {input(2, "My Secret")}},
        {"div[class=rr-mask](button!(\"My Secret\"))", {}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.page);
        const Page page(row.page);
        const QByteArrayList press{touch(1, page.pressed), touch(0, page.pressed)};
        const Imported result =
            importOf(array(QByteArrayList{page.snapshot()} + row.before + press));
        EXPECT_THAT(result.log, HasSubstr("down"));
        const QString log = QString::fromStdString(result.log).toLower();
        EXPECT_FALSE(log.contains(u"secret")) << result.log;
    }
    const Page masked("button[aria-label=*** ****]!(\"**** **\")");
    EXPECT_THAT(importOf(array({masked.snapshot(), touch(1, 2)})).keys,
                testing::ElementsAre("path button"));
}

/// Gestures with their keys, in words.
std::string gesturesOf(const std::string& log) {
    std::string words;
    for (const QString& line : QString::fromStdString(log).split(u'\n')) {
        const QStringList parts = line.split(u'"');
        if (parts.size() > 3)
            words += (words.empty() ? "" : ", ") + (parts[1] + u' ' + parts[3]).toStdString();
    }
    return words;
}

TEST(Rrweb, APressIsCountedOnce) {
    // 2 a button, 3 a label, 4 its field, 5 a list, 6 and 8 its options, 10 a menu item, 11 in it
    const Page page("button[id=b] label[id=l] input[id=f] "
                    "select[id=s](option[value=eu](\"Euro\") option(\"Dollar\")) "
                    "div[role=menuitemradio,id=m](p)");

    struct Row {
        std::string name;
        QByteArrayList events;
        std::string gestures;
    };

    const std::vector<Row> rows{
        {"mouse", {touch(1, 2), touch(0, 2), touch(2, 2)}, "down b, up b"},
        {"double click",
         {touch(1, 2), touch(0, 2), touch(2, 2), touch(1, 2), touch(0, 2), touch(2, 2),
          touch(4, 2)},
         "down b, up b, down b, up b"},
        {"tap with mouse",
         {touch(7, 2), touch(9, 2), touch(1, 2), touch(0, 2), touch(2, 2)},
         "down b, up b"},
        {"taps without mouse",
         {touch(7, 2), touch(9, 2), touch(7, 2), touch(9, 2)},
         "down b, up b, down b, up b"},
        {"tap, and mouse later",
         {touch(7, 2, 1), touch(9, 2, 2), touch(1, 2, 5000), touch(0, 2, 5001)},
         "down b, up b, down b, up b"},
        {"clicks alone", {touch(2, 2), touch(2, 3)}, "down b, up b, down l, up l"},
        {"click of a label", {touch(2, 3, 5), touch(2, 4, 6)}, "down l, up l"},
        {"clicks before presses",
         {touch(2, 2), touch(1, 3), touch(0, 3), touch(2, 3)},
         "down l, up l"},
        {"clicks and ends", {touch(0, 2), touch(2, 2)}, "down b, up b"},
        {"drag", {touch(1, 2), touch(0, 4)}, "down b, up f"},
        {"gone at its end",
         {touch(1, 2), increment(R"("source":0,"removes":[{"id":2}])"), touch(0, -1)},
         "down b, up b"},
        {"gone at its end, and what was under it",
         {touch(1, 2), increment(R"("source":0,"removes":[{"id":2}])"), touch(0, 4, 1, 5, 5)},
         "down b, up b"},
        {"gone when something else was dragged to",
         {touch(1, 2), increment(R"("source":0,"removes":[{"id":2}])"), touch(0, 4, 1, 50)},
         "down b, up f"},
        {"renamed at its end",
         {touch(1, 2), increment(R"("source":0,"attributes":[{"id":2,"attributes":{"id":"n"}}])"),
          touch(0, 2), touch(1, 2)},
         "down b, up b, down n"},
        {"menu item",
         {touch(1, 11), touch(0, 11), touch(2, 11), touch(1, 2), touch(0, 2)},
         "menu m, down b, up b"},
        {"clicked menu item", {touch(2, 10)}, "menu m"},
        {"list",
         {touch(1, 5), touch(0, 5), input(5, "eu"), input(5, "Dollar")},
         "down s, up s, menu s:eu, menu s:Dollar"},
        {"unknown value", {touch(1, 5), touch(0, 5), input(5, "pound")}, "down s, up s"},
        {"pressed option",
         {touch(1, 6), touch(0, 6), input(5, "eu"), input(5, "Dollar")},
         "menu s:eu, menu s:Dollar"},
        {"clicked option, told before and later",
         {input(5, "eu"), touch(2, 6, 2), input(5, "Dollar"), touch(2, 6, 900)},
         "menu s:eu, menu s:Dollar, menu s:eu"},
    };
    for (const Row& row : rows) {
        const Imported result = importOf(array(QByteArrayList{page.snapshot()} + row.events));
        EXPECT_EQ(gesturesOf(result.log), row.gestures) << row.name;
        EXPECT_THAT(result.reported, IsEmpty()) << row.name;
    }
}

TEST(Rrweb, PlacesAreThoseOfThePage) {
    QByteArray snapshot = Page("iframe[id=f] a[id=a]").snapshot();
    snapshot.replace(R"("left":0,"top":0)", R"("left":10,"top":20)");
    const QByteArrayList events{
        snapshot,
        touch(1, 3),
        increment(R"("source":3,"id":1,"x":100,"y":200)"),
        increment(R"("source":3,"id":3,"x":7,"y":7)"),
        touch(1, 3),
        increment(R"("source":0,"adds":[{"parentId":2,"nextId":null,"node":{"type":0,"id":20,)"
                  R"("childNodes":[{"type":2,"tagName":"a","attributes":{"id":"in"},"id":21,)"
                  R"("childNodes":[],"rootId":20}],"rootId":20}}])"),
        touch(1, 21),
        snapshot,
        touch(1, 3),
    };
    const Imported result = importOf(array(events));
    EXPECT_EQ(result.log,
              "[\n{\n  \"down\": [1, \"a\", 13, 24],\n  \"down\": [1, \"a\", 103, 204],\n"
              "  \"down\": [1, \"f:in\"],\n  \"down\": [1, \"a\", 13, 24]\n}\n]\n");
    EXPECT_THAT(result.skipped, Contains(testing::Pair("place in a frame", 1)));
}

TEST(Rrweb, WindowsThatTakeTurnsStayApart) {
    QByteArrayList events;
    for (const char* const name : {"a", "b"}) {
        const QByteArray id = name;
        events += R"({"windowId":")" + id + "\"," +
                  Page("a[id=" + id.toStdString() + "]").snapshot().mid(1);
    }
    for (const int type : {1, 0}) {
        for (const char* const name : {"b", "a", "c"})
            events += QByteArray(R"({"windowId":")") + name + "\"," + touch(type, 2).mid(1);
    }
    const Imported result = importOf(array(events));
    EXPECT_EQ(gesturesOf(result.log), "down b, up b, down a, up a");
    EXPECT_EQ(result.recordings, 2);
    EXPECT_THAT(result.reported, Contains(Key("press before the first snapshot")));
}

TEST(Rrweb, DamageIsToldAndTheRestIsRead) {
    const QByteArray page = Page("a[id=a]").snapshot();
    const QByteArray press = touch(1, 2);
    const QByteArray bomb = qCompress(QByteArray(70 << 20, ' ')).mid(4);

    struct Row {
        QByteArray text;
        std::string fault;
        std::string reported;
    };

    const std::vector<Row> rows{
        {array({page, press, touch(1, -1)}), "", "press on an unknown node"},
        {array({page, press, touch(1, 77)}), "", "press on an unknown node"},
        {array({press, page, press}), "", "press before the first snapshot"},
        {array({page, R"({"type":3,"data":{"source":2,,}})", press}), "", "broken event"},
        {array({page, R"({"data":{}})", press}), "", "event without a type"},
        {array({page, "5", press}), "", "no event"},
        {array({page, packed(press, "v9"), press}), "", "packed event of another version"},
        {array({page, "\"x\\u009cabc\"", press}), "", "packed event that cannot be unpacked"},
        {array({page, QJsonDocument(QJsonArray{QString::fromLatin1(bomb)}).toJson().trimmed(),
                press}),
         "", "packed event that cannot be unpacked"},
        {array({page, R"({"type":3,"data":"\u001fgz","cv":"2024-10"})", press}), "",
         "packed event of another version"},
        {array({page, R"({"type":5,"data":")" + QByteArray(65 << 20, 'a') + "\"}", press}), "",
         "event over 64 MB"},
        {array({page,
                R"({"type":3,"data":{"source":0,"adds":[)" + QByteArray("{},").repeated(3'000'001) +
                    "{}]}}",
                press}),
         "", "broken event"},
        {array({page, press, press}).chopped(9), "the text ends within an event", ""},
        {array({page, press}).chopped(1), "the text ends within a list of events", ""},
        {QByteArray(100'000, '[') + page + press, "the text ends within an event", ""},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.text.left(200).toStdString() + " " + row.reported);
        const Imported result = importOf(row.text);
        EXPECT_EQ(result.fault, row.fault);
        if (row.reported.empty())
            EXPECT_THAT(result.reported, IsEmpty());
        else
            EXPECT_THAT(result.reported, testing::ElementsAre(Key(row.reported)));
        if (!row.text.startsWith("[[")) {
            EXPECT_EQ(gesturesOf(result.log), "down a");
        }
    }
}

TEST(Rrweb, TreesAreReadHoweverDeep) {
    constexpr int DEPTH = 100'000;
    QByteArray node = R"({"type":2,"tagName":"a","attributes":{"id":"deep"},"id":1})";
    QByteArray opening;
    QByteArray closing;
    for (int i = 2; i < DEPTH; ++i) {
        opening += R"({"type":2,"tagName":"p","attributes":{},"childNodes":[)";
        closing += R"(],"id":)" + QByteArray::number(i) + '}';
    }
    const QByteArray tree = opening + node + closing;
    const QByteArray top = QByteArray::number(DEPTH - 1);
    const Imported result = importOf(array(
        {R"({"type":2,"data":{"node":)" + tree + "}}", touch(1, 1),
         increment(R"("source":0,"adds":[{"parentId":1,"nextId":null,"node":{"type":2,)"
                   R"("tagName":"p","attributes":{},"childNodes":[],"id":)" +
                   top + "}}]"),
         touch(1, 1), increment(R"("source":0,"removes":[{"id":)" + top + "}]"), touch(1, 1)}));
    EXPECT_EQ(gesturesOf(result.log), "down deep, down deep");
    EXPECT_THAT(result.skipped, Contains(testing::Pair("mutation of an unknown node", 1)));
    EXPECT_THAT(result.reported, Contains(Key("press on an unknown node")));
}

/// A tree as plain as can be, and the mutations that lead to it.
class PlainTree {
public:
    explicit PlainTree(unsigned seed)
        : mRandom(seed) {}

    /// One event: nodes go, one moves, others come; additions in any order.
    std::string mutate() {
        std::string removes;
        if (below(2) == 0 && mChildren.size() > 2) {
            const int id = any();
            if (id != ROOT) {
                removes = R"({"id":)" + std::to_string(id) + '}';
                remove(id);
            }
        }
        std::vector<int> placed;
        if (const int id = any(), to = any();
            id != ROOT && !isWithin(to, id) && to != mParent[id]) {
            std::erase(mChildren[mParent[id]], id);
            insert(id, to);
            placed.push_back(id);
        }
        for (std::size_t i = below(6); i > 0; --i) {
            placed.push_back(mNextId++);
            insert(placed.back(), any());
        }
        std::shuffle(placed.begin(), placed.end(), mRandom);
        std::string adds;
        for (const int id : placed)
            adds += (adds.empty() ? "" : ",") + addition(id);
        return R"({"type":3,"data":{"source":0,"removes":[)" + removes + R"(],"adds":[)" + adds +
               "]}}";
    }

    std::string shown(int id = ROOT) const {
        std::string text = std::to_string(id) + '(';
        for (const int child : mChildren.at(id))
            text += shown(child);
        return text + ')';
    }

private:
    static constexpr int ROOT = 1;

    std::size_t below(std::size_t limit) { return mRandom() % limit; }

    int any() {
        return std::next(mChildren.begin(), std::ptrdiff_t(below(mChildren.size())))->first;
    }

    bool isWithin(int id, int top) const {
        return id == top || (id != ROOT && isWithin(mParent.at(id), top));
    }

    void insert(int id, int parent) {
        mChildren[id];
        std::vector<int>& siblings = mChildren[parent];
        siblings.insert(siblings.begin() + std::ptrdiff_t(below(siblings.size() + 1)), id);
        mParent[id] = parent;
    }

    void remove(int id) {
        while (!mChildren[id].empty())
            remove(mChildren[id].back());
        std::erase(mChildren[mParent[id]], id);
        mChildren.erase(id);
    }

    std::string addition(int id) const {
        const std::vector<int>& siblings = mChildren.at(mParent.at(id));
        const auto next = std::next(std::find(siblings.begin(), siblings.end(), id));
        return R"({"parentId":)" + std::to_string(mParent.at(id)) + R"(,"nextId":)" +
               (next == siblings.end() ? "null" : std::to_string(*next)) +
               R"(,"node":{"type":2,"tagName":"p","childNodes":[],"id":)" + std::to_string(id) +
               "}}";
    }

    std::mt19937 mRandom;
    int mNextId = 2;
    std::map<int, std::vector<int>> mChildren{{ROOT, {}}};
    std::map<int, int> mParent;
};

std::string shown(const import::NodeTree& tree, import::NodeTree::Node node) {
    std::string text = std::to_string(tree.id(node)) + '(';
    for (auto child = tree.firstChild(node); child != tree.NONE; child = tree.behind(child, node))
        text += shown(tree, child);
    return text + ')';
}

TEST(Rrweb, TheTreeFollowsMutations) {
    const import::naming naming;
    for (unsigned seed = 0; seed < 40; ++seed) {
        SCOPED_TRACE(seed);
        import::WrittenTexts written;
        import::NodeTree tree(written);
        import::RrwebParser parser(naming);
        std::string text = R"({"type":2,"data":{"node":{"type":0,"childNodes":[],"id":1}}})";
        ASSERT_TRUE(tree.reset(*parser.parse(text.data(), text.size())));
        PlainTree plain(seed);
        for (int i = 0; i < 60; ++i) {
            text = plain.mutate();
            SCOPED_TRACE(text);
            tree.change(*parser.parse(text.data(), text.size()));
            ASSERT_EQ(shown(tree, tree.root()), plain.shown());
        }
        EXPECT_EQ(tree.misfits(), 0);
    }
}

/// What cannot be leaves the tree as it is, to be named from still.
TEST(Rrweb, MutationsThatCannotBeAreCounted) {
    const auto adds = [](int parent, int next, const QByteArray& node) {
        return R"({"parentId":)" + QByteArray::number(parent) + R"(,"nextId":)" +
               QByteArray::number(next) + R"(,"node":)" + node + '}';
    };
    const auto element = [](int id, const QByteArray& children = {}) {
        return R"({"type":2,"tagName":"a","attributes":{"id":"n)" + QByteArray::number(id) +
               R"("},"childNodes":[)" + children + R"(],"id":)" + QByteArray::number(id) + '}';
    };

    struct Row {
        QByteArray mutation;
        std::int64_t misfits;
    };

    const QByteArray page = Page("div[id=d](p(b(a[id=a])))").snapshot();
    const std::vector<Row> rows{
        {R"("adds":[)" + adds(4, -1, element(2)) + ']', 1},
        {R"("adds":[)" + adds(5, -1, element(1)) + ']', 1},
        {R"("adds":[)" + adds(5, 5, element(5)) + ']', 1},
        {R"("adds":[)" + adds(2, -1, element(9, element(9) + ',' + element(2))) + ']', 2},
        {R"("adds":[)" + adds(8, -1, element(9)) + ',' + adds(9, -1, element(8)) + ']', 2},
        {R"("adds":[)" + adds(2, 8, element(9)) + ',' + adds(2, 9, element(8)) + ']', 0},
        {R"("adds":[)" + adds(-1, -1, element(9)) + "],\"removes\":[{\"id\":70}]", 2},
        {R"("texts":[{"id":2,"value":"t"},{"id":70}],"attributes":[{"id":1},{"id":70}])", 4},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.mutation.toStdString());
        const Imported result =
            importOf(array({page, increment(R"("source":0,)" + row.mutation), touch(1, 5)}));
        const auto told = result.skipped.find("mutation of an unknown node");
        EXPECT_EQ(told == result.skipped.end() ? 0 : told->second, row.misfits);
        EXPECT_THAT(result.keys, Contains(testing::EndsWith(":a")));
    }
}

} // namespace
