#include "examples/recorder-desktop/desktoprecorder.h"

#include <QDateTime>

namespace desktop {

namespace {

using Kind = element_name::Kind;

constexpr qint64 LONGEST = 400;  // milliseconds from a press to its name
constexpr int SHORTEST_DRAG = 8; // pixels

} // namespace

QString Recorder::begin(const QString& log) {
    if (!mBus.isConnected())
        return QStringLiteral("there is no accessibility bus, which names what is pressed");
    mLog.setFileName(log);
    if (!mLog.open(QIODevice::WriteOnly | QIODevice::NewOnly | QIODevice::Unbuffered,
                   QFileDevice::ReadOwner | QFileDevice::WriteOwner))
        return log + QStringLiteral(": ") + mLog.errorString();
    mBrace = mLog.write("{\"recorder\": 3}") - 1;
    mReading.setSingleShot(true);
    connect(&mReading, &QTimer::timeout, this, &Recorder::readItem);
    mBus.watchFocus(this, SLOT(noteFocus(QDBusMessage)));
    return {};
}

void Recorder::record(const press& press) {
    if (mReading.isActive())
        readItem();
    mBus.allow(std::max<qint64>(0, press.time + LONGEST - QDateTime::currentMSecsSinceEpoch()));
    if (!press.isDown)
        return recordRelease(press);
    if (press.process == 0)
        return;
    mOrigin = press.origin;
    mPressed = nameOf(press);
    mDown[press.button] = {mPressed, press.at};
    if (mPressed.kind == Kind::Press)
        write("down", press, mPressed);
}

void Recorder::recordRelease(const press& press) {
    if (!mDown.contains(press.button))
        return;
    const auto [name, from] = mDown.take(press.button);
    const bool isDrag = (press.at - from).manhattanLength() >= SHORTEST_DRAG;
    if (name.kind == Kind::Press)
        write("up", press, name);
    else if (mItem && mItem->kind == Kind::Opener)
        return; // GTK 4 is at the first item of what it opens before the press, and back with it
    else if (isDrag && mItem) // from a menu's name or another item
        write("menu", press, *mItem);
    else if (name.kind == Kind::Choice)
        write("menu", press, name);
}

element_name Recorder::nameOf(const press& press) {
    if (press.isPopup && mItem)
        return *mItem;
    mItem.reset();
    const accessible found = mBus.find(press);
    if (!found && press.isPopup && mPressed.kind == Kind::Press)
        return mPressed;
    return nameOf(found);
}

/// Titles come first: a name that time was too short to hold against them is none.
element_name Recorder::nameOf(const accessible& pressed) {
    const QStringList titles = mBus.windows(pressed.service);
    QList<element> way = shortened(mBus.wayTo(pressed), mWithContent);
    if (!way.isEmpty())
        mBus.complete(way.last());
    return name_of(way, titles, mRules.naming(), mWithContent);
}

/// Keeps the newest only: selections come in floods.
void Recorder::noteFocus(const QDBusMessage& event) {
    const QString kind = event.arguments().value(0).toString();
    if ((kind != u"focused" && kind != u"selected") || event.arguments().value(1).toInt() != 1)
        return;
    mFocused = {event.service(), event.path()};
    mReading.start(0);
}

/// While it is there: what a press on it does may close the menu.
void Recorder::readItem() {
    mReading.stop();
    mBus.allow(LONGEST);
    if (!is_descendant(mBus.processOf(mFocused.service)))
        return;
    mItem.reset();
    const uint role = mBus.roleOf(mFocused);
    if (role == Menu || is_menu_item(role))
        mItem = nameOf(mFocused);
}

void Recorder::write(const char* gesture, const press& press, const element_name& name) {
    const std::string key = (mProgram + u':').toStdString() + name.key;
    const import::key_entry* entry = mKeys.take(key, name.named);
    if (!entry)
        return;
    const QPoint at = (QPointF(press.at - mOrigin) / mBus.scale()).toPoint();
    const QString text = QStringLiteral("\n\"%1\": [%2, \"%3\", %4, %5]}");
    const bool isWritten = append(text.arg(QLatin1String(gesture))
                                      .arg(press.time)
                                      .arg(QString::fromStdString(entry->key))
                                      .arg(at.x())
                                      .arg(at.y())
                                      .toUtf8());
    ++(isWritten ? mEvents : mLost);
    mNamed += isWritten && name.named != import::Named::Path ? 1 : 0;
}

/// Appends, then turns the brace before into a comma: the recording is closed at every moment.
bool Recorder::append(const QByteArray& event) {
    const bool isWritten = mLog.seek(mBrace + 1) && mLog.write(event) == event.size() &&
                           mLog.seek(mBrace) && mLog.write(",") == 1;
    if (isWritten)
        mBrace += event.size();
    else
        mLog.resize(mBrace + 1);
    return isWritten;
}

QString Recorder::summary() const {
    QString text = QStringLiteral("%1 events, %2 of them by a name").arg(mEvents).arg(mNamed);
    if (mLost > 0)
        text += QStringLiteral("; %1 could not be written").arg(mLost);
    if (!mBus.isConnected())
        text += QStringLiteral("; the accessibility bus was lost, and all names with it");
    if (mEvents == 0)
        text += QStringLiteral("; a program that ran before cannot be recorded");
    return text +
           QStringLiteral(
               "\nLook at the keys before you hand the log on: quillon-record --review ") +
           mLog.fileName();
}

} // namespace desktop
