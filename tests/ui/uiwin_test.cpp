#include "tests/common/windowdriver.h"
#include "ui/views/uibarview.h"
#include "ui/views/uiselectionview.h"
#include "ui/views/uistepzones.h"

#include <QAbstractItemView>
#include <QComboBox>
#include <QFile>
#include <QFileDialog>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QSettings>
#include <QSplitter>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include <gtest/gtest.h>

#include <algorithm>

namespace {

const QString LAST_FILE = QStringLiteral("last-file");

class WinTest : public testing::Test {
protected:
    WinTest() {
        QCoreApplication::setOrganizationName(QStringLiteral("Velmorix"));
        QCoreApplication::setApplicationName(QStringLiteral("Quillon test"));
        QSettings().clear();
    }

    /// A log whose keys are the letters of `keys`, in one recording.
    QUrl write(const QString& name, const QByteArray& keys) {
        QFile file(mDir.filePath(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        QByteArray text;
        for (const char key : keys)
            text += QByteArray(text.isEmpty() ? "" : ",") + "\"down\":[0,\"" + key + "\"," +
                    QByteArray::number(key * 3) + "," + QByteArray::number(key * 7 % 50) + "]";
        file.write("{" + text + "}");
        return QUrl::fromLocalFile(file.fileName());
    }

    static QUrl lastFile() { return QSettings().value(LAST_FILE).toUrl(); }

    static bool becomesLastFile(const QUrl& url) {
        return QTest::qWaitFor([&] { return lastFile() == url; });
    }

    static void drop(const ui::Win& window, const QUrl& log) {
        QSettings().clear();
        driver::drop(window, {log});
        ASSERT_TRUE(becomesLastFile(log));
    }

    /// The labels of the bars that step.
    static std::string labels(const ui::Win& window) {
        std::string text;
        for (ui::BarView* bar : window.findChildren<ui::BarView*>()) {
            if (const auto* label = bar->zoneAt(ui::STEP_LABEL))
                text += label->mLabel.toStdString() + "|";
        }
        return text;
    }

    static void selectAll(ui::Win& window) {
        window.grab(); // a paint places the leaves
        auto& view = *window.findChild<ui::LeafView*>();
        const QPointF end(view.width(), view.height());
        driver::mouse(view, QEvent::MouseButtonPress, {1, 1});
        driver::mouse(view, QEvent::MouseMove, end);
        driver::mouse(view, QEvent::MouseButtonRelease, end);
    }

    QTemporaryDir mDir;
};

TEST_F(WinTest, ForgetsTheLastFileUntilItIsLoadedAgain) {
    const QUrl log = write(QStringLiteral("a.json"), "aba");
    QSettings().setValue(LAST_FILE, log);
    ui::Win window(nullptr);
    EXPECT_EQ(lastFile(), QUrl());
    ASSERT_TRUE(becomesLastFile(log));
    driver::by_rank(window)->trigger();
    EXPECT_EQ(labels(window), "a|pattern|");
}

TEST_F(WinTest, ADroppedLogReplacesTheLastAndKeepsTheSelection) {
    const QUrl log = write(QStringLiteral("b.json"), "cd");
    ui::Win window(nullptr), other(nullptr);
    window.show();
    other.show();
    drop(window, write(QStringLiteral("a.json"), "abab"));
    driver::by_rank(window)->trigger();
    EXPECT_EQ(labels(window), "1/2 a|pattern|");
    window.grab(); // the strokes are drawn
    drop(window, log);
    EXPECT_EQ(labels(window), "1/2 c||"); // the index of the leaf in focus names another key now
    drop(other, log);
    selectAll(window);
    selectAll(other);
    EXPECT_EQ(labels(window), "1/2 d||");
    EXPECT_EQ(window.grab().toImage(), other.grab().toImage()) << "nothing remains of the first";
    auto& view = *window.findChild<ui::LeafView*>();
    const QImage shown = view.grab().toImage();
    const QPointF focus = QPointF(22 + (view.width() - 44) * 0.75, 39) * shown.devicePixelRatio();
    EXPECT_EQ(shown.pixelColor(focus.toPoint()), QColor(Qt::green))
        << "the leaves have places of their own";
}

TEST_F(WinTest, LoadsWhatTheDialogReturns) {
#if defined(__SANITIZE_THREAD__)
    GTEST_SKIP() << "the dialog's thread is the toolkit's, which is built without the sanitizer";
#endif
    const QUrl log = write(QStringLiteral("a.json"), "a"), second = write(QStringLiteral("b"), "b");
    ui::Win window(nullptr);
    drop(window, log);
    for (const char* answer : {"reject", "accept"}) {
        QTimer::singleShot(0, [&] {
            auto* dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
            EXPECT_EQ(dialog->nameFilters(),
                      QStringList(QStringLiteral("Log Files (*.txt *.json *.log)")));
            dialog->selectFile(second.toLocalFile());
            QMetaObject::invokeMethod(dialog, answer);
        });
        EXPECT_EQ(lastFile(), log);
        driver::find_action(window, QStringLiteral("&Open"))->trigger();
    }
    EXPECT_TRUE(becomesLastFile(second));
}

TEST_F(WinTest, ASignalWithNothingToCollectKeepsTheLastFile) {
    const QUrl log = write(QStringLiteral("a.json"), "aba");
    QSettings().setValue(LAST_FILE, log);
    ui::Win window(nullptr);
    ASSERT_TRUE(becomesLastFile(log));
    QMetaObject::invokeMethod(&window, "loadFinished");
    EXPECT_EQ(lastFile(), log);
    selectAll(window);
    EXPECT_EQ(labels(window), "1/2 b||"); // in list order, from the highest index
}

TEST_F(WinTest, ArrangesItsViews) {
    ui::Win window(nullptr);
    window.resize(900, 600);
    window.show();
    const auto* splitter = window.findChild<QSplitter*>();
    EXPECT_EQ(splitter->geometry(), window.centralWidget()->rect());
    ASSERT_EQ(splitter->count(), 2);
    const QWidget* panel = splitter->widget(0);
    EXPECT_EQ(splitter->widget(1), window.findChild<ui::LeafView*>());
    int top = 0;
    for (const QObject* child : panel->children()) {
        const auto* widget = qobject_cast<const QWidget*>(child);
        if (!widget)
            continue;
        EXPECT_EQ(widget->geometry().topLeft(), QPoint(0, top));
        EXPECT_EQ(widget->width(), panel->width());
        top += widget->height();
    }
    EXPECT_EQ(top, panel->height());
    const int panelWidth = panel->width();
    window.resize(1100, 600);
    EXPECT_EQ(panel->width(), panelWidth); // the leaves get the room
}

/// Notes in which order widgets ask to be painted. The toolkit takes them to be painting at the
/// moment, so that each one is told to ask again later, by an event of its own.
class PaintOrder : public QObject {
public:
    explicit PaintOrder(const QList<QWidget*>& widgets) {
        for (QWidget* widget : widgets) {
            widget->setAttribute(Qt::WA_WState_InPaintEvent);
            widget->installEventFilter(this);
        }
    }

    bool eventFilter(QObject* widget, QEvent* event) override {
        if (event->type() != QEvent::UpdateLater)
            return false;
        if (mAsked.isEmpty() || mAsked.last() != widget)
            mAsked.append(static_cast<QWidget*>(widget));
        return true;
    }

    QList<QWidget*> mAsked;
};

TEST_F(WinTest, ItsViewsHearOfASelectionOneAfterTheOther) {
    const QUrl log = write(QStringLiteral("a.json"), "abab");
    QSettings().setValue(LAST_FILE, log);
    ui::Win window(nullptr);
    window.show();
    ASSERT_TRUE(becomesLastFile(log));
    const auto bars = window.findChildren<ui::BarView*>(); // of the leaves, of the patterns
    const QList<QWidget*> views{window.findChild<ui::SelectionView*>(), bars[0], bars[1],
                                window.findChild<ui::LeafView*>()};
    PaintOrder order(views);
    driver::by_rank(window)->trigger();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::UpdateLater);
    for (QWidget* view : views)
        view->setAttribute(Qt::WA_WState_InPaintEvent, false);
    EXPECT_EQ(order.mAsked, views);
}

TEST_F(WinTest, AnswersTheOpenKeyAndItsMenusHaveMnemonics) {
    const ui::Win window(nullptr);
    QStringList entries;
    for (const QAction* menu : window.menuBar()->actions())
        for (const QAction* action : menu->menu()->actions())
            entries += {menu->text(), action->text(), action->statusTip()};
    EXPECT_EQ(entries, (QStringList{QStringLiteral("&File"), QStringLiteral("&Open"),
                                    QStringLiteral("Open a new log file"),
                                    QStringLiteral("&Select"), QStringLiteral("By &Rank"),
                                    QStringLiteral("Select all based on highest rank")}));
    EXPECT_EQ(driver::find_action(window, QStringLiteral("&Open"))->shortcuts(),
              QKeySequence::keyBindings(QKeySequence::Open));
    EXPECT_TRUE(driver::by_rank(window)->shortcuts().isEmpty());
}

/// How far the darkest and the lightest pixel of a part of `widget` are from each other, of 255.
int contrast(QWidget& widget, const QRect& part) {
    const QImage image = widget.grab(part).toImage();
    int darkest = 255, lightest = 0;
    for (int i = 0; i < image.width() * image.height(); ++i) {
        const int grey = qGray(image.pixel(i % image.width(), i / image.width()));
        darkest = std::min(darkest, grey);
        lightest = std::max(lightest, grey);
    }
    return lightest - darkest;
}

TEST_F(WinTest, StaysReadableOnADarkDesktop) {
    const QPalette before = QApplication::palette();
    QApplication::setPalette(QPalette(QColor(40, 40, 40), QColor(20, 20, 20)));
    ui::Win window(nullptr);
    const auto read = [](QWidget& widget, const QRect& part) {
        // Leaves out the frame around a chosen item.
        return contrast(widget, part.adjusted(3, 3, -3, -3));
    };
    EXPECT_GT(read(*window.menuBar(), window.menuBar()->rect()), 200);

    QMenu menu(&window);
    QAction* plain = menu.addAction(QStringLiteral("HHHH"));
    QAction* disabled = menu.addAction(QStringLiteral("HHHH"));
    disabled->setEnabled(false);
    QAction* chosen = menu.addAction(QStringLiteral("HHHH"));
    menu.setActiveAction(chosen);
    EXPECT_GT(read(menu, menu.actionGeometry(plain)), 200);
    EXPECT_GT(read(menu, menu.actionGeometry(disabled)), 100);
    EXPECT_GT(read(menu, menu.actionGeometry(chosen)), 100);

    QComboBox box(&window); // as in the open dialog
    box.addItems({QStringLiteral("HHHH"), QStringLiteral("HHHH")});
    box.showPopup();
    QWidget& items = *box.view()->viewport();
    for (int row = 0; row < 2; ++row)
        EXPECT_GT(read(items, box.view()->visualRect(box.model()->index(row, 0))), 100) << row;
    QApplication::setPalette(before);
}

TEST_F(WinTest, AddsToTheStyleSheetOfTheCommandLine) {
    QFile sheet(mDir.filePath(QStringLiteral("sheet")));
    ASSERT_TRUE(sheet.open(QIODevice::WriteOnly) && sheet.write("QLabel { min-width: 77px }"));
    sheet.close();
    qApp->setStyleSheet(QStringLiteral("file:///") + sheet.fileName()); // as the toolkit does
    const ui::Win window(nullptr), other(nullptr);
    QLabel label;
    label.ensurePolished();
    EXPECT_EQ(label.minimumWidth(), 77);
    qApp->setStyleSheet({});
}

TEST_F(WinTest, ClosesInTheMiddleOfALongLoad) {
    const QUrl log = write(QStringLiteral("long.json"), QByteArray("abcdefgh").repeated(20000));
    QSettings().setValue(LAST_FILE, log);
    { const ui::Win window(nullptr); }
    EXPECT_EQ(lastFile(), QUrl());
}

} // namespace
