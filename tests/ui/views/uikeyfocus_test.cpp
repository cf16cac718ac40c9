#include "ui/uiwin.h"
#include "ui/views/uibarview.h"
#include "ui/views/uileafview.h"

#include <QApplication>
#include <QTest>

#include <gtest/gtest.h>

namespace {

/// The position of the widget that has the focus; that of one framed to show it is followed by "!".
std::string focus(const QList<QWidget*>& views) {
    std::string text;
    for (QWidget* view : views) {
        if (view->hasFocus())
            text += std::to_string(views.indexOf(view));
        const QImage image = view->grab().toImage();
        if (qGray(image.pixel(0, image.height() / 2)) < 50)
            text += '!';
    }
    return text;
}

TEST(KeyFocus, TabGoesFromViewToViewAndOnlyKeysShowIt) {
    QCoreApplication::setOrganizationName(QStringLiteral("Velmorix"));
    QCoreApplication::setApplicationName(QStringLiteral("Quillon test"));
    ui::Win window(nullptr);
    window.show();
    window.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    const auto bars = window.findChildren<ui::BarView*>();
    const QList<QWidget*> views{bars[0], bars[1], window.findChild<ui::LeafView*>()};
    EXPECT_EQ(focus(views), "2");
    for (const char* next : {"0!", "1!", "2!", "0!"}) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        EXPECT_EQ(focus(views), next);
    }
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Backtab);
    EXPECT_EQ(focus(views), "2!");
    views[2]->clearFocus();
    views[2]->setFocus(Qt::MenuBarFocusReason);
    EXPECT_EQ(focus(views), "2!") << "as it was before the menu";
    for (const int pressed : {1, 2}) {
        QTest::mouseClick(views[pressed], Qt::LeftButton);
        EXPECT_EQ(focus(views), std::to_string(pressed));
    }
}

} // namespace
