#include "domain/domainnest.h"
#include "tests/common/describe.h"

#include <QStringList>

#include <gmock/gmock.h>

namespace {

using domain::Branch;
using domain::Nest;
using testing::ElementsAre;

Branch* filled(Branch& branch, const char* key, int gesture = domain::GESTURE_DOWN,
               const QRectF& bounds = QRectF()) {
    model::fill(branch, QString::fromLatin1(key), gesture, bounds);
    return &branch;
}

void addPattern(Branch& branch, const std::vector<int>& sequence, int count) {
    domain::Pattern pattern;
    model::fill(pattern, sequence, count);
    EXPECT_TRUE(branch.addPattern(pattern));
}

/// What `print` sends to the message stream.
template <typename Printed>
QStringList messagesOf(const Printed& printed) {
    static QStringList messages;
    messages.clear();
    const auto handler = qInstallMessageHandler(
        [](QtMsgType, const QMessageLogContext&, const QString& text) { messages.append(text); });
    printed.print();
    qInstallMessageHandler(handler);
    return messages;
}

TEST(Branch, IsValidWithAKeyAlone) {
    Branch branch;
    EXPECT_FALSE(branch.isValid());
    branch.mGesture = domain::GESTURE_DOWN;
    EXPECT_FALSE(branch.isValid());
    branch.mKey = QStringLiteral("k");
    addPattern(branch, {0, 1, 0}, 0);
    EXPECT_TRUE(branch.isValid());
    branch.clear();
    EXPECT_EQ(model::describe(branch), " -1 (0 0 0 0): ");
}

TEST(Branch, MergesByKey) {
    const QRectF at10(10, 20, 1, 1);
    const QRectF at30(30, 5, 1, 1);

    const struct {
        const char* into;
        const char* from;
        QRectF fromBounds;
        bool merged;
        const char* result;
    } rows[] = {
        {"", "B", at10, true, "B 3 (10 20 1 1): 0,1,0x2"},
        {"B", "B", at10, true, "B 2 (10 5 21 16): 5,6,5x0 0,1,0x2"},
        {"B", "B", QRectF(), true, "B 2 (30 5 1 1): 5,6,5x0 0,1,0x2"},
        {"B", "b", at10, false, "B 2 (30 5 1 1): 5,6,5x0"},
    };

    for (const auto& row : rows) {
        SCOPED_TRACE(row.result);
        Branch into;
        Branch from;
        filled(into, row.into, domain::GESTURE_UP, at30);
        if (into.isValid())
            addPattern(into, {5, 6, 5}, 0);
        filled(from, row.from, domain::GESTURE_MENU, row.fromBounds);
        addPattern(from, {0, 1, 0}, 2);
        EXPECT_EQ(into.merge(from), row.merged);
        EXPECT_EQ(model::describe(into), row.result);
    }
}

TEST(Branch, CountsItsPatterns) {
    Branch branch;
    EXPECT_EQ(branch.maxPatternCount(), 0);
    EXPECT_EQ(branch.patternWeight(), 0);
    addPattern(branch, {0, 1, 0}, 0);
    addPattern(branch, {0, 2, 0}, 2);
    addPattern(branch, {0, 3, 0}, 0);
    addPattern(branch, {0, 3, 0}, 9); // known: one more
    EXPECT_EQ(branch.patternSize(), 3);
    EXPECT_EQ(branch.patternWeight(), 6);
    EXPECT_EQ(branch.maxPatternCount(), 2);
    EXPECT_EQ(branch.patternCount(1), 2);
    EXPECT_EQ(branch.patternCount(-1), 0);
    EXPECT_EQ(branch.patternCount(3), 0);
    EXPECT_EQ(branch.patternAt(3), nullptr);
    EXPECT_EQ(branch.patternAt(-1), nullptr);
    EXPECT_EQ(model::describe(*branch.patternAt(2)), "0,3,0x1");
}

TEST(Branch, IsTakenOnlyIntoABranchOfItsKey) {
    Branch branch, other;
    model::fill(branch, QStringLiteral("k"));
    model::fill(other, QStringLiteral("o"));
    addPattern(other, {0, 1, 0}, 0);
    EXPECT_FALSE(branch.take(other));
    EXPECT_FALSE(branch.hasPatterns());
    EXPECT_TRUE(other.hasPatterns());
}

TEST(Nest, ItsFactoryCopiesBranches) {
    const Nest::Factory factory(false);
    Branch branch, copy;
    model::fill(branch, QStringLiteral("k"));
    EXPECT_EQ(factory.setObject(&copy, &branch), &copy);
    EXPECT_EQ(factory.setObject(&copy, nullptr), &copy);
    EXPECT_EQ(model::describe(copy), model::describe(branch));
}

TEST(Trace, IsCopiedAndHasNothingOutside) {
    domain::Trace trace, copy;
    trace.mIndices.add(7);
    copy = trace;
    EXPECT_EQ((copy = *&copy).at(0), 7);
    EXPECT_EQ(copy.at(1), -1);
    EXPECT_EQ(copy.at(-1), -1);
}

TEST(Nest, MergesAnotherNestAsFarAsKeysAgree) {
    Nest nest;
    Nest other;
    Branch branch;
    nest.set(0, *filled(branch, "a"));
    other.set(0, *filled(branch, "clash"));
    other.set(1, *filled(branch, "b"));
    EXPECT_FALSE(nest.merge(other));
    EXPECT_THAT(model::describe(nest), ElementsAre("a 1 (0 0 0 0): ", "b 1 (0 0 0 0): "));
}

TEST(Nest, CopiesAndRecyclesItsBranches) {
    Nest nest;
    Nest other;
    Branch branch;
    other.set(1, *filled(branch, "b"));
    addPattern(*other.branchAt(1), {1, 0, 1}, 3);
    nest.set(0, *filled(branch, "old"));
    addPattern(*nest.branchAt(0), {0, 1, 0}, 0);
    const Branch* first = nest.branchAt(0);
    EXPECT_TRUE(nest.setTo(other));
    EXPECT_THAT(model::describe(nest), ElementsAre(" -1 (0 0 0 0): ", "b 1 (0 0 0 0): 1,0,1x3"));
    EXPECT_EQ(nest.branchAt(0), first);
    EXPECT_TRUE(nest.setTo(nest));
    EXPECT_EQ(nest.size(), 2);
    EXPECT_TRUE(nest.setTo(Nest()));
    EXPECT_EQ(nest.size(), 0);
}

TEST(Nest, DumpsItemsWithABlankAfterEach) {
    Nest nest;
    EXPECT_EQ(messagesOf(nest), QStringList{QStringLiteral("Nest size= 0 ")});
    Branch branch;
    nest.set(0, *filled(branch, "a \\ b", domain::GESTURE_MENU));
    EXPECT_EQ(messagesOf(nest)[1], QStringLiteral("\t 0 key= \"a \\ b\"  gesture= 3 "));
}

TEST(Pattern, DumpsAnEntryAMessage) {
    domain::Pattern pattern;
    model::fill(pattern, {4, 17});
    EXPECT_EQ(messagesOf(pattern),
              (QStringList{QStringLiteral("Pattern size= 2 "), QStringLiteral("\t 0 = 4 "),
                           QStringLiteral("\t 1 = 17 ")}));
}

} // namespace
