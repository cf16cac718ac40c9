#include "tests/common/describe.h"
#include "ui/leaves/uileafbuilder.h"
#include "ui/leaves/uileaflayout.h"
#include "ui/leaves/uilook.h"
#include "ui/leaves/uishared.h"
#include "ui/views/uileafbar.h"
#include "ui/views/uileafview.h"
#include "ui/views/uiselectionview.h"

#include <QApplication>
#include <QFontMetrics>
#include <QHelpEvent>
#include <QTextDocumentFragment>
#include <QToolTip>

#include <gtest/gtest.h>

namespace {

const QString MARKUP = QStringLiteral("<b>%1</b>\n&amp;%2");
const QString AS_A_LINE = QStringLiteral("<b>%1</b> &amp;%2");

/// Over leaves at one point, the topmost of which has a pattern.
class ToolTip : public testing::Test {
protected:
    ToolTip() {
        mLook.init(QFontMetrics(QApplication::font()));
        model::fill(mPattern, {0, 1, 99, 0});
        for (const QString& key : {MARKUP, QString(10'000'000, u'e'), QStringLiteral("b"),
                                   QStringLiteral("c"), QStringLiteral("d"), QStringLiteral("f")})
            add(key);
        mNest.branchAt(0)->addPattern(mPattern);
        ui::LeafBuilder(mShared.mLeaves).from(mNest);
        ui::LeafLayout(mShared.mLeaves).layout();
        QObject::connect(&mShared, &ui::Shared::onSelectionChanged, &mBar,
                         &ui::BarView::selectionChanged);
    }

    void add(const QString& key) {
        domain::Branch branch;
        model::fill(branch, key);
        mNest.set(mNest.size(), branch);
    }

    void select(int index) {
        ui::LeafSelection selection;
        selection.mAlternates.add(selection.mPrimary = index);
        mShared.setLeafSelection(selection);
    }

    /// What a tip tells over that place; nothing without one.
    static QString tip(QWidget& widget, const QPoint& place) {
        QToolTip::hideText();
        QHelpEvent event(QEvent::ToolTip, place, place);
        QCoreApplication::sendEvent(&widget, &event);
        return event.isAccepted() ? QTextDocumentFragment::fromHtml(QToolTip::text()).toPlainText()
                                  : QString();
    }

    ui::Look mLook;
    domain::Nest mNest;
    domain::Pattern mPattern;
    ui::Shared mShared{nullptr};
    ui::LeafBar mBar{mLook, mShared};
};

TEST_F(ToolTip, TellsTheLeavesUnderTheMouse) {
    ui::LeafView view(mLook, mShared, nullptr);
    view.resize(200, 200);
    const QPoint centre(100, 108);
    const QStringList lines = tip(view, centre).split(u'\n');
    EXPECT_EQ(lines[0], AS_A_LINE + QStringLiteral(", patterns: 1"));
    EXPECT_TRUE(lines.value(1).startsWith(u'e'));
    EXPECT_LT(lines.size(), 30);
    EXPECT_EQ(lines.mid(lines.size() - 4),
              (QStringList{QStringLiteral("b, patterns: 0"), QStringLiteral("c, patterns: 0"),
                           QStringLiteral("d, patterns: 0"), QStringLiteral("and 1 more")}));
    EXPECT_NE(tip(view, centre + QPoint(7, 0)), QString());
    EXPECT_EQ(tip(view, centre + QPoint(7, 7)), QString()) << "beside the circle";
}

TEST_F(ToolTip, TellsALabelThatIsCut) {
    const auto overBar = [this] { return tip(mBar, {mBar.width() - 10, 10}); };
    EXPECT_EQ(overBar(), QString()) << "there is no label";
    select(0);
    const int buttons = 2 * static_cast<int>(mLook.mFontHeight);
    const int needed = 12 + buttons + mBar.fontMetrics().horizontalAdvance(AS_A_LINE);
    mBar.resize(needed, 26);
    EXPECT_EQ(overBar(), QString());
    mBar.resize(needed - 1, 26);
    EXPECT_EQ(overBar(), AS_A_LINE);
    select(1);
    EXPECT_TRUE(overBar().startsWith(u'e'));
}

TEST_F(ToolTip, TellsTheKeyOfARow) {
    ui::SelectionView view(mLook, mShared, nullptr);
    view.resize(50, 200);
    const int height = static_cast<int>(mLook.mFontHeight) + 4;
    EXPECT_EQ(tip(view, {10, 8}), QString());
    select(0);
    EXPECT_EQ(tip(view, {10, 5}), QString());
    EXPECT_EQ(tip(view, {10, 6}), AS_A_LINE);
    EXPECT_EQ(tip(view, {10, 5 + height}), AS_A_LINE);
    EXPECT_TRUE(tip(view, {10, 6 + height}).startsWith(u'e'));
    EXPECT_EQ(tip(view, {49, 6 + 2 * height}), QStringLiteral("?"));
    EXPECT_EQ(tip(view, {10, 6 + 4 * height}), QString()) << "below the last row";
}

} // namespace
