#include "examples/recorder-desktop/desktopbus.h"

#include <QDBusArgument>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusServiceWatcher>
#include <QDBusVariant>

#include <algorithm>
#include <cmath>
#include <cstring>

namespace desktop {

/// QtDBus wants it; none is ever sent.
QDBusArgument& operator<<(QDBusArgument& to, const accessible& /*one*/) {
    return to;
}

const QDBusArgument& operator>>(const QDBusArgument& from, accessible& one) {
    QDBusObjectPath path;
    from.beginStructure();
    from >> one.service >> path;
    from.endStructure();
    one.path = path.path();
    return from;
}

namespace {

constexpr int DEEPEST = 64;
constexpr int MOST_CHILDREN = 100; // of one element that are looked at

enum State { Active = 1, Showing = 25, HasPopup = 42 };

enum Relation : uint { LabelledBy = 2, ControllerFor = 3 };

const QString SPACE = QStringLiteral("org.a11y.atspi.");
const accessible REGISTRY{SPACE + QStringLiteral("Registry"),
                          QStringLiteral("/org/a11y/atspi/accessible/root")}; // as that of programs

QVariant answer(QDBusPendingCall asked) {
    asked.waitForFinished();
    const QVariant first = asked.isError() ? QVariant() : asked.reply().arguments().value(0);
    return first.canConvert<QDBusVariant>() ? first.value<QDBusVariant>().variant() : first;
}

} // namespace

/// A window of the program, and where the press lies in it.
struct Bus::fitting {
    accessible window;
    QPoint point;
    double misfit = 60; // pixels; worse ones are others
};

/// Asks all before it waits for the first.
template <class Value>
QList<Value> Bus::all(const QList<accessible>& of, const char* interface, const char* method,
                      const QVariantList& with) {
    QList<QDBusPendingCall> asked;
    for (const accessible& one : of)
        asked += call(one, interface, method, with);
    QList<Value> values;
    for (const QDBusPendingCall& one : asked)
        values += qdbus_cast<Value>(answer(one));
    return values;
}

Bus::Bus()
    : mBus(QString()) {
    qDBusRegisterMetaType<accessible>();
    qDBusRegisterMetaType<QList<accessible>>();
    const QString name = QStringLiteral("org.a11y.Bus");
    const auto ask = QDBusMessage::createMethodCall(name, QStringLiteral("/org/a11y/bus"), name,
                                                    QStringLiteral("GetAddress"));
    const QString address = QDBusConnection::sessionBus().call(ask).arguments().value(0).toString();
    mBus = QDBusConnection::connectToBus(address, QStringLiteral("accessibility"));
}

void Bus::watchFocus(QObject* receiver, const char* slot) {
    const auto subscribe = [this] {
        allow(1000);
        for (const char* event : {"object:state-changed:focused", "object:state-changed:selected"})
            call({REGISTRY.service, QStringLiteral("/org/a11y/atspi/registry")}, "Registry",
                 "RegisterEvent", {QString::fromLatin1(event)});
    };
    auto* registry = new QDBusServiceWatcher( // which forgets all when it crashed
        REGISTRY.service, mBus, QDBusServiceWatcher::WatchForRegistration, receiver);
    QObject::connect(registry, &QDBusServiceWatcher::serviceRegistered, receiver, subscribe);
    mBus.connect({}, {}, SPACE + QStringLiteral("Event.Object"), QStringLiteral("StateChanged"),
                 receiver, slot);
    subscribe();
}

accessible Bus::find(const press& press) {
    fitting best;
    for (const accessible& program : children(REGISTRY)) {
        if (processOf(program.service) != press.process)
            continue;
        const QVariantList toolkit{SPACE + QStringLiteral("Application"),
                                   QStringLiteral("ToolkitName")};
        const auto asked = call(program, "Properties", "Get", toolkit);
        mPlaces = answer(asked).toString() == u"GTK" ? 1 : 0; // GTK 4; 3 is "gtk"
        const QList<accessible> windows = children(program);
        const QList<QRect> told = places(windows);
        for (qsizetype i = 0; i < windows.size(); ++i)
            fit(windows[i], told[i], press, best);
    }
    accessible at;
    accessible next = best.window;
    for (int depth = 0; next && next != at && depth < DEEPEST; ++depth) {
        at = next;
        next = below(at, best.point);
    }
    return at;
}

/// The window that lies as the one under the pointer. The bus tells places as if nothing was
/// scaled, and frames and shadows count at times.
void Bus::fit(const accessible& window, const QRect& told, const press& press, fitting& best) {
    for (const QRect& seen : press.places) {
        const double scale =
            std::max(1.0, std::round(8.0 * seen.width() / std::max(1, told.width())) / 8);
        const QPointF size(seen.width() - scale * told.width(),
                           seen.height() - scale * told.height());
        const QPointF apart = seen.topLeft() - scale * QPointF(told.topLeft());
        const double misfit =
            size.manhattanLength() + apart.manhattanLength() / 100 + !has(window, Active);
        if (misfit < best.misfit) {
            best = {window, told.center() + (press.at - seen.center()) / scale, misfit};
            mScale = scale;
        }
    }
}

accessible Bus::below(const accessible& at, QPoint point) {
    const auto asked =
        call(at, "Component", "GetAccessibleAtPoint", {point.x(), point.y(), mPlaces});
    const uint role = roleOf(at);
    const auto found = qdbus_cast<accessible>(answer(asked));
    if (found && found != at) // where a tab of GTK 3 was pressed, that is its page
        return role != Tab || places({found}).first().contains(point) ? found : accessible();
    if (role == Menu) // what it opens lies elsewhere
        return {};
    QList<accessible> within = children(at).mid(0, MOST_CHILDREN); // GTK 4 finds nothing
    for (const accessible& tab : role == Tabs ? QList<accessible>(within) : QList<accessible>())
        within += children(tab); // its page, which lies outside of it
    const QList<QRect> told = places(within);
    accessible last;
    for (qsizetype i = 0; i < told.size(); ++i) {
        if (told[i].contains(point) && (role != Tabs || has(within[i], Showing)))
            last = within[i];
    }
    return last;
}

QList<element> Bus::wayTo(accessible at) {
    QList<element> way;
    while (at && way.size() < DEEPEST) {
        const auto role = call(at, "Accessible", "GetRole");
        const auto name = get(at, "Name"), parent = get(at, "Parent"), id = get(at, "AccessibleId");
        element next;
        next.role = answer(role).toUInt();
        next.name = answer(name).toString();
        next.id = answer(id).toString();
        next.self = at;
        next.parent = at = qdbus_cast<accessible>(answer(parent));
        if (next.role == 0 || next.role == Program)
            break;
        way.prepend(next);
    }
    return mLeft.hasExpired() || way.size() == DEEPEST ? QList<element>() : way;
}

void Bus::complete(element& last) {
    const auto attributes = call(last.self, "Accessible", "GetAttributes");
    if (last.id.isEmpty())
        last.id =
            qdbus_cast<QMap<QString, QString>>(answer(attributes)).value(QStringLiteral("id"));
    if (const accessible label = related(last.self, LabelledBy))
        last.label = answer(get(label, "Name")).toString();
    if (is_menu_item(last.role)) // in GTK 3, GTK 4 and Qt
        last.opensMenu = has(last.self, HasPopup) || related(last.self, ControllerFor) ||
                         roleOf(children(last.self).value(0)) == PopupMenu;
    const QList<accessible> beside = children(last.parent).mid(0, MOST_CHILDREN);
    const QList<uint> like = all<uint>(beside, "Accessible", "GetRole");
    const auto here = like.begin() + std::max<qsizetype>(0, beside.indexOf(last.self));
    if (std::count(like.begin(), like.end(), last.role) > 1)
        last.place = static_cast<int>(1 + std::count(like.begin(), here, last.role));
}

QStringList Bus::windows(const QString& service) {
    const QVariantList name{SPACE + QStringLiteral("Accessible"), QStringLiteral("Name")};
    return all<QString>(children({service, REGISTRY.path}), "Properties", "Get", name);
}

QList<accessible> Bus::children(const accessible& of) {
    return all<QList<accessible>>({of}, "Accessible", "GetChildren").first();
}

QList<QRect> Bus::places(const QList<accessible>& of) {
    return all<QRect>(of, "Component", "GetExtents", {mPlaces});
}

/// The first one in a relation to it.
accessible Bus::related(const accessible& to, uint kind) {
    const QVariant told = answer(call(to, "Accessible", "GetRelationSet"));
    const auto relations = told.value<QDBusArgument>();
    QList<accessible> others;
    uint found = ~kind;
    if (!told.isValid())
        return {};
    relations.beginArray();
    while (found != kind && !relations.atEnd()) {
        relations.beginStructure();
        relations >> found >> others;
        relations.endStructure();
    }
    return found == kind ? others.value(0) : accessible();
}

uint Bus::roleOf(const accessible& of) {
    return all<uint>({of}, "Accessible", "GetRole").first();
}

bool Bus::has(const accessible& of, int state) {
    const auto states = all<QList<uint>>({of}, "Accessible", "GetState").first();
    return (states.value(state / 32) >> (state % 32) & 1U) != 0;
}

qint64 Bus::processOf(const QString& service) {
    qint64& process = mProcesses[service];
    if (process != 0 || mLeft.hasExpired() || !isConnected())
        return process;
    QDBusConnectionInterface* const daemon = mBus.interface();
    daemon->setTimeout(static_cast<int>(mLeft.remainingTime()));
    const auto asked = daemon->asyncCall(QStringLiteral("GetConnectionUnixProcessID"), service);
    return process = answer(asked).toLongLong();
}

QDBusPendingCall Bus::get(const accessible& of, const char* property) {
    return call(of, "Properties", "Get",
                {SPACE + QStringLiteral("Accessible"), QString::fromLatin1(property)});
}

QDBusPendingCall Bus::call(const accessible& on, const char* interface, const char* method,
                           const QVariantList& with) {
    if (mLeft.hasExpired() || !on)
        return QDBusPendingCall::fromError(QDBusError(QDBusError::TimedOut, QString()));
    const bool isOfAll = std::strcmp(interface, "Properties") == 0;
    const QString space = isOfAll ? QStringLiteral("org.freedesktop.DBus.") : SPACE;
    auto asked = QDBusMessage::createMethodCall(
        on.service, on.path, space + QLatin1String(interface), QLatin1String(method));
    asked.setArguments(with);
    return mBus.asyncCall(asked, static_cast<int>(mLeft.remainingTime()));
}

} // namespace desktop
