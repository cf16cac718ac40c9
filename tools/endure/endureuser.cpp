#include "tools/endure/endureuser.h"

#include "tests/common/windowdriver.h"
#include "ui/views/uibarview.h"

#include <QFileDialog>
#include <QSplitter>

namespace endure {

namespace {

constexpr int LONGEST_TO_BREAK = 20'000; // bytes

} // namespace

const QList<User::habit> User::HABITS{
    {"load", 40, &User::loadOne},
    {"some loads", 5, &User::loadSome},
    {"broken log", 30, &User::loadBroken},
    {"load of nothing", 10, &User::loadNothing},
    {"rubber band", 600, &User::band},
    {"press", 100, &User::pressLeaf},
    {"step", 600, &User::step},
    {"by rank", 100, &User::selectByRank},
    {"resize", 50, &User::resize},
    {"splitter", 20, &User::dragSplitter},
    {"hide and show", 3, &User::hideAndShow},
    {"dialog", 3, &User::openDialog},
};

User::User(ui::Win& window, const QString& example, unsigned seed)
    : mWindow(window)
    , mLeafView(window.findChild<ui::LeafView*>())
    , mRandom(seed) {
    mLogs.append(QUrl::fromLocalFile(example));
    addLog(QStringLiteral("one"), {1, 1, 3});
    addLog(QStringLiteral("few.json"), {5, 3, 20});
    addLog(QStringLiteral("menus"), {9, 1, 90});
    addLog(QStringLiteral("some"), {40, 20, 200});
    addLog(QStringLiteral("short recordings"), {150, 2000, 8});
    addLog(QStringLiteral("many keys"), {2000, 4, 1500});
    addLog(QStringLiteral("long"), {250, 2, 9000});
    addLog(QStringLiteral("longest"), {400, 1, 40000});
}

const char* User::act() {
    if (QWidget* dialog = QApplication::activeModalWidget()) {
        answer(dialog);
        return "answer";
    }
    int sum = 0;
    for (const habit& each : HABITS)
        sum += each.weight;
    int choice = below(sum, mRandom);
    for (const habit& each : HABITS) {
        choice -= each.weight;
        if (choice < 0) {
            (this->*each.act)();
            return each.name;
        }
    }
    return "";
}

void User::addLog(const QString& name, const log_kind& kind) {
    const QByteArray text = log_text(name.toUtf8() + " key:", kind, mRandom);
    mLogs.append(write(QDir(mFolder.path()), name, text));
    if (text.size() <= LONGEST_TO_BREAK)
        mTexts.append(text);
}

void User::loadOne() {
    drop({mLogs[below(static_cast<int>(mLogs.size()), mRandom)]});
}

void User::loadSome() {
    for (int i = 0; i < 3; ++i)
        loadOne();
}

void User::loadBroken() {
    const QByteArray& whole = mTexts[below(static_cast<int>(mTexts.size()), mRandom)];
    drop({write(QDir(mFolder.path()), QStringLiteral("broken"), broken(whole, mRandom))});
}

void User::loadNothing() {
    const QList<QList<QUrl>> drops{{},
                                   {QUrl()},
                                   {QUrl(QStringLiteral("http://example.invalid/log"))},
                                   {QUrl::fromLocalFile(mFolder.filePath(QStringLiteral("none")))},
                                   {QUrl::fromLocalFile(mFolder.path())}};
    drop(drops[below(static_cast<int>(drops.size()), mRandom)]);
}

/// Begins a band, goes on with it or ends it: other things happen between.
void User::band() {
    if (!mDrawsBand)
        mouse(mLeafView, QEvent::MouseButtonPress, anywhere(mLeafView));
    else if (below(8, mRandom) > 0)
        mouse(mLeafView, QEvent::MouseMove, anywhere(mLeafView));
    else
        mouse(mLeafView, QEvent::MouseButtonRelease, anywhere(mLeafView));
}

void User::pressLeaf() {
    click(mLeafView, anywhere(mLeafView));
}

void User::step() {
    const auto bars = mWindow.findChildren<ui::BarView*>();
    ui::BarView* bar = bars[below(static_cast<int>(bars.size()), mRandom)];
    const int id = below(3, mRandom) == 0 ? ui::BAR_PRV : ui::BAR_NXT;
    if (const ui::BarView::Zone* button = bar->zoneAt(id)) // a bar may have none
        click(bar, button->mRect.center());
}

void User::selectByRank() {
    driver::by_rank(mWindow)->trigger();
}

void User::resize() {
    const bool tiny = below(8, mRandom) == 0;
    mWindow.resize(1 + below(tiny ? 100 : 1400, mRandom), 1 + below(tiny ? 100 : 1000, mRandom));
}

void User::dragSplitter() {
    QWidget* handle = mWindow.findChild<QSplitter*>()->handle(1);
    mouse(handle, QEvent::MouseButtonPress, QPointF(1, 5));
    mouse(handle, QEvent::MouseMove, QPointF(below(400, mRandom) - 200, 5));
    mouse(handle, QEvent::MouseButtonRelease, QPointF(1, 5));
}

void User::hideAndShow() {
    mWindow.hide();
    mWindow.show();
}

void User::openDialog() {
    // Later, as the dialog's loop of events would else be within the one that called.
    QMetaObject::invokeMethod(driver::find_action(mWindow, QStringLiteral("&Open")), "trigger",
                              Qt::QueuedConnection);
}

void User::answer(QWidget* dialog) {
    auto* files = qobject_cast<QFileDialog*>(dialog);
    if (!files)
        return;
    const bool takes = below(2, mRandom) == 0;
    if (takes)
        files->selectFile(mFolder.filePath(QStringLiteral("few.json")));
    QMetaObject::invokeMethod(files, takes ? "accept" : "reject");
}

void User::drop(const QList<QUrl>& urls) {
    driver::drop(mWindow, urls, anywhere(mLeafView));
}

void User::mouse(QWidget* widget, QEvent::Type type, const QPointF& place) {
    driver::mouse(*widget, type, place);
    if (widget == mLeafView)
        mDrawsBand = type != QEvent::MouseButtonRelease;
}

void User::click(QWidget* widget, const QPointF& place) {
    mouse(widget, QEvent::MouseButtonPress, place);
    mouse(widget, QEvent::MouseButtonRelease, place);
}

/// In the widget, or a little outside.
QPointF User::anywhere(const QWidget* widget) {
    return {below(widget->width() + 40, mRandom) - 20.0,
            below(widget->height() + 40, mRandom) - 20.0};
}

} // namespace endure
