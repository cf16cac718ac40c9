#include "domain/domainblackboard.h"
#include "domain/domainlog.h"
#include "domain/domainnestreader.h"
#include "json/jsonparser.h"
#include "tests/common/describe.h"

#include <QBuffer>

#include <gmock/gmock.h>

#include <new>
#include <random>
#include <set>

namespace {

using domain::Nest;
using testing::ElementsAre;
using testing::IsEmpty;

void read(domain::NestReader& reader, Nest& target, const QByteArray& text) {
    QBuffer buffer;
    buffer.setData(text);
    buffer.open(QIODevice::ReadOnly);
    reader.begin(target);
    domain::read_log(buffer, reader);
}

void read(Nest& target, const QByteArray& text) {
    domain::Blackboard analysis;
    domain::NestReader reader(analysis);
    read(reader, target, text);
}

/// Keeps what each recording hands to the analysis.
class Recorder : public domain::Analysis {
public:
    void on(Nest& nest, const domain::Trace& trace) override {
        std::vector<int> indices;
        for (int i = 0; i < trace.mIndices.size(); ++i)
            indices.push_back(trace.at(i));
        mTraces.push_back(indices);
        mSizes.push_back(nest.size());
    }

    std::vector<std::vector<int>> mTraces;
    std::vector<int> mSizes;
};

TEST(NestReader, ReadsTheEventsItCanUse) {
    const struct {
        const char* text;
        std::vector<std::string> branches;
    } rows[] = {
        {"", {}},
        {"[1, \"a\"]", {}},
        {"{}", {}},
        {"{\"down\":[0,\"K\",12,8]}", {"K 1 (12 8 1 1): "}},
        {"{\"up\":[0,\"K\",12,8]}", {"K 2 (12 8 1 1): "}},
        {"{\"menu\":[0,\"K\",-12.5,8,9,\"x\"]}", {"K 3 (-12.5 8 1 1): "}},
        {"{\"Down\":[0,\"K\",12,8],\"move\":[0,\"K\",1,2]}", {}},
        {"{\"down\":[0,\"K\"]}", {"K 1 (0 0 0 0): "}},
        {"{\"down\":[0,\"K\",5]}", {"K 1 (5 0 1 0): "}},
        {"{\"down\":[\"t\",\"K\",\"x\",7]}", {"K 1 (0 7 0 1): "}},
        {"{\"down\":[0,7,5,6]}", {}},
        {"{\"down\":[0]}", {}},
        {"{\"down\":[0,\"\",\"K\",5,6]}", {"K 1 (5 6 1 1): "}},
        {"{\"down\":[0,true,\"K\",null,5,6]}", {"K 1 (5 6 1 1): "}},
        {"{\"down\":[0,\"K\",1,1],\"up\":[0,\"K\",4,9]}", {"K 1 (1 1 4 9): "}},
        {"[{\"down\":[0,\"K\",1,1]},{\"menu\":[0,\"K\",3,1]}]", {"K 1 (1 1 3 1): "}},
        {"{\"down\":[0,\"K\",1e300,\"\",nan]}", {"K 1 (inf nan 1 1): "}},
        {"{\"down\":[0,\"A\",1,1],\"down\":[0,\"B\",1,1]", {" -1 (0 0 0 0): ", " -1 (0 0 0 0): "}},
        {"{\"down\":[0,\"Edit\",12,8],\"menu\":[0,\"Paste\",12,30],\"down\":[0,\"Copy\",300,420],"
         "\"up\":[0,\"Copy\",300,420],\"down\":[0,\"Edit\",14,9],\"menu\":[0,\"Paste\",12,30]}",
         {"Edit 1 (12 8 3 2): 0,1,2,0x0", "Paste 3 (12 30 1 1): ", "Copy 1 (300 420 1 1): "}},
    };

    for (const auto& row : rows) {
        SCOPED_TRACE(row.text);
        Nest nest;
        read(nest, row.text);
        EXPECT_EQ(model::describe(nest), row.branches);
    }
}

TEST(NestReader, HandsOnTheTraceWithoutUpEvents) {
    Recorder recorder;
    domain::NestReader reader(recorder);
    Nest nest;
    read(reader, nest,
         "[{},{\"up\":[0,\"A\"]},{\"down\":[0,\"B\"],\"up\":[0,\"B\"],\"menu\":[0,\"A\"]}]");
    EXPECT_THAT(recorder.mTraces, ElementsAre(IsEmpty(), ElementsAre(1, 0)));
    EXPECT_EQ(reader.recordingCount(), 3);
    EXPECT_EQ(reader.eventCount(), 4);
    EXPECT_EQ(nest.branchAt(0)->mGesture, domain::GESTURE_UP);
}

TEST(NestReader, ANestedObjectDiscardsWhatCameBeforeIt) {
    Recorder recorder;
    domain::NestReader reader(recorder);
    Nest nest;
    read(reader, nest,
         "{\"down\":[0,\"lost\"],\"o\":{\"down\":[0,\"in\"]},\"down\":[0,\"after\"]}");
    EXPECT_THAT(model::describe(nest),
                ElementsAre(" -1 (0 0 0 0): ", "in 1 (0 0 0 0): ", "after 1 (0 0 0 0): "));
    // The outer recording's trace still begins with the nested one's events.
    EXPECT_THAT(recorder.mTraces, ElementsAre(ElementsAre(1), ElementsAre(1, 2)));
}

TEST(NestReader, KnownKeysKeepTheirIndices) {
    domain::Blackboard analysis;
    domain::NestReader reader(analysis);
    Nest nest;
    read(reader, nest, "{\"down\":[0,\"A\",1,1],\"down\":[0,\"B\",1,1]}");
    read(reader, nest, "{\"down\":[0,\"C\",1,1],\"down\":[0,\"B\",5,5]}");
    EXPECT_THAT(model::describe(nest),
                ElementsAre("A 1 (1 1 1 1): ", "B 1 (1 1 5 5): ", "C 1 (1 1 1 1): "));
    Nest other;
    read(reader, other, "{\"down\":[0,\"B\"]}");
    EXPECT_THAT(model::describe(other), ElementsAre("B 1 (0 0 0 0): "));
    EXPECT_EQ(reader.recordingCount(), 1);
    EXPECT_EQ(reader.eventCount(), 1);
}

TEST(NestReader, AnalysisBaseLeavesRecordingsAlone) {
    domain::Analysis none;
    domain::NestReader reader(none);
    Nest nest;
    read(reader, nest, "{\"down\":[0,\"A\"],\"down\":[0,\"B\"],\"down\":[0,\"A\"]}");
    EXPECT_THAT(model::describe(nest), ElementsAre("A 1 (0 0 0 0): ", "B 1 (0 0 0 0): "));
}

/// Adds a branch of its own behind those of each recording.
class AddingStage : public domain::Analysis {
public:
    void on(Nest& nest, const domain::Trace& /*trace*/) override {
        domain::Branch branch;
        model::fill(branch, QStringLiteral("added"));
        nest.set(nest.size(), branch);
    }
};

TEST(NestReader, TheTargetGrowsForWhatAnAnalysisAdds) {
    AddingStage analysis;
    domain::NestReader reader(analysis);
    Nest nest;
    read(reader, nest, "[{\"down\":[0,\"A\"]},{\"down\":[0,\"A\"]},{\"down\":[0,\"B\"]}]");
    EXPECT_THAT(model::describe(nest), ElementsAre("A 1 (0 0 0 0): ", "added 1 (0 0 0 0): ",
                                                   "B 1 (0 0 0 0): ", "added 1 (0 0 0 0): "));
}

TEST(NestReader, MakesItsPatternsFromThoseOfEarlierLogs) {
    const QByteArray event = "\"down\":[0,\"a\"],\"down\":[0,\"b\"],";
    domain::Blackboard analysis;
    domain::NestReader reader(analysis);
    Nest shown, next;
    std::set<const domain::Pattern*> made;
    for (int log = 0; log < 30; ++log) {
        next.clear();
        read(reader, next, "{" + event.repeated(40) + "}{" + event.repeated(40) + "}");
        for (int i = 0; i < next.size(); ++i) {
            for (const domain::Pattern* pattern : next.branchAt(i)->mPatterns)
                made.insert(pattern);
        }
        shown.swap(next);
    }
    ASSERT_GT(shown.branchAt(0)->patternSize(), 0);
    const int ofOneLog = shown.branchAt(0)->patternSize() + shown.branchAt(1)->patternSize();
    EXPECT_LE(made.size(), static_cast<std::size_t>(4 * ofOneLog));
}

/// Recordings of random lengths, some within others; the last one is not closed.
QByteArray manyRecordings() {
    std::mt19937 random(12);
    QByteArray log;
    for (int i = 0; i < 400; ++i) {
        log += random() % 8 == 0 ? "{\"down\":[0,\"outer\"],{" : "{";
        for (auto left = random() % 60; left > 0; --left)
            log += "\"down\":[0,\"" + QByteArray::number(quint64(random() % (5U + i / 20U))) +
                   "\",1,2],";
        log += random() % 8 == 0 ? "},\"down\":[0,\"1\"],\"menu\":[0,\"m\"]}" : "}";
    }
    return log + "{\"down\":[0,\"lost\"]";
}

/// Reads beside the analysis from the event `from` on; whether all was read and analysed.
bool readBeside(domain::Analysis& analysis, Nest& target, QByteArray log, int from) {
    domain::NestReader reader(analysis);
    QBuffer buffer(&log);
    buffer.open(QIODevice::ReadOnly);
    reader.begin(target);
    reader.analyseBeside(from);
    const bool isWhole = json::Parser().parse(&buffer, &reader);
    try {
        reader.finish();
        return isWhole;
    } catch (const std::bad_alloc&) {
        return false;
    }
}

TEST(NestReader, FindsTheSameWhenAnotherThreadAnalyses) {
    const QByteArray log = manyRecordings();
    Nest expected;
    read(expected, log);
    for (const int from : {0, 1000}) {
        domain::Blackboard analysis;
        Nest nest;
        readBeside(analysis, nest, log, from);
        EXPECT_EQ(model::describe(nest), model::describe(expected));
    }
}

/// Finds no memory for one of the recordings.
class FailingStage : public domain::Analysis {
public:
    void on(Nest& /*nest*/, const domain::Trace& /*trace*/) override {
        if (++mCalls == 3)
            throw std::bad_alloc();
    }

    bool mayRunBeside() const override { return true; }

    int mCalls = 0;
};

TEST(NestReader, WhatFailsOnAnotherThreadEndsTheRead) {
    FailingStage analysis;
    Nest nest;
    EXPECT_FALSE(
        readBeside(analysis, nest, QByteArray("{\"down\":[0,\"a\"]}").repeated(10'000), 0));
    EXPECT_EQ(analysis.mCalls, 3);
    EXPECT_THAT(model::describe(nest), ElementsAre("a 1 (0 0 0 0): "));
}

} // namespace
