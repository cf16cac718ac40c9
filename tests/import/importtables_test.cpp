#include "import/importcsvrows.h"
#include "import/importeventstore.h"
#include "tests/import/imported.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <map>
#include <random>
#include <vector>

namespace {

QByteArray utf16(const char* text, const char* mark) {
    QByteArray bytes(mark);
    for (const QChar c : QString::fromUtf8(text))
        bytes.append(static_cast<char>(c.unicode() & 0xff))
            .append(static_cast<char>(c.unicode() >> 8));
    return bytes;
}

TEST(ImportTables, ReadSeparatedValues) {
    const char* const ab = R"({ "down": [0, "a"], "down": [0, "b"] })";
    checkImports({
        {"commas", "k,x\na,1\nb,2\n", "--key k --places as-is", ab, "2 events, 2 keys"},
        {"semicolons, CR LF", "k;x\r\na;1\r\nb;2\r\n", "--key k --places as-is", ab, ""},
        {"tabs, no last line end, blank lines", "\nk\tx\n\na\t1\n\nb\t2", "--key k --places as-is",
         ab, ""},
        {"bars, byte order mark", "\xef\xbb\xbfk|x\na|1\nb|2", "--key k --places as-is", ab, ""},
        {"UTF-16 with a mark", utf16("k,x\na,1\nb,2\n", "\xff\xfe"), "--key k --places as-is", ab,
         ""},
        {"UTF-16 without", utf16("k,x\na,1\nb,2\n", ""), "--key k --places as-is", ab, ""},
        {"Latin-1", "k\ncaf\xe9\n", "--key k --places as-is", R"({ "down": [0, "café"] })", ""},
        {"quoted cells hold separators, line breaks and quotes",
         "k,l\n\"a,\nb\",\"say \"\"hi\"\"\"\n", "--key k,l --places as-is",
         R"({ "down": [0, "a, b:say _hi_"] })", ""},
        {"an open quote", "k\na\n\"b", "--key k --places as-is", R"({ "down": [0, "a"] })",
         "ends within a row"},
        {"rows of other lengths", "k,x\na,1\nb\nc,1,2\n", "--key k --places as-is",
         R"({ "down": [0, "a"] })", "2 other columns than the first row"},
        {"no such column", "k,x\na,1\n", "--key z", "", "there are: k, x"},
        {"no key named", "k,x\na,1\n", "", "", "make the key; there are: k, x"},
        {"no key named of what is JSON", R"([{"k":{"n":1},"x":2},{"y":3}])", "", "",
         "make the key; there are: k, x"},
        {"a row of nothing but separators", "k,x\na,1\n" + QByteArray(1 << 20, ',') + "\nb,2\n",
         "--key k --places as-is", ab, "1 other columns than the first row"},
        {"a first row that is cut", "k,\"x", "--key k", "", "first row"},
        {"empty keys, and cells left out of keys", "k,l\n,\na,\n,b\n", "--key k,l --places as-is",
         ab, "1 no key"},
        {"control characters and length", "k\n a\x01:\\  b \n" + QByteArray(70, 'x') + "\n",
         "--key k --places as-is",
         R"({ "down": [0, "a___ b"], "down": [0, "xxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxx"] })",
         ""},
    });
}

TEST(ImportTables, MapColumnsToEvents) {
    const QByteArray mice =
        "k,g,x,y,t\na,mousedown,1,2,20\na,mouseup,1.5,2,30\nb,choose,-3,4,10\nc,move,5,6,40\n";
    checkImports({
        {"gestures by glob, the first that fits", mice,
         "--key k --gesture g --map *up=up,*down=down,ch?ose=menu,*=skip --x x --y y",
         R"({ "down": [0, "a", 1, 2], "up": [0, "a", 1.5, 2], "menu": [0, "b", -3, 4] })",
         "skipped: 1 move"},
        {"sorted by number, which is the time", mice, "--key k --sort t --places as-is",
         R"({ "down": [10, "b"], "down": [20, "a"], "down": [30, "a"], "down": [40, "c"] })", ""},
        {"both coordinates in one column", "k,p\na,\"(3, 4)\"\nb,5;6\nc,\n", "--key k --xy p",
         R"({ "down": [0, "a", 3, 4], "down": [0, "b"], "down": [0, "c"] })", "1 bad position"},
        {"ISO times", "k,t\na,1970-01-01T00:00:02Z\nb,1970-01-01T00:00:01.5\nc,soon\n",
         "--key k --sort t --places as-is",
         R"({ "down": [1500, "b"], "down": [1500, "c"], "down": [2000, "a"] })",
         "1 bad number or time"},
        {"cases in the order of their first row, apart", "c,k\n1,a\n2,b\n1,c\n",
         "--key k --case c --places as-is --no-join",
         R"({ "down": [0, "a"], "down": [0, "c"] }, { "down": [0, "b"] })", "2 recordings"},
        {"cases joined, which is usual", "c,k\n1,a\n2,b\n1,c\n", "--key k --case c --places as-is",
         R"x({ "down": [0, "(start)", 0, 0], "down": [0, "a"], "down": [0, "c"], "down": [0, "(start)", 0, 0], "down": [0, "b"] })x",
         "2 recordings"},
        {"keys without places get cells", "k\na\nb\na\nc\nd\ne\n", "--key k",
         R"({ "down": [0, "a", 0, 0], "down": [0, "b", 120, 0], "down": [0, "a", 0, 0], "down": [0, "c", 0, 60], "down": [0, "d", 120, 60], "down": [0, "e", 240, 0] })",
         ""},
        {"JSON lines with paths", R"({"t":{"n":"a"},"t.x":1,"y":2}
{"t":{"n":"b","x":"3"},"y":4.5}
[] {"t":5})",
         "--key t.n --x t.x --y y", R"({ "down": [0, "a", 1, 2], "down": [0, "b", 3, 4.5] })",
         "1 no key"},
        {"a JSON array, cut", R"([{"k":"a"},{"k":"b"},{"k")", "--from table --key k --places as-is",
         R"({ "down": [0, "a"], "down": [0, "b"] })", "ends within a row"},
        {"a line of more values than memory is taken for",
         R"({"k":"a","n":[)" + QByteArray("1,").repeated(1'000'001) + "1]}\n{\"k\":\"b\"}",
         "--key k --places as-is", R"({ "down": [0, "b"] })", "1 no object, or too large a one"},
    });
}

/// The cells of all rows but what an open quote begins, one character after the other.
std::vector<std::vector<std::string>> plainRows(const std::string& text) {
    std::vector<std::vector<std::string>> rows;
    std::vector<std::string> row{""};

    enum { Start, Plain, Quoted, Behind } at = Start;

    for (std::size_t i = 0; i < text.size(); ++i) {
        const char c = text[i];
        const bool isEnd = at != Quoted && (c == '\n' || c == '\r');
        if (isEnd && (row.size() > 1 || at != Start))
            rows.push_back(row);
        if (isEnd)
            row = {""};
        else if (at != Quoted && c == ',')
            row.emplace_back();
        else if (at == Start && c == '"')
            at = Quoted;
        else if (at == Quoted && c == '"' && i + 1 < text.size() && text[i + 1] == '"')
            row.back() += text[i++];
        else if (at == Quoted && c == '"')
            at = Behind;
        else if (at != Behind)
            row.back() += c;
        if (isEnd || (at != Quoted && c == ','))
            at = Start;
        else if (at == Start)
            at = Plain;
    }
    if (at != Quoted && (row.size() > 1 || at != Start))
        rows.push_back(row);
    return rows;
}

TEST(CsvRows, AreThoseOfReadingCharacterByCharacter) {
    const std::string pieces[] = {"x",  "plain cell", ",",    ",,",      "\n",
                                  "\r", "\"",         "\"\"", "a,b,c\n", "\"q, \n\"\"\","};
    std::mt19937 random(11);
    for (int round = 0; round < 3000; ++round) {
        std::string text = "a,b,c\n";
        for (std::size_t i = random() % 60; i > 0; --i)
            text += pieces[random() % std::size(pieces)];
        SCOPED_TRACE(text);
        QByteArray bytes = QByteArray::fromStdString(text);
        QBuffer buffer(&bytes);
        buffer.open(QIODevice::ReadOnly);
        import::Bytes source(buffer);
        import::CsvRows rows(source);
        rows.choose({QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("c")});
        const auto plain = plainRows(text);
        for (std::size_t i = 1; i < plain.size(); ++i) {
            const import::Rows::Next next = rows.next();
            ASSERT_EQ(next == import::Rows::Next::Row, plain[i].size() == 3);
            for (std::size_t cell = 0; next == import::Rows::Next::Row && cell < 3; ++cell)
                ASSERT_EQ(rows.cell(cell), plain[i][cell]);
        }
        const import::Rows::Next last = rows.next();
        EXPECT_TRUE(last == import::Rows::Next::End || last == import::Rows::Next::Cut);
    }
}

TEST(ImportTables, RoundNumbersToThousandthsAsTheLibraryDoes) {
    std::mt19937 random(12);
    QByteArray table = "x\n";
    std::string expected;
    for (int i = 0; i < 5000; ++i) {
        const double size = std::pow(10, static_cast<double>(random() % 24) - 6);
        const double number = (static_cast<double>(random()) / 4e9 - 0.5) * size;
        const QByteArray text =
            QByteArray::number(number, 'g', 1 + static_cast<int>(random() % 17));
        table += text + '\n';
        const double thousandths = std::round(text.toDouble() * 1000) / 1000;
        expected += (i > 0 ? ", " : "") + std::string(R"("down": [0, "k", )");
        for (const char* const end : {", ", "]"}) {
            char digits[32];
            expected.append(digits,
                            std::abs(thousandths) < 9e12
                                ? std::to_chars(digits, std::end(digits), thousandths + 0.0,
                                                std::chars_format::fixed)
                                      .ptr
                                : std::to_chars(digits, std::end(digits), text.toDouble()).ptr);
            expected += end;
        }
    }
    QByteArray keyed;
    for (const QByteArray& line : table.split('\n'))
        keyed += line.isEmpty() ? line : "k;" + line + '\n';
    EXPECT_EQ(import_of(keyed, "--key k --x x --y x").log, "{ " + expected + " }");
}

TEST(ImportTables, PutKeysThroughRules) {
    const QByteArray keys = "k\nrow 12 cell 3\nrow 7 cell 3\nicon/ok\nad 1\n";
    checkImports({
        {"digits", keys, "--key k --places as-is --rule digits~#",
         R"({ "down": [0, "row # cell #"], "down": [0, "row # cell #"], "down": [0, "icon/ok"], "down": [0, "ad #"] })",
         "rule 'digits #': 3 events"},
        {"ignore before merge before rename, whatever their order", keys,
         "--key k --places as-is --rule rename~rows~=~table --rule merge~row*~=~rows --rule "
         "ignore~ad?1",
         R"({ "down": [0, "table"], "down": [0, "table"], "down": [0, "icon/ok"] })",
         "skipped: 1 ignored by a rule"},
        {"expressions with groups", keys, R"(--key k --places as-is --rule /^row~(\d+)/~=~row~\1)",
         R"({ "down": [0, "row 12"], "down": [0, "row 7"], "down": [0, "icon/ok"], "down": [0, "ad 1"] })",
         ""},
        {"globs pass slashes", keys, "--key k --places as-is --rule ignore~\"*o*\"",
         R"({ "down": [0, "ad 1"] })", "rule 'ignore \"*o*\"': 3 events"},
        {"a rule that meets nothing is told", keys, "--key k --rule ignore~z* --rule ignore~*", "",
         "rule 'ignore z*': matched nothing"},
        {"wrong rules", keys, "--key k --rule merge~a", "", "what the key becomes is missing"},
        {"wrong expressions", keys, "--key k --rule ignore~/(/", "", "no regular expression"},
        {"wrong names", keys, "--key k --rule omit~colour", "", "no name is made of 'colour'"},
        {"unknown rules", keys, "--key k --rule drop~a", "", "no rule is called 'drop'"},
    });
}

TEST(ImportTables, ListKeysByTheirNumber) {
    EXPECT_EQ(import_of("k\na\nb\nb\n", "--key k").keys,
              "       2  b  (2 given)\n       1  a  (1 given)\n");
}

TEST(ImportLogs, ComeThroughUnchangedButForRules) {
    checkImports({
        {"all there is",
         R"([{"down":[5,"a:b",1,2],"up":[6,"a:b",1,2],"x":[1,"c"]},{"menu":[7,"m"]},{}])", "",
         R"({ "down": [5, "a:b", 1, 2], "up": [6, "a:b", 1, 2] }, { "menu": [7, "m"] })",
         "without events: 1 recording"},
        {"rules", R"({"down":[0,"a:b"],"down":[0,"c:b"]})", "--rule rename~b~=~B",
         R"({ "down": [0, "a:B"], "down": [0, "c:B"] })", ""},
        {"what was read of a broken one", R"({"down":[0,"a"]}])", "", R"({ "down": [0, "a"] })",
         "malformed"},
        {"a key that is no name",
         R"([{"down":[0,")" + QByteArray((1 << 20) + 1, 'x') + R"("],"up":[0,"a"]}])", "",
         R"({ "up": [0, "a"] })", "1 key over 1 MB"},
    });
}

/// More events than are held, against a plain stable sort.
TEST(EventStore, TellsCasesInOrderHoweverManyThereAre) {
    std::mt19937 random(7);
    const import::Rules rules;

    struct plain {
        double order;
        int number;
    };

    std::vector<std::vector<plain>> cases;
    std::map<unsigned, std::size_t> known;
    import::EventStore store;
    for (int i = 0; i < 900'000; ++i) {
        const auto name = static_cast<unsigned>(random() % 50);
        const auto at = known.emplace(name, known.size()).first->second;
        cases.resize(known.size());
        const auto order = static_cast<double>(random() % 1000);
        cases[at].push_back({order, i});
        import::event event;
        event.key = "k";
        event.time = i;
        ASSERT_TRUE(store.add(std::to_string(name), order, event));
    }
    QBuffer expected;
    QBuffer found;
    for (QBuffer* buffer : {&expected, &found})
        buffer->open(QIODevice::WriteOnly);
    import::KeyTable keys(rules);
    import::LogWriter plainLog(expected);
    import::Collector plainly(keys, plainLog);
    for (auto& events : cases) {
        std::stable_sort(events.begin(), events.end(),
                         [](const plain& a, const plain& b) { return a.order < b.order; });
        plainly.beginRecording();
        for (const plain& each : events) {
            import::event event;
            event.key = "k";
            event.time = each.number;
            plainly.add(event);
        }
    }
    plainLog.finish();
    import::LogWriter log(found);
    import::Collector collector(keys, log);
    ASSERT_TRUE(store.tell(collector));
    log.finish();
    EXPECT_TRUE(found.data() == expected.data());
}

} // namespace
