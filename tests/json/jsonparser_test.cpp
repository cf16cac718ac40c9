#include "json/jsonparser.h"
#include "tests/common/recorder.h"

#include <QBuffer>

#include <gtest/gtest.h>

#include <string_view>
#include <vector>

namespace {

using namespace std::string_view_literals;

bool parseBytes(json::Parser& parser, QByteArray bytes, json::Reader* reader) {
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::ReadOnly);
    return parser.parse(&buffer, reader);
}

std::string parsed(std::string_view text, Pushes pushes = Pushes::Nothing) {
    json::Parser parser;
    return record(pushes, [&](json::Reader* root) {
        return parseBytes(parser, QByteArray(text.data(), qsizetype(text.size())), root);
    });
}

struct Row {
    std::string_view text;
    std::vector<std::string> lines;
    Pushes pushes = Pushes::Nothing;
};

void check(const std::vector<Row>& rows) {
    for (const Row& row : rows) {
        SCOPED_TRACE(row.text);
        std::string expected;
        for (const std::string& line : row.lines)
            expected += line + '\n';
        EXPECT_EQ(parsed(row.text, row.pushes), expected);
    }
}

TEST(Parser, ReportsMembers) {
    check({
        {R"({"a": 5})", {"{ null @0", "float 'a' 5 @0", "true"}},
        {R"({"a": "x y"})", {"{ null @0", "string 'a' 'x y' @0", "true"}},
        {R"({"a": ""})", {"{ null @0", "string 'a' null @0", "true"}},
        {R"({"": "b"})", {"{ null @0", "string null 'b' @0", "true"}},
        {R"({"a":{"b":[{}]}})", {"{ null @0", "{ 'a' @0", "[ 'b' @0", "{ null @0", "true"}},
        {R"({"a": true, "b": null, "c": -3.25})", {"{ null @0", "float 'c' -3.25 @0", "true"}},
        {R"({"a": "{[,:]}"})", {"{ null @0", "string 'a' '{[,:]}' @0", "true"}},
        {R"("t": 4 )", {"float 't' 4 @0", "true"}},
    });
}

TEST(Parser, CountsTheScalarsOfAnArray) {
    check({
        {R"(["a", "", 2, true, 3])",
         {"[ null @0", "string null 'a' @0", "float null 2 @1", "float null 3 @2", "true"}},
        {"[96227.35463319387,4379.8665549108028]", // longer than what a quotient gives exactly
         {"[ null @0", "float null 96227.354633193871 @0", "float null 4379.8665549108027 @1",
          "true"}},
        {"[1[2 3]4]", {"[ null @0", "[ null @0", "float null 3 @0", "float null 4 @0", "true"}},
        {R"(["a" 1"b",])", {"[ null @0", "string null 'a' @0", "string null 'b' @1", "true"}},
        {"[7,[8,[9]]]",
         {"[ null @0", "float null 7 @0", "[ null @0", "float null 8 @0", "[ null @0",
          "float null 9 @0", "] @1", "pop", "] @1", "pop", "] @1", "pop", "true"},
         Pushes::Itself},
    });
}

TEST(Parser, MemberValueTakesItsNameWithIt) {
    check({
        {R"([{"t": "u"}, "s"])",
         {"[ null @0", "{ null @0", "string 't' 'u' @0", "string null 's' @0", "true"}},
        {R"([{"t": 1}, "s"])",
         {"[ null @0", "{ null @0", "float 't' 1 @0", "string null 's' @0", "true"}},
        {R"([{"t": true}, "s"])", {"[ null @0", "{ null @0", "string null 's' @0", "true"}},
        {R"([{"t" bare}, "s"])",
         {"[ null @0", "{ null @0", "string null 't' @0", "string null 's' @1", "true"}},
    });
}

TEST(Parser, QuoteAfterBackslashEndsTheString) {
    check({
        {R"({"a": "x\"y"})", {"{ null @0", "string 'a' 'x\\' @0", "false"}},
        {R"(["\u0041\\"])", {"[ null @0", "string null '\\u0041\\\\' @0", "true"}},
    });
}

TEST(Parser, BareValueRunsOverOpeningBracketsColonsAndQuotes) {
    check({
        {"[1{},2]", {"[ null @0", "{ null @0", "float null 2 @0", "true"}},
        {R"([1"a"2])", {"[ null @0", "string null 'a' @0", "true"}},
        {"[4:5,6]", {"[ null @0", "float null 6 @0", "true"}},
        {"{a:5,:6 }", {"{ null @0", "float null 6 @0", "true"}},
        {"[1\xc2\xa0"
         "2\xe2\x80\xa8"
         "3\xc2\x85"
         "4\v5]",
         {"[ null @0", "float null 1 @0", "float null 2 @1", "float null 3 @2", "float null 4 @3",
          "float null 5 @4", "true"}},
        {"[1\xe2\x80\x8b ]", {"[ null @0", "true"}}, // a zero-width space is none
    });
}

TEST(Parser, EndOfTextFlushesNothing) {
    check({
        {"", {"true"}},
        {R"({"a": 1)", {"{ null @0", "true"}},
        {R"(["a", "b")", {"[ null @0", "string null 'a' @0", "true"}},
        {"\"", {"false"}},
        {"[\"a", {"[ null @0", "false"}},
        {"\0[1]"sv, {"true"}},
        {"[1\0,2]"sv, {"[ null @0", "true"}},
        {"[\"a\0b\"]"sv, {"[ null @0", "false"}},
        {"[1,\0\"a\"]"sv, {"[ null @0", "float null 1 @0", "true"}},
    });
}

/// A byte that begins a character and is followed by another one is a character of its own.
TEST(Parser, ReadsTheSameWhereverAReadEnds) {
    const std::string text = "[\"caf\xe9\",\"\xe9\xe9\xf0\x9f\x98\x80\xe2\x82\",\"\xef\xbb\xbf\"]";
    const std::string expected = parsed(text);
    for (std::size_t before = 65536 - text.size(); before <= 65536; ++before)
        ASSERT_EQ(parsed(std::string(before, ' ') + text), expected) << before;
}

TEST(Parser, ClosingBracketPopsToItsOwnKind) {
    check({
        {"{]", {"{ null @0", "] @0", "pop", "false"}},
        {"}", {"} @0", "pop", "false"}},
        {"[{{],2]3",
         {"[ null @0", "{ null @0", "{ null @0", "float null 2 @0", "] @1", "pop", "false"}},
        {R"([{"a":1])",
         {"[ null @0", "{ null @0", "string null 'a' @0", "float null 1 @1", "true"}},
        {"{[}", {"{ null @0", "[ null @0", "true"}},
        {R"({"a"[{ ])",
         {"{ null @0", "[ 'a' @0", "{ null @0", "] @0", "pop", "] @0", "pop", "true"},
         Pushes::Itself},
        {"[{}]}",
         {"[ null @0", "{ null @0", "} @0", "pop", "] @0", "pop", "} @0", "pop", "false"},
         Pushes::Itself},
    });
}

TEST(Parser, EndsAreToldToTheReadersPushedInside) {
    check({
        {R"({"n": 7, "e": ["a", 3, "", true, {"k": "v"}, 4]})",
         {"{ null @0", "float 'n' 7 @0", "[ 'e' @0", "string null 'a' @0", "float null 3 @1",
          "{ null @0", "string 'k' 'v' @0", "float null 4 @2", "] @3", "pop", "true"},
         Pushes::ItselfInArrays},
        {R"([{"a": [1]}, 2])",
         {"[ null @0", "{ null @0", "child [ 'a' @0", "child float null 1 @0", "child } @0",
          "child pop", "float null 2 @0", "true"},
         Pushes::ChildInObjects},
        {"{}", {"{ null @0", "} @0", "pop", "} @0", "pop", "true"}, Pushes::TwiceInObjects},
    });
}

TEST(Parser, DropsCarriageReturnsInTextMode) {
    QByteArray bytes("[\"a\r\nb\"]");
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::ReadOnly | QIODevice::Text);
    const auto parse = [&](json::Reader* root) { return json::Parser().parse(&buffer, root); };
    EXPECT_EQ(record(Pushes::Nothing, parse), "[ null @0\nstring null 'a\nb' @0\ntrue\n");
}

TEST(Parser, RefusesNullArguments) {
    json::Parser parser;
    json::Reader reader;
    QBuffer empty;
    empty.open(QIODevice::ReadOnly);
    EXPECT_FALSE(parser.parse(nullptr, &reader));
    EXPECT_FALSE(parser.parse(&empty, nullptr));
    EXPECT_FALSE(parser.push(nullptr));
    EXPECT_TRUE(parser.parse(&empty, &reader));
}

/// Clears the parser as it is popped.
struct LeavingReader : json::Reader {
    explicit LeavingReader(json::Parser& from)
        : parser(from) {}

    void jsonPop() override { parser.clear(); }

    json::Parser& parser;
};

TEST(Parser, StopsWhenAReaderClearsIt) {
    json::Parser parser;
    const auto clear = [&parser](json::Stack&) { parser.clear(); };
    std::string lines;
    Recorder reader("", lines, clear);
    EXPECT_FALSE(parseBytes(parser, "[1,{\"a\":2}]", &reader));
    EXPECT_EQ(lines, "[ null @0\nfloat null 1 @0\n{ null @0\n");
    EXPECT_EQ(parser.arrayIndex(), 0);
    LeavingReader leaving(parser);
    EXPECT_FALSE(parseBytes(parser, "{}]", &leaving));
}

TEST(Parser, ClosesMillionsOfBracketsWithoutWalkingTheStack) {
    const qsizetype depth = 1'000'000;
    const QByteArray text = QByteArray("[").repeated(depth) + QByteArray("{1 }").repeated(depth) +
                            QByteArray("]").repeated(depth);
    json::Parser parser;
    json::Reader deaf;
    EXPECT_TRUE(parseBytes(parser, text, &deaf));
}

} // namespace
