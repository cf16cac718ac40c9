#include "tests/report/reportrun.h"

#include <QCryptographicHash>
#include <QImage>
#include <QRectF>
#include <QRegularExpression>

#include <gmock/gmock.h>

#include <random>
#include <vector>

namespace {

using testing::HasSubstr;
using testing::StartsWith;

class Answers : public Report {
protected:
    /// The columns key, count, length and sequence of what a question leaves, line by line.
    std::string rowsOf(const std::string& question) {
        const QString out = QString::fromStdString(run("--format csv " + question + " a.json").out);
        std::string rows;
        for (const QString& line : out.split(QStringLiteral("\r\n")).sliced(1)) {
            const QStringList cells = line.split(u',');
            if (cells.size() > 4)
                rows += cells[4].toStdString() + "; ";
        }
        return rows;
    }
};

TEST_F(Answers, QuestionsLeaveWhatTheyAskFor) {
    // Of four recordings: x a x in three of them, a x a in two, p:q r s p:q once.
    write("a.json", "[" + downs({"x", "a", "x", "a"}) + downs({"x", "a", "x", "p:q"}) +
                        downs({"a", "x", "a", "x"}) + downs({"p:q", "r", "s", "p:q"}) + "]");

    const struct {
        const char* question;
        const char* rows;
        const char* told;
    } rows[] = {
        {"", "x > a > x; a > x > a; p:q > r > s > p:q; ", ""},
        {"--min-count 2", "x > a > x; ", "3 patterns, 1 of them shown"},
        {"--min-occurrences 2", "x > a > x; a > x > a; ", "3 patterns, 2 of them shown"},
        {"--min-recordings 3", "x > a > x; ", "3 patterns, 1 of them shown"},
        {"--min-recordings 51%", "x > a > x; ", "3 patterns, 1 of them shown"},
        {"--min-recordings 50%", "x > a > x; a > x > a; ", "3 patterns, 2 of them shown"},
        {"--min-length 4", "p:q > r > s > p:q; ", "3 patterns, 1 of them shown"},
        {"--max-length 3", "x > a > x; a > x > a; ", "3 patterns, 2 of them shown"},
        {"--through 'p*' --through '?'", "p:q > r > s > p:q; ", "3 patterns, 1 of them shown"},
        {"--sort length", "p:q > r > s > p:q; x > a > x; a > x > a; ",
         "3 patterns, 3 of them shown"},
        {"--top 2", "x > a > x; a > x > a; ", "3 patterns, 2 of them shown"},
        {"--sort length --top 1", "p:q > r > s > p:q; ", "3 patterns, 1 of them shown"},
        {"--loops once", "x > a > x; p:q > r > s > p:q; ", "3 patterns, 2 of them shown"},
        {"--through none", "", "3 patterns, 0 of them shown"},
    };

    for (const auto& row : rows) {
        SCOPED_TRACE(row.question);
        EXPECT_EQ(rowsOf(row.question), row.rows);
        const std::string question = row.question;
        const std::string told = row.told;
        const bool isAsked = !told.empty();
        const result csv = run("--format csv " + question + " a.json");
        EXPECT_EQ(csv.err, isAsked ? "quillon-report: a.json: " + told + "\n" : "");
        EXPECT_EQ(csv.status, 0);
        const std::string totals = "a.json\n4 recordings, 16 events, 5 distinct keys, 3 patterns\n";
        EXPECT_THAT(run(question + " a.json").out, StartsWith(totals + told));
        EXPECT_EQ(run("--format json " + question + " a.json").out.find("\"shown\"") !=
                      std::string::npos,
                  isAsked);
    }
}

TEST_F(Answers, ALoopIsListedWhereMostRecordingsHaveIt) {
    write("a.json",
          "[" + downs({"a", "b", "c", "a", "b"}) + "{}" + downs({"b", "c", "a", "b"}) + "]");
    EXPECT_THAT(run("--loops once a.json").out, HasSubstr("      1      2     2  b > c > a > b\n" +
                                                          std::string(26, ' ') + "also at a\n"));
    EXPECT_EQ(run("--loops once --format csv a.json").out,
              "log,key,count,length,sequence,occurrences,recordings,places,key_events,"
              "key_recordings,found_at\r\n"
              "a.json,b,1,4,b > c > a > b,2,2,1:2 3:1,4,2,b | a\r\n");
    EXPECT_THAT(run("--loops once --format json a.json").out, HasSubstr("\"found_at\": [1, 0]"));
}

TEST_F(Answers, CellsCanBeKeptFromBeingFormulae) {
    write("a.json", downs({"=1+2", "b", "=1+2"}));
    EXPECT_THAT(run("--format csv a.json").out, HasSubstr("a.json,=1+2,0,3,=1+2 > b > =1+2,"));
    EXPECT_THAT(run("--format csv --csv-text a.json").out,
                HasSubstr("a.json,'=1+2,0,3,'=1+2 > b > =1+2,"));
}

/// A recording of random presses, menu choices and releases, perhaps with another one in it.
QByteArray randomRecording(std::mt19937& rng) {
    constexpr const char* GESTURES[] = {"down", "down", "down", "up", "menu"};
    const auto below = [&](unsigned limit) { return static_cast<unsigned>(rng()) % limit; };
    QByteArray text = "{";
    for (unsigned left = below(40); left > 0; --left) {
        text += "\"" + QByteArray(GESTURES[below(5)]) + "\":[0,\"k" + QByteArray::number(below(4)) +
                "\"";
        for (unsigned i = below(3); i > 0; --i)
            text += "," + QByteArray::number(static_cast<double>(below(9000)) / 8 - 300);
        text += "],";
        if (below(40) == 0)
            text += "\"in\":" + randomRecording(rng) + ",";
    }
    return text + "}";
}

TEST_F(Answers, PartsPutTogetherAreTheWhole) {
    std::mt19937 rng(5);
    for (int log = 0; log < 12; ++log) {
        std::vector<QByteArray> parts(1 + rng() % 5);
        const std::string logs = std::to_string(log) + ".";
        QByteArray whole;
        for (QByteArray& part : parts) {
            for (unsigned left = rng() % 4; left > 0; --left)
                part += randomRecording(rng) + ",";
            whole += part;
        }
        std::string script = "rm -f part.*;";
        std::string names;
        for (std::size_t i = 0; i < parts.size(); ++i) {
            const std::string name = logs + std::to_string(i);
            write(name.c_str(), "[" + parts[i] + "]");
            script += QUILLON_REPORT " --format partial - <" + name + " >part." +
                      std::to_string(i) + " 2>/dev/null;";
            names += (i > 0 ? " + " : "") + name;
        }
        write("whole", "[" + whole + "]");
        const std::string expected = run("--format json - <whole").out;
        EXPECT_EQ(run("--format json --merge part.*", {}, script).out, expected);
        const std::string merge = QUILLON_REPORT " --merge --format partial ";
        EXPECT_EQ(run("--format json --merge -", {}, "cat part.* | " + merge + "- |").out,
                  expected);
        const QString together =
            QString::fromStdString(run("--format json --together " + logs + "*").out)
                .replace(QString::fromStdString("\"" + names + "\""), QStringLiteral("\"-\""));
        EXPECT_EQ(together.toStdString(), expected);
    }
}

TEST_F(Answers, TellsWhatIsWrongWithPartials) {
    write("a.json", downs({"x", "y", "x"}));
    EXPECT_EQ(run("--format partial a.json >a.part").status, 0);
    QFile file(path("a.part"));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QByteArray whole = file.readAll();
    QByteArray later = whole;
    later[16] = 9;
    QByteArray damaged = whole;
    damaged.back() = static_cast<char>(damaged.back() ^ 1);
    QByteArray endless = whole;
    endless[26] = 16; // 2^52 bytes
    // With a right sum, and a list of 2^31 - 1 warnings.
    const QByteArray body = QByteArray::fromHex("ffffffff01000000000000000000000000ffffff7f");
    const QByteArray announced = whole.first(20) + char(body.size()) + QByteArray(7, 0) +
                                 QCryptographicHash::hash(body, QCryptographicHash::Sha1) + body;

    const struct {
        QByteArray bytes;
        const char* fault;
    } rows[] = {
        {"", "it is cut short"},
        {whole.first(30), "it is cut short"},
        {whole.chopped(1), "it is cut short"},
        {whole + whole.first(100), "it is cut short"},
        {"{\"down\":[0,\"x\"]}", "it is no partial"},
        {later, "it is a partial of version 9; this program reads version 1"},
        {damaged, "it is damaged"},
        {endless, "it is cut short"},
        {announced, "it is damaged"},
    };

    for (const auto& row : rows) {
        SCOPED_TRACE(row.fault);
        write("b.part", row.bytes);
        const result r = run("--merge a.part b.part");
        EXPECT_EQ(r.status, 2);
        EXPECT_EQ(r.err, std::string("quillon-report: b.part: ") + row.fault + "\n");
        EXPECT_EQ(r.out, "");
    }
    EXPECT_EQ(run("--merge a.part none.part").status, 1);
}

TEST_F(Answers, ComparesTwoGroups) {
    const QByteArray with = downs({"x", "y", "x"});
    const QByteArray without = downs({"x", "y"});
    write("a.json", "[" + with.repeated(9) + without + "]");
    write("b.json", "[" + without + with + "]");
    write("c.json", "[" + without.repeated(11) + downs({"y", "z", "y"}) + "]");
    const result r = run("--format csv --compare 'NEW, better=c.json' OLD=a.json,b.json");
    EXPECT_EQ(r.err, "");
    EXPECT_EQ(r.out, "first,second,key,length,sequence,first_recordings,first_of,"
                     "second_recordings,second_of,difference,low,high,p,q\r\n"
                     "\"NEW, better\",OLD,x,3,x > y > x,0,12,10,12,0.833333,0.461891,0.953035,"
                     "6.73038e-05,0.000134608\r\n"
                     "\"NEW, better\",OLD,y,3,y > z > y,1,12,0,12,-0.0833333,-0.35388,"
                     "0.168641,1,1\r\n");
    EXPECT_THAT(run("--compare NEW=c.json OLD=a.json,b.json").out,
                HasSubstr("   NEW               OLD  difference   95 % interval          p"));

    write("empty.json", "[]");
    const result few = run("--compare A=b.json B=c.json --format json --top 1");
    EXPECT_EQ(few.status, 3);
    EXPECT_EQ(few.err, "quillon-report: warning: A has only 2 recordings; so few show no more than "
                       "large differences\n");
    EXPECT_THAT(few.out, HasSubstr("\"recordings\": [1, 0], \"shares\": [0.5, 0], "));
    EXPECT_THAT(few.out, HasSubstr("\"found\": 2, \"shown\": 1, \"warnings\": [\"A has only 2"));
    const result none = run("--compare A=a.json B=empty.json");
    EXPECT_EQ(none.status, 2);
    EXPECT_EQ(none.err, "quillon-report: B: the group has no recordings\n");
    EXPECT_EQ(run("--compare A=a.json B=none.json").status, 1);
}

int darkPixels(const QImage& image) {
    int dark = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            dark += image.pixelColor(x, y).lightness() < 80 ? 1 : 0;
    }
    return dark;
}

TEST_F(Answers, PicturesShowWhatIsAskedFor) {
    write("a.json", R"({"down":[0,"x",1,1],"down":[0,"y",9,9],"down":[0,"x",1,1],)"
                    R"("down":[0,"z",1,9],"down":[0,"x",1,1]})");
    const auto draw = [&](const std::string& arguments) {
        EXPECT_EQ(run("a.json --size 400x300 --image a.png " + arguments).status, 0) << arguments;
        return QImage(path("a.png"));
    };
    const QImage all = draw("");
    EXPECT_NE(all, draw("--through z"));
    const QImage selected = draw("--pattern 'x > z > x'");
    EXPECT_GT(darkPixels(selected), darkPixels(all) + 50);
    EXPECT_NE(selected, draw("--pattern 'x > y > x'"));
    const result none = run("a.json --image a.png --through y --pattern 'x > z > x'");
    EXPECT_EQ(none.status, 2);
    EXPECT_EQ(none.err, "quillon-report: a.json: there is no pattern 'x > z > x' to be drawn\n");
}

/// What the numbers of an expression's matches make.
template <typename Box>
std::vector<QRectF> boxesIn(const QString& svg, const char* expression, const Box& boxOf) {
    std::vector<QRectF> boxes;
    for (auto match = QRegularExpression(QString::fromLatin1(expression)).globalMatch(svg);
         match.hasNext();) {
        std::vector<qreal> numbers;
        for (const QString& number : match.next().capturedTexts().sliced(1))
            numbers.push_back(number.toDouble());
        boxes.push_back(boxOf(numbers));
    }
    return boxes;
}

TEST_F(Answers, NoNameLiesOnAnotherOrOnALeaf) {
    QByteArray text = "{";
    for (int i = 0; i < 150; ++i) { // the last third at one place
        const int cell = i < 100 ? i : 0;
        const QByteArray at =
            QByteArray::number(cell % 10 * 80) + "," + QByteArray::number(cell / 10 * 25);
        text += "\"down\":[0,\"key " + QByteArray::number(i) + "\"," + at + "],";
    }
    write("a.json", text + "}");
    EXPECT_EQ(run("a.json --names --size 900x300 --image a.svg").status, 0);
    QFile file(path("a.svg"));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QString svg = QString::fromUtf8(file.readAll());
    using Numbers = const std::vector<qreal>&;
    std::vector<QRectF> boxes =
        boxesIn(svg, "<rect x=\"([^\"]+)\" y=\"([^\"]+)\" width=\"([^\"]+)\" height=\"([^\"]+)\"",
                [](Numbers n) { return QRectF(n[0], n[1], n[2], n[3]); });
    boxes.erase(boxes.begin()); // the picture itself
    EXPECT_GT(boxes.size(), 90U);
    EXPECT_LT(boxes.size(), 150U); // there is no room for all
    const std::vector<QRectF> leaves =
        boxesIn(svg, "<circle cx=\"([^\"]+)\" cy=\"([^\"]+)\" r=\"([^\"]+)\"",
                [](Numbers n) { return QRectF(n[0] - n[2], n[1] - n[2], 2 * n[2], 2 * n[2]); });
    EXPECT_EQ(leaves.size(), 150U);
    for (std::size_t i = 0; i < boxes.size(); ++i) {
        EXPECT_TRUE(QRectF(0, 0, 900, 300).contains(boxes[i]));
        for (std::size_t j = 0; j < i; ++j)
            EXPECT_FALSE(boxes[i].intersects(boxes[j]));
        for (const QRectF& leaf : leaves)
            EXPECT_FALSE(boxes[i].intersects(leaf));
    }
}

} // namespace
