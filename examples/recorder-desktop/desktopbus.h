#pragma once

#include "examples/recorder-desktop/desktopnaming.h"
#include "examples/recorder-desktop/desktoppresses.h"

#include <QDBusConnection>
#include <QDBusPendingCall>
#include <QDeadlineTimer>
#include <QHash>

namespace desktop {

/// The accessibility bus. Asks the pressed program alone, and no longer than allowed. Never asks
/// for all properties at once, which crashes programs of Qt up to 6.4.
class Bus {
public:
    /// Connects. Needs a QCoreApplication.
    Bus();

    bool isConnected() const { return mBus.isConnected(); }

    /// Calls the slot (QDBusMessage) when anything gets the focus or is selected.
    void watchFocus(QObject* receiver, const char* slot);

    /// How long look-ups may take from now on, together.
    void allow(qint64 milliseconds) { mLeft.setRemainingTime(milliseconds); }

    /// What lies under a press, as deep as the program tells; nothing in menus, which lie in no
    /// window.
    accessible find(const press& press);

    /// The element with all around it from the window inwards, but for what is asked of the last
    /// alone.
    /// Nothing when time was too short: what is missing may say that the rest is not to be told.
    QList<element> wayTo(accessible at);
    void complete(element& last);

    /// The titles of a program's windows.
    QStringList windows(const QString& service);

    uint roleOf(const accessible& of);
    qint64 processOf(const QString& service);

    /// Pixels of the screen for one of the program, as last seen.
    double scale() const { return mScale; }

private:
    struct fitting;

    template <class Value>
    QList<Value> all(const QList<accessible>& of, const char* interface, const char* method,
                     const QVariantList& with = {});
    QDBusPendingCall call(const accessible& on, const char* interface, const char* method,
                          const QVariantList& with = {});
    QDBusPendingCall get(const accessible& of, const char* property);
    bool has(const accessible& of, int state);
    QList<accessible> children(const accessible& of);
    accessible related(const accessible& to, uint kind);
    QList<QRect> places(const QList<accessible>& of);
    void fit(const accessible& window, const QRect& told, const press& press, fitting& best);
    accessible below(const accessible& at, QPoint point);

    QDBusConnection mBus;
    QDeadlineTimer mLeft;
    QHash<QString, qint64> mProcesses; // by service
    uint mPlaces = 0; // as the program tells them: 0 on the screen, 1 in the window
    double mScale = 1;
};

} // namespace desktop
