#include "eventrecorder.h"

#include <QDateTime>
#include <QRegularExpression>

namespace {

/// Without what would part a key or end a string. Menus and actions fall back on their text.
QString nameOf(const QObject* object, const char* text = "title") {
    static const QRegularExpression unfit(QStringLiteral("[\":\\\\\\x00-\\x1f]"));
    QString name = object->objectName();
    if (name.isEmpty())
        name = object->property(text).toString().remove(u'&');
    return name.startsWith(u"qt_") ? QString() : name.replace(unfit, QStringLiteral("_"));
}

QString keyOf(const QObject* object) {
    QStringList names;
    for (const QObject* at = object; at; at = at->parent())
        names.prepend(nameOf(at));
    names.removeAll(QString());
    return names.isEmpty() ? QStringLiteral("unnamed") : names.join(u':');
}

} // namespace

EventRecorder::EventRecorder(const QString& path)
    : mFile(path) {
    if (!mFile.open(QIODevice::WriteOnly | QIODevice::NewOnly | QIODevice::Unbuffered))
        return;
    mBrace = mFile.write("{\"recorder\": 1}") - 1;
    qApp->installEventFilter(this);
}

bool EventRecorder::eventFilter(QObject* watched, QEvent* event) {
    const QEvent::Type type = event->type();
    if (type == QEvent::MouseButtonRelease || type == QEvent::ShortcutOverride)
        mInMenu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
    auto* menu = qobject_cast<QMenu*>(watched);
    if (menu && type == QEvent::Polish)
        connect(menu, &QMenu::triggered, this, [this, menu](auto* it) { recordChoice(menu, it); });
    const bool pressed = type == QEvent::MouseButtonPress || type == QEvent::MouseButtonDblClick;
    if ((pressed || type == QEvent::MouseButtonRelease) && watched->isWidgetType() && !menu)
        recordMouse(pressed ? "down" : "up", static_cast<QWidget*>(watched),
                    static_cast<QMouseEvent*>(event));
    return false;
}

void EventRecorder::recordMouse(const char* gesture, QWidget* widget, QMouseEvent* event) {
    const std::pair now(event->type(), event->timestamp());
    // A widget that ignores an event hands it on to the one around it, with the same time.
    if (std::exchange(mLast, now) != now && !qobject_cast<QMenuBar*>(widget))
        write(gesture, keyOf(widget), widget, event->globalPosition().toPoint());
}

void EventRecorder::recordChoice(QMenu* menu, QAction* choice) {
    // A menu tells of shortcuts and of the choices from menus within it too.
    const QPoint middle = menu->mapToGlobal(menu->actionGeometry(choice).center());
    if (mInMenu && menu->actions().contains(choice))
        write("menu", keyOf(menu) + u':' + nameOf(choice, "text"), menu, middle);
}

/// Appends, then turns the brace before into a comma: the recording is closed at every moment.
void EventRecorder::write(const char* gesture, const QString& key, QWidget* at, QPoint onScreen) {
    while (at->parentWidget()) // a dialog's places are those in its window
        at = at->parentWidget();
    const QPoint place = at->mapFromGlobal(onScreen);
    const auto time = QByteArray::number(QDateTime::currentMSecsSinceEpoch());
    const QByteArray text = "\n\"" + QByteArray(gesture) + "\": [" + time + ", \"" + key.toUtf8() +
                            "\", " + QByteArray::number(place.x()) + ", " +
                            QByteArray::number(place.y()) + "]}";
    if (mFile.seek(mBrace + 1) && mFile.write(text) == text.size() && mFile.seek(mBrace) &&
        mFile.write(",") == 1)
        mBrace += text.size();
}
