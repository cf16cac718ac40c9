#include "tests/report/reportrun.h"

#include <QByteArray>
#include <QDir>
#include <QFile>
#include <QImage>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QStringDecoder>

#include <gmock/gmock.h>

#include <random>
#include <vector>

namespace {

using testing::HasSubstr;
using testing::StartsWith;

const QByteArray EDITING = R"({"down":[0,"Edit",12,8],"menu":[0,"Paste",12,30],)"
                           R"("down":[0,"Copy",300,0.1],"down":[0,"Edit",14,9]})";

TEST_F(Report, WritesJsonLinesExactly) {
    write("a.json", EDITING);
    const result r = run("--format json a.json a.json");
    const std::string line =
        R"({"log": "a.json", "complete": true, "branches": [)"
        R"({"index": 0, "key": "Edit", "gesture": "down", "bounds": )"
        R"({"x": 12, "y": 8, "width": 3, "height": 2}, "rank": 0, "weight": 1, )"
        R"("patterns": [{"count": 0, "sequence": [0, 1, 2, 0], "occurrences": 1, )"
        R"("recordings": 1, "places": [{"recording": 1, "event": 1}]}], )"
        R"("events": 2, "recordings": 1}, )"
        R"({"index": 1, "key": "Paste", "gesture": "menu", "bounds": )"
        R"({"x": 12, "y": 30, "width": 1, "height": 1}, "rank": 0, "weight": 0, "patterns": [], )"
        R"("events": 1, "recordings": 1}, )"
        R"({"index": 2, "key": "Copy", "gesture": "down", "bounds": )"
        R"({"x": 300, "y": 0.10000000149011612, "width": 1, "height": 1}, )"
        R"("rank": 0, "weight": 0, "patterns": [], "events": 1, "recordings": 1}], )"
        R"("recordings": 1, "events": 4, "warnings": []})"
        "\n";
    EXPECT_EQ(r.out, line + line);
    EXPECT_EQ(r.status, 0);
}

TEST_F(Report, JsonStaysValidWhateverTheLogHeld) {
    const QByteArray oddKey = "\\ tab\t bell\x07 \xed\xa0\x80 \xff";
    write("closed.json", "{\"down\":[0,\"" + oddKey + "\"]}");
    write("odd.json", "{\"down\":[0,\"" + oddKey + "\",1e300,nan],\"up\":[0,\"cut");
    const QString lone = QString::fromUtf16(u"{\"down\":[0,\"\xd800x\"]}");
    write("surrogate.json",
          QByteArray("\xff\xfe") +
              QByteArray(reinterpret_cast<const char*>(lone.utf16()), 2 * lone.size()));
    const result r = run("--format json odd.json surrogate.json closed.json");
    QStringDecoder utf8(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    const QString decoded = utf8(QByteArray::fromStdString(r.out));
    EXPECT_FALSE(utf8.hasError());
    const QStringList lines = decoded.split(u'\n', Qt::SkipEmptyParts);
    ASSERT_EQ(lines.size(), 3);
    const QJsonObject odd = QJsonDocument::fromJson(lines[0].toUtf8()).object();
    EXPECT_FALSE(odd[u"complete"].toBool(true));
    EXPECT_EQ(odd[u"branches"][0][u"key"].toString(), QString());
    EXPECT_EQ(odd[u"branches"][0][u"gesture"].toString(), u"none");
    const QJsonObject surrogate = QJsonDocument::fromJson(lines[1].toUtf8()).object();
    EXPECT_TRUE(surrogate[u"branches"][0][u"key"].toString().endsWith(u'x'));
    const QJsonObject closed = QJsonDocument::fromJson(lines[2].toUtf8()).object();
    EXPECT_EQ(closed[u"branches"][0][u"key"].toString(), QString::fromUtf8(oddKey));
    EXPECT_EQ(r.status, 3);
}

TEST_F(Report, JsonWritesNullForWhatIsNotFinite) {
    write("far.json", "{\"down\":[0,\"K\",1e300,nan]}");
    const result r = run("--format json far.json");
    EXPECT_THAT(r.out, HasSubstr("{\"x\": null, \"y\": null, \"width\": 1, \"height\": 1}"));
}

TEST_F(Report, QuotesCsvFieldsThatNeedIt) {
    write("a,b.json", downs({"x", "two\nlines", "x", "plain", "x"}));
    const result r = run("--format csv a,b.json");
    EXPECT_EQ(r.out, "log,key,count,length,sequence,occurrences,recordings,places,key_events,"
                     "key_recordings\r\n"
                     "\"a,b.json\",x,0,3,\"x > two\nlines > x\",1,1,1:1,3,1\r\n"
                     "\"a,b.json\",x,0,3,x > plain > x,1,1,1:3,3,1\r\n"
                     "\"a,b.json\",x,0,5,\"x > two\nlines > x > plain > x\",1,1,1:1,3,1\r\n");
}

TEST_F(Report, TextRanksKeysAndFitsTheScreen) {
    QList<QByteArray> keys{"rare", "x", "rare", "often", "y", "often", "y", "often"};
    for (int i = 0; i < 60; ++i) {
        const QByteArray key = "k" + QByteArray::number(i) + QByteArray(150, 'z');
        keys += {key, "x\x1b[2J", key};
    }
    write("a.json", downs(keys));
    const result r = run("a.json");
    EXPECT_THAT(r.out, StartsWith("a.json\n1 recording, 188 events, 65 distinct keys, "));
    EXPECT_LT(r.out.find("  often\n"), r.out.find("  rare\n"));
    EXPECT_THAT(r.out, HasSubstr("more keys with patterns"));
    const QStringList lines = QString::fromStdString(r.out).split(u'\n');
    for (const QString& line : lines)
        EXPECT_LE(line.size(), 100) << line.toStdString();
    EXPECT_EQ(r.out.find('\x1b'), std::string::npos);

    const result all = run("--all a.json");
    EXPECT_EQ(all.out.find("more"), std::string::npos);
    EXPECT_THAT(all.out, HasSubstr(std::string(150, 'z')));
}

TEST_F(Report, ReportsTheOthersWhenOneFileFails) {
    write("good.json", EDITING);
    write("cut.json", EDITING + "\"open");

    const struct {
        const char* arguments;
        int status;
        const char* complaint;
    } rows[] = {
        {"good.json", 0, ""},
        {"-", 0, ""},
        {"none.json good.json", 1, "quillon-report: none.json: No such file or directory\n"},
        {". good.json", 1, "quillon-report: .: "},
        {"'' good.json", 1, "quillon-report: : No file name specified\n"},
        {"cut.json", 3, "quillon-report: cut.json: "},
        {"none.json cut.json", 1, "quillon-report: none.json"},
        {"cut.json none.json", 1, "quillon-report: cut.json"},
    };

    for (const auto& row : rows) {
        SCOPED_TRACE(row.arguments);
        const result r = run(row.arguments, EDITING);
        EXPECT_EQ(r.status, row.status);
        EXPECT_THAT(r.err, StartsWith(row.complaint));
        EXPECT_EQ(r.err.empty(), row.status == 0);
        EXPECT_THAT(r.out, HasSubstr("1 recording, 4 events, 3 distinct keys, 1 pattern\n"));
    }
}

TEST_F(Report, TextTellsLongSequencesApart) {
    QList<QByteArray> keys;
    for (int round = 0; round < 4; ++round) {
        for (int step = 0; step < 12; ++step)
            keys += "an application:page:step " + QByteArray::number(step);
        keys.insert(keys.size() - 4, "an application:row " + QByteArray::number(round) + ":cell");
    }
    for (int i = 0; i < 100; ++i)
        keys += QByteArray::number(i); // a pattern is shorter than an eighth of its recording
    write("a.json", downs(keys));
    const std::string out = run("a.json").out;
    std::string rows;
    for (const char* row : {"0", "1", "2"})
        rows += std::string("          0      1     1  …step 0 > …step 1 > … 6 more > …row ") +
                row + ":cell > … 3 more > …step 11 > …step 0\n";
    EXPECT_THAT(run("a.json").out, HasSubstr("1  an application:page:step 0\n" + rows));
}

/// A text as UTF-16, the low byte first, without a mark.
QByteArray utf16(const QByteArray& text) {
    QByteArray bytes;
    for (const char c : text)
        (bytes += c) += '\0';
    return bytes;
}

QByteArray noise() {
    std::mt19937 rng(7);
    QByteArray bytes;
    for (int i = 0; i < 200'000; ++i)
        bytes += static_cast<char>(rng());
    return bytes;
}

TEST_F(Report, TellsWhatIsWrongWithALog) {
    QFile example(QStringLiteral(EXAMPLES "/editing.json"));
    ASSERT_TRUE(example.open(QIODevice::ReadOnly));
    const QByteArray ab = R"("down":[0,"a"],"down":[0,"b"])";
    const QByteArray log = "{" + ab + "}";
    const QByteArray blanks(200'000, ' '); // more than is read at once
    const char* const inRecording = "the text ends inside a recording, which is lost";
    const char* const inString = "the text ends inside a string";
    const char* const otherKind = "a bracket is closed by one of the other kind";
    const char* const stray = "a closing bracket closes nothing, and what follows was not read";
    const char* const outside = "there is text before or behind the document";
    const char* const none = "no event was found";
    const char* const nul = "a NUL ends the text, and what follows was not read";
    const auto looksLike = [&](const char* form) {
        return std::string(none) + "; it looks like " + form;
    };
    const auto imports = [&](const char* form) {
        return looksLike(form) + "; quillon-import makes a log of it";
    };

    const struct {
        QByteArray text;
        std::vector<std::string> warnings;
        int recordings = 0;
        int events = 0;
    } rows[] = {
        {log, {}, 1, 2},
        {"\xef\xbb\xbf \n" + log + blanks + "\n", {}, 1, 2},
        {"\xff\xfe" + utf16(log + "\n"), {}, 1, 2},
        {" [\n\t] ", {}},

        {example.read(500), {inRecording}, 0, 11},
        {"[" + log.chopped(1), {inRecording}, 0, 2},
        {"[" + log.chopped(1) + "]", {otherKind}, 0, 2},
        {R"({"down":[0,"a",1,1})", {none, otherKind}, 1},
        {"[" + log, {"the text ends inside an array"}, 1, 2},
        {log.chopped(1) + ",\"open", {inString}, 0, 2},
        {log + "}", {stray}, 1, 2},
        {"{]}", {none, stray, otherKind}},
        {log + blanks + "x", {outside}, 1, 2},
        {log + log, {outside}, 2, 4},
        {"log = " + log, {outside}, 1, 2},
        {"\xff\xfe" + utf16(log + "!"), {outside}, 1, 2},
        {log + '\0' + log, {nul}, 1, 2},
        {R"({"events":[{"down":[0,"a"]},{"down":[0,"b"]},{"down":[0,"a"]}]})",
         {"each event has an object of its own, so nothing can repeat"},
         4,
         3},

        {"{}", {none}, 1},
        {"[0]", {none}},
        {"", {std::string(none) + "; it is empty"}},
        {noise(), {none}},
        {"Dear reader, this is prose, no log.\nIt has commas, too, in its lines.\n", {none}},
        {"\x1f\x8b\x08" + noise(), {looksLike("gzip")}},
        {QByteArray("PK\3\4\0\0trace.trace", 17), {imports("a zipped trace of Playwright")}},
        {QByteArray("PK\3\4\0\0xl/sheet", 14), {looksLike("a zip archive")}},
        {utf16(log), {looksLike("UTF-16 without a byte order mark")}},
        {"\n<?xml version=\"1.0\"?><page/>", {looksLike("XML")}},
        {"\n<?xml version=\"1.0\"?><log/>", {imports("an XES log")}},
        {R"({"title":"t","steps":[{"type":"click","selectors":[["#a"]]}]})",
         {imports("a script of user steps")},
         2},
        {"{\"key\":\"a\"}\r\n{\"key\":\"b\"}\n", {imports("JSON lines")}, 2},
        {R"([{"type":4,"data":{"href":"a\"b"},"timestamp":1}])", {imports("a recording of rrweb")}},
        {"\"case\",\"key, quoted\"\r\n1,\"two\nlines\"\r\n", {imports("CSV")}},
        {"case\tkey\n1\ta, b\n", {imports("CSV")}},
    };

    for (const auto& row : rows) {
        SCOPED_TRACE(row.text.left(60).toStdString());
        write("a.json", row.text);
        const result r = run("--format json a.json -", row.text);
        EXPECT_EQ(r.status, row.warnings.empty() ? 0 : 3);
        std::string told;
        for (const char* name : {"a.json", "-"}) {
            for (const std::string& warning : row.warnings)
                told += std::string("quillon-report: ") + name + ": warning: " + warning + "\n";
        }
        EXPECT_EQ(r.err, told);
        const QJsonObject line =
            QJsonDocument::fromJson(QByteArray::fromStdString(r.out).split('\n')[1]).object();
        std::vector<std::string> warnings;
        for (const QVariant& warning : line[u"warnings"].toArray().toVariantList())
            warnings.push_back(warning.toString().toStdString());
        EXPECT_EQ(warnings, row.warnings);
        EXPECT_EQ(line[u"recordings"].toInt(), row.recordings);
        EXPECT_EQ(line[u"events"].toInt(), row.events);
    }
}

int greenPixels(const QImage& image) {
    int green = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            green += image.pixelColor(x, y) == QColor(0, 255, 0) ? 1 : 0;
    }
    return green;
}

TEST_F(Report, DrawsWhatTheWindowShows) {
    write("a.json", EDITING);
    for (const char* image : {"a.png", "b.PNG --rank", "c.svg --rank"}) {
        const result r = run(std::string("a.json --size 300x200 --image ") + image);
        EXPECT_EQ(r.status, 0);
        EXPECT_EQ(r.out + r.err, "");
    }
    const QImage plain(path("a.png"));
    EXPECT_EQ(plain.size(), QSize(300, 200));
    EXPECT_EQ(plain.pixelColor(0, 199), QColor(Qt::white));
    EXPECT_EQ(greenPixels(plain), 0);
    EXPECT_GT(greenPixels(QImage(path("b.PNG"))), 50);
    QFile file(path("c.svg"));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const std::string text = file.readAll().toStdString();
    EXPECT_THAT(text, HasSubstr("#00ff00"));
    EXPECT_EQ(text.find("<image"), std::string::npos); // vectors, not pixels
}

TEST_F(Report, SavesAPictureWholeOrNotAtAll) {
    write("a.json", EDITING);

    const struct {
        const char* script;
        const char* image;
        const char* reason;
    } rows[] = {
        {"", "none/a.png", "No such file or directory"},
        {"trap '' XFSZ; ulimit -f 1;", "a.png", "File too large"}, // as on a full disk
        {"trap '' XFSZ; ulimit -f 1;", "a.svg", "File too large"},
        {"mkfifo b.svg;", "b.svg", "it is no regular file"},
    };

    write("a.png", "before");
    for (const auto& row : rows) {
        const result r = run(std::string("a.json --image ") + row.image, {}, row.script);
        EXPECT_EQ(r.status, 1);
        EXPECT_EQ(r.err, std::string("quillon-report: ") + row.image + ": " + row.reason + "\n");
    }
    QFile file(path("a.png"));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(file.readAll(), "before");
    EXPECT_EQ(QDir(mDir.path()).entryList(QDir::Files | QDir::System).size(), 3);
}

TEST_F(Report, RejectsWrongUsage) {
    const struct {
        const char* arguments;
        const char* fault;
    } rows[] = {
        {"", "no log given"},
        {"--format xml", "no log given"},
        {"--format xml a", "unknown format 'xml'"},
        {"--format csv --all a", "--all belongs to the text report"},
        {"--no-such-option a", "Unknown option 'no-such-option'."},
        {"--image x.gif a", "the picture's name must end in .png or .svg"},
        {"--image '' a", "the picture's name must end in .png or .svg"},
        {"--image x.png --format text a", "--format, --output and --all do not go with --image"},
        {"--image x.png --all a", "--format, --output and --all do not go with --image"},
        {"--rank a", "--size and --rank belong to --image"},
        {"--image x.png --size 0x5 a", "no size of a picture: '0x5'; each side is 1 to 16384"},
        {"--image x.png --size 9x16385 a",
         "no size of a picture: '9x16385'; each side is 1 to 16384"},
        {"--image x.png a b", "a picture shows one log"},
        {"--image x.png --compare A=a B=b", "a picture shows one log"},
        {"--image x.png --rank --pattern k a", "--rank and --pattern do not go together"},
        {"--names a", "--names and --pattern belong to --image"},
        {"--min-count x a", "--min-count needs a whole number of 0 or more, not 'x'"},
        {"--top 0 a", "--top needs a whole number of 1 or more, not '0'"},
        {"--min-recordings 101% a",
         "--min-recordings needs a number of recordings or 0% to 100%, not '101%'"},
        {"--min-recordings % a",
         "--min-recordings needs a number of recordings or 0% to 100%, not '%'"},
        {"--min-recordings nan% a",
         "--min-recordings needs a number of recordings or 0% to 100%, not 'nan%'"},
        {"--through '[z-a]' a", "no glob: '[z-a]'"},
        {"--through '' a", "no glob: ''"},
        {"--sort rank a", "--sort takes count, occurrences, recordings or length, not 'rank'"},
        {"--loops twice a", "--loops takes once, not 'twice'"},
        {"--csv-text a", "--csv-text belongs to --format csv"},
        {"--format partial --top 1 a",
         "a partial holds all that was found, so nothing can be asked of it"},
        {"--together --merge a", "--together, --merge and --compare do not go together"},
        {"--compare A=a", "--compare needs two groups, as in BEFORE=a.json,b.json AFTER=c.json"},
        {"--compare A=a B=", "--compare needs two groups, as in BEFORE=a.json,b.json AFTER=c.json"},
        {"--compare A=a A=b", "both groups are named 'A'"},
        {"--compare A=a,b B=c,./a", "'./a' is given twice"},
        {"--compare --sort count A=a B=b",
         "--sort does not go with --compare, which sorts by evidence"},
    };

    for (const auto& row : rows) {
        SCOPED_TRACE(row.arguments);
        const result r = run(row.arguments);
        EXPECT_EQ(r.status, 2);
        EXPECT_EQ(r.err,
                  std::string("quillon-report: ") + row.fault + "\nTry 'quillon-report --help'.\n");
        EXPECT_EQ(r.out, "");
    }
    EXPECT_EQ(run("--help").status, 0);
    EXPECT_THAT(run("--version").out, StartsWith("quillon-report "));
}

} // namespace
