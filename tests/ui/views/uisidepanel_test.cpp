#include "tests/common/scene.h"
#include "ui/views/uileafbar.h"
#include "ui/views/uipatternbar.h"
#include "ui/views/uiselectionview.h"
#include "ui/views/uistepzones.h"

#include <QImage>
#include <QKeyEvent>
#include <QSignalSpy>

#include <gtest/gtest.h>

#include <algorithm>

namespace {

/// The bars and the selection view over four leaves: a with patterns of counts 0, 30 and 21, b with
/// one of count 20, c with none, d with one that names a leaf that is not there.
class Steps : public testing::Test, protected model::Scene {
protected:
    Steps() {
        add({{{0, 1, 0}, 0}, {{0, 2, 0}, 30}, {{0, 2, 2, 0}, 21}});
        add({{{1, 0, 1}, 20}});
        add();
        add({{{3, 99, 3}, 18}});
        build();
    }

    /// As in "< 2/3 b >": the label between the buttons that are enabled.
    static std::string shown(ui::BarView& bar) {
        return (bar.zoneAt(ui::BAR_PRV)->mEnabled ? "< " : "") +
               bar.zoneAt(ui::STEP_LABEL)->mLabel.toStdString() +
               (bar.zoneAt(ui::BAR_NXT)->mEnabled ? " >" : "");
    }

    void connectTo(ui::BarView& bar) {
        QObject::connect(&mShared, &ui::Shared::onSelectionChanged, &bar,
                         &ui::BarView::selectionChanged);
    }
};

TEST_F(Steps, LeafBarNamesTheLeafInFocus) {
    const struct {
        int primary;
        std::vector<int> alternates;
        const char* shown;
    } rows[] = {{0, {0}, "a"},
                {0, {0, 1, 2}, "1/3 a >"},
                {1, {0, 1, 2}, "< 2/3 b >"},
                {2, {0, 1, 2}, "< 3/3 c"},
                {7, {7, 1}, ""},
                {1, {0, 2}, "0/2 b >"},
                {-1, {}, ""}};

    ui::LeafBar bar(mLook, mShared);
    EXPECT_EQ(shown(bar), "");
    connectTo(bar);
    for (const auto& row : rows) {
        select(row.primary, row.alternates);
        EXPECT_EQ(shown(bar), row.shown);
    }
}

TEST_F(Steps, LeafBarStopsAtTheEnds) {
    ui::LeafBar bar(mLook, mShared);
    connectTo(bar);
    select(2, {0, 1, 2});
    mShared.setPatternSelection(1);
    QSignalSpy changed(&mShared, &ui::Shared::onSelectionChanged);
    bar.zonePressed(*bar.zoneAt(ui::BAR_NXT)); // disabled, and at the end
    EXPECT_EQ(changed.count(), 0);
    bar.zonePressed(*bar.zoneAt(ui::BAR_PRV));
    EXPECT_EQ(shown(bar), "< 2/3 b >");
    EXPECT_EQ(mShared.patternSelection(), 0);
    bar.zonePressed(*bar.zoneAt(ui::STEP_LABEL));
    EXPECT_EQ(changed.count(), 1);
    bar.stepLeaf(-1);
    bar.stepLeaf(-1);
    EXPECT_EQ(shown(bar), "1/3 a >");
    EXPECT_EQ(changed.count(), 2);
    select(7, {7, 1});
    bar.stepLeaf(1); // the leaf in focus is not there
    EXPECT_EQ(mShared.leafSelection().mPrimary, 7);
}

TEST_F(Steps, KeysStep) {
    ui::LeafBar leafBar(mLook, mShared);
    ui::PatternBar patternBar(mLook, mShared);
    connectTo(leafBar);
    connectTo(patternBar);
    select(1, {0, 1, 2});

    const struct {
        ui::BarView* bar;
        int key;
        Qt::KeyboardModifiers modifiers;
        const char* shown; // null: nothing, the key is left to others
    } rows[] = {{&leafBar, Qt::Key_End, {}, "< 3/3 c"},
                {&leafBar, Qt::Key_Left, {}, "< 2/3 b >"},
                {&leafBar, Qt::Key_Home, {}, "1/3 a >"},
                {&leafBar, Qt::Key_Up, {}, nullptr},
                {&patternBar, Qt::Key_Right, {}, "< 2/3 pattern 100% >"},
                {&patternBar, Qt::Key_Right, Qt::ControlModifier, nullptr},
                {&patternBar, Qt::Key_Right, Qt::KeypadModifier, "< 3/3 pattern 70%"},
                {&patternBar, Qt::Key_Right, {}, "< 3/3 pattern 70%"},
                {&patternBar, Qt::Key_Home, {}, "1/3 pattern 0% >"},
                {&patternBar, Qt::Key_End, {}, "< 3/3 pattern 70%"}};

    for (const auto& row : rows) {
        const std::string before = shown(*row.bar);
        // As of a key that is held.
        QKeyEvent event(QEvent::KeyPress, row.key, row.modifiers, QString(), true);
        QCoreApplication::sendEvent(row.bar, &event);
        EXPECT_EQ(shown(*row.bar), row.shown ? row.shown : before) << "row " << &row - rows;
        EXPECT_EQ(event.isAccepted(), row.shown != nullptr) << "row " << &row - rows;
    }
}

TEST_F(Steps, PatternBarTellsThePercentage) {
    const struct {
        int primary;
        int pattern;
        const char* shown;
    } rows[] = {{0, 0, "1/3 pattern 0% >"},  {0, 1, "< 2/3 pattern 100% >"},
                {0, 2, "< 3/3 pattern 70%"}, {0, 9, "< 3/3 pattern 70%"},
                {1, 0, "pattern 66%"},       {2, 0, ""},
                {3, 0, "pattern 60%"},       {7, 0, ""}};

    ui::PatternBar bar(mLook, mShared);
    EXPECT_EQ(shown(bar), "");
    connectTo(bar);
    for (const auto& row : rows) {
        select(row.primary, {row.primary});
        mShared.setPatternSelection(row.pattern);
        EXPECT_EQ(shown(bar), row.shown) << row.primary << " " << row.pattern;
    }
}

TEST_F(Steps, PatternBarGivesNoPercentageWhileNothingRepeats) {
    mNest.clear();
    add({{{0, 1, 0}, 0}});
    ui::LeafBuilder(mShared.mLeaves).from(mNest);
    ui::PatternBar bar(mLook, mShared);
    connectTo(bar);
    select(0, {0});
    EXPECT_EQ(shown(bar), "pattern");
}

TEST_F(Steps, PatternBarStopsAtTheEnds) {
    ui::PatternBar bar(mLook, mShared);
    connectTo(bar);
    select(0, {0});
    bar.zonePressed(*bar.zoneAt(ui::BAR_PRV));
    EXPECT_EQ(mShared.patternSelection(), 0);
    for (int i = 0; i < 5; ++i)
        bar.zonePressed(*bar.zoneAt(ui::BAR_NXT));
    EXPECT_EQ(mShared.patternSelection(), 2);
    for (const int few : {1, 2}) { // one pattern, and none
        select(few, {few});
        bar.stepPattern(1);
        EXPECT_EQ(mShared.patternSelection(), 0);
    }
}

TEST_F(Steps, BarsListenToTheirPartOfTheMask) {
    ui::LeafBar leafBar(mLook, mShared);
    ui::PatternBar patternBar(mLook, mShared);
    select(0, {0});
    leafBar.selectionChanged(ui::PATTERN_SEL);
    patternBar.selectionChanged(ui::LEAF_SEL);
    EXPECT_EQ(shown(leafBar) + shown(patternBar), "");
    leafBar.selectionChanged(ui::LEAF_SEL);
    patternBar.selectionChanged(ui::PATTERN_SEL);
    EXPECT_EQ(shown(leafBar), "a");
    EXPECT_EQ(shown(patternBar), "1/3 pattern 0% >");
}

/// Whether the rectangle of `image`, in its logical pixels, holds ink of a text.
bool hasInk(const QImage& image, const QRect& rect) {
    const qreal ratio = image.devicePixelRatio();
    for (int y = qRound(rect.top() * ratio); y < qRound((rect.bottom() + 1) * ratio); ++y) {
        for (int x = qRound(rect.left() * ratio); x < qRound((rect.right() + 1) * ratio); ++x) {
            if (y < image.height() && x < image.width() && qGray(image.pixel(x, y)) < 128)
                return true;
        }
    }
    return false;
}

TEST_F(Steps, SelectionViewListsTheKeysOfTheSelectedPattern) {
    ui::SelectionView view(mLook, mShared, nullptr);
    view.setStyleSheet(QStringLiteral("background-color: white;"));
    view.resize(100, 200);
    const int step = static_cast<int>(mLook.mFontHeight) + 4;
    const auto rowsShown = [&] {
        const QImage image = view.grab().toImage();
        EXPECT_LT(qGray(image.pixel(50, 0)), 255); // the shadow of the bar above is always there
        int rows = 0;
        while (hasInk(image, QRect(6, 6 + rows * step, 60, step - 4)))
            ++rows;
        EXPECT_FALSE(hasInk(image, QRect(0, 0, 6, 200))) << "left of the indent";
        return rows;
    };
    EXPECT_EQ(rowsShown(), 0);
    select(0, {0});
    EXPECT_EQ(rowsShown(), 3);
    mShared.setPatternSelection(2);
    EXPECT_EQ(rowsShown(), 4);
    mShared.setPatternSelection(3);
    EXPECT_EQ(rowsShown(), 0);
    select(3, {3}); // its middle row is a question mark
    EXPECT_EQ(rowsShown(), 3);
    select(7, {7});
    EXPECT_EQ(rowsShown(), 0);
}

/// With a font of 14 pixels, 11 of them above the baseline. The view ends within the third row.
TEST_F(Steps, SelectionViewWritesOnBaselinesDownToItsEnd) {
    mLook.mFontHeight = 14;
    mLook.mFontAscent = 11;
    mNest.branchAt(0)->mKey = mNest.branchAt(1)->mKey = QStringLiteral("H");
    select(0, {0});
    ui::SelectionView view(mLook, mShared, nullptr);
    view.resize(60, 48);
    QImage image(view.size(), QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    view.render(&image, QPoint(), QRegion(), QWidget::RenderFlags());
    const auto isInked = [&image](int y) {
        const auto* pixels = reinterpret_cast<const QRgb*>(image.constScanLine(y));
        return std::any_of(pixels + 6, pixels + 30, [](QRgb pixel) { return qAlpha(pixel) > 100; });
    };
    std::vector<int> lowest; // row of pixels of each key
    for (int y = 1; y < 48; ++y) {
        if (isInked(y) && (y == 47 || !isInked(y + 1)))
            lowest.push_back(y);
    }
    EXPECT_EQ(lowest, (std::vector<int>{16, 34, 47}));
}

} // namespace
