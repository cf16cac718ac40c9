#include "tests/common/scene.h"
#include "ui/views/uibaraccessible.h"
#include "ui/views/uileafbar.h"
#include "ui/views/uileafview.h"
#include "ui/views/uipatternbar.h"
#include "ui/views/uiselectionview.h"
#include "ui/views/uiviewaccessible.h"

#include <QAccessible>
#include <QTest>

#include <gmock/gmock.h>

#include <initializer_list>
#include <memory>

namespace {

using testing::ElementsAre;

/// The bars and views over two leaves: a, with two patterns, and b, with none.
class Accessible : public testing::Test, protected model::Scene {
protected:
    static void SetUpTestSuite() {
        ui::install_bar_accessible();
        ui::install_view_accessible();
    }

    Accessible() {
        add({{{0, 1, 0}, 3}, {{0, 7, 0}, 1}});
        add();
        build();
        for (ui::BarView* bar : std::initializer_list<ui::BarView*>{&mLeafBar, &mPatternBar}) {
            QObject::connect(&mShared, &ui::Shared::onSelectionChanged, bar,
                             &ui::BarView::selectionChanged);
            bar->resize(200, 30);
            bar->show();
        }
        EXPECT_TRUE(QTest::qWaitForWindowExposed(&mPatternBar));
    }

    static std::string text(QWidget& widget, QAccessible::Text kind) {
        return QAccessible::queryAccessibleInterface(&widget)->text(kind).toStdString();
    }

    /// The bar's children: texts in quotes, buttons as such, in brackets while disabled.
    static std::vector<std::string> children(QWidget& bar) {
        std::vector<std::string> names;
        const QAccessibleInterface* accessible = QAccessible::queryAccessibleInterface(&bar);
        for (int i = 0; i < accessible->childCount(); ++i) {
            const QAccessibleInterface* child = accessible->child(i);
            const std::string name = child->text(QAccessible::Name).toStdString();
            names.push_back(child->role() != QAccessible::Button ? '"' + name + '"'
                            : child->state().disabled            ? '[' + name + ']'
                                                                 : name);
        }
        return names;
    }

    static void press(QWidget& bar, int child) {
        QAccessible::queryAccessibleInterface(&bar)->child(child)->actionInterface()->doAction(
            QAccessibleActionInterface::pressAction());
    }

    ui::LeafBar mLeafBar{mLook, mShared};
    ui::PatternBar mPatternBar{mLook, mShared};
};

TEST_F(Accessible, BarsTellTheirLabelsAndButtons) {
    EXPECT_EQ(text(mLeafBar, QAccessible::Name), "Leaf in focus");
    EXPECT_EQ(text(mPatternBar, QAccessible::Name), "Selected pattern");
    EXPECT_EQ(text(mPatternBar, QAccessible::Description), "");
    EXPECT_THAT(children(mPatternBar), ElementsAre("\"\"", "[Previous pattern]", "[Next pattern]"));
    select(0, {0, 1});
    EXPECT_EQ(text(mPatternBar, QAccessible::Description), "1/2 pattern 100%");
    EXPECT_THAT(children(mPatternBar),
                ElementsAre("\"1/2 pattern 100%\"", "[Previous pattern]", "Next pattern"));
    EXPECT_THAT(children(mLeafBar), ElementsAre("\"1/2 a\"", "[Previous leaf]", "Next leaf"));
}

TEST_F(Accessible, OnlyEnabledButtonsCanBePressed) {
    select(0, {0, 1});
    press(mPatternBar, 2);
    EXPECT_EQ(mShared.patternSelection(), 1);
    mPatternBar.setEnabled(ui::BAR_PRV, false); // it would still lead somewhere
    press(mPatternBar, 1);
    EXPECT_EQ(mShared.patternSelection(), 1);
    press(mLeafBar, 2);
    EXPECT_EQ(mShared.leafSelection().mPrimary, 1);
    QAccessibleInterface* label = QAccessible::queryAccessibleInterface(&mLeafBar)->child(0);
    EXPECT_FALSE(label->actionInterface());
    EXPECT_FALSE(QAccessible::queryAccessibleInterface(&mLeafBar)->child(3));
}

TEST_F(Accessible, ZonesAreWhereTheyAreDrawn) {
    mPatternBar.resize(250, 30); // not painted since
    QAccessibleInterface* bar = QAccessible::queryAccessibleInterface(&mPatternBar);
    for (int i = 0; i < bar->childCount(); ++i) {
        QAccessibleInterface* child = bar->child(i);
        const QRect rect = child->rect();
        EXPECT_TRUE(bar->rect().contains(rect)) << i;
        EXPECT_EQ(bar->childAt(rect.center().x(), rect.center().y()), child) << i;
        EXPECT_EQ(bar->indexOfChild(child), i);
        EXPECT_EQ(child->parent(), bar);
        EXPECT_EQ(mPatternBar.zoneAt(QPointF(mPatternBar.mapFromGlobal(rect.center()))),
                  mPatternBar.zones().at(i));
    }
    EXPECT_FALSE(bar->child(2)->state().invisible);
    mPatternBar.hide();
    EXPECT_TRUE(bar->child(2)->state().invisible);
}

TEST_F(Accessible, ViewsTellWhatTheyShow) {
    ui::LeafView leaves(mLook, mShared, nullptr);
    ui::SelectionView keys(mLook, mShared, nullptr);
    EXPECT_EQ(text(leaves, QAccessible::Name), "Leaves");
    EXPECT_EQ(text(leaves, QAccessible::Description), "leaves: 2, selected: 0");
    EXPECT_EQ(text(keys, QAccessible::Name), "Keys of the selected pattern");
    EXPECT_EQ(text(keys, QAccessible::Description), "");
    select(0, {0, 1});
    mShared.setPatternSelection(1);
    EXPECT_EQ(text(leaves, QAccessible::Description), "leaves: 2, selected: 2, in focus: a");
    EXPECT_EQ(text(keys, QAccessible::Description), "a\n?\na");
}

/// Assistive technology keeps what it was given longer than the bar lives.
TEST_F(Accessible, NothingOutlivesItsBar) {
    auto bar = std::make_unique<ui::LeafBar>(mLook, mShared);
    const QAccessible::Id zone =
        QAccessible::uniqueId(QAccessible::queryAccessibleInterface(bar.get())->child(1));
    EXPECT_TRUE(QAccessible::accessibleInterface(zone)->isValid());
    bar.reset();
    EXPECT_FALSE(QAccessible::accessibleInterface(zone));
}

} // namespace
