// notes LOG: a small program, the use of which is recorded into a log for Quillon.

#include "eventrecorder.h"

#include <QListWidget>
#include <QMainWindow>
#include <QSplitter>
#include <QTextEdit>
#include <QToolBar>

namespace {

/// Names make the keys: whatever is worth telling apart has one.
template <class Object>
Object* named(const QString& name, Object* object) {
    object->setObjectName(name);
    return object;
}

void fill(QMainWindow& window) {
    auto* list = named(QStringLiteral("list"), new QListWidget);
    auto* page = named(QStringLiteral("page"), new QTextEdit);
    QMenu* edit = window.menuBar()->addMenu(QStringLiteral("&Edit"));
    QAction* add = edit->addAction(QStringLiteral("&New note"));
    add->setShortcut(QKeySequence::New);
    QMenu* more = edit->addMenu(QStringLiteral("&More"));
    QAction* wipe = more->addAction(QStringLiteral("&Wipe"));
    QObject::connect(add, &QAction::triggered, list,
                     [list] { list->addItem(QStringLiteral("note %1").arg(list->count() + 1)); });
    QObject::connect(wipe, &QAction::triggered, page, &QTextEdit::clear);

    QToolBar* bar = named(QStringLiteral("toolbar"), window.addToolBar(QString()));
    bar->addAction(add);
    named(QStringLiteral("new"), bar->widgetForAction(add));
    auto* both = new QSplitter;
    both->addWidget(list);
    both->addWidget(page);
    window.setCentralWidget(both);
}

} // namespace

int main(int argc, char** argv) {
    const QApplication application(argc, argv);
    if (argc != 2) {
        qCritical("usage: notes LOG");
        return 2;
    }
    const EventRecorder recorder(QString::fromLocal8Bit(argv[1]));
    QMainWindow window;
    window.setObjectName(QStringLiteral("notes"));
    fill(window);
    window.setWindowTitle(QStringLiteral("Notes"));
    window.resize(600, 400);
    window.show();
    return QApplication::exec();
}
