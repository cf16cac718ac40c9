#pragma once

#include "examples/recorder-desktop/desktopbus.h"
#include "import/importkeytable.h"

#include <QDBusMessage>
#include <QFile>
#include <QTimer>

#include <optional>

namespace desktop {

/// Writes presses and releases into a log, by the names that the bus tells. Presses that lead to a
/// choice from a menu are no events. What is chosen is known before the press, when the pointer
/// comes to an item: no program tells what lies at a point of its menus.
class Recorder : public QObject {
    Q_OBJECT

public:
    /// `rules` are not owned and outlive it. `program` begins all keys.
    Recorder(const import::Rules& rules, bool withContent, const QString& program)
        : mKeys(rules)
        , mRules(rules)
        , mWithContent(withContent)
        , mProgram(program) {}

    /// Makes the log. Empty, or why nothing can be recorded.
    QString begin(const QString& log);

    void record(const press& press);

    /// What was recorded and what went wrong, for people.
    QString summary() const;

    bool isWhole() const { return mEvents > 0 && mLost == 0 && mBus.isConnected(); }

private:
    Q_SLOT void noteFocus(const QDBusMessage& event);
    void readItem();
    element_name nameOf(const accessible& pressed);
    element_name nameOf(const press& press);
    void recordRelease(const press& press);
    void write(const char* gesture, const press& press, const element_name& name);
    bool append(const QByteArray& event);

    import::KeyTable mKeys;
    const import::Rules& mRules;
    bool mWithContent;
    QString mProgram;
    Bus mBus;
    QTimer mReading;
    accessible mFocused;                               // what came last, and is not read yet
    std::optional<element_name> mItem;                 // of a menu, that the pointer is on
    element_name mPressed;                             // last; lists that drop down are its
    QHash<int, std::pair<element_name, QPoint>> mDown; // by button: what was pressed, and where
    QPoint mOrigin;
    QFile mLog;
    qint64 mBrace = 0; // where the one is that ends the recording
    int mEvents = 0;
    int mNamed = 0;
    int mLost = 0;
};

} // namespace desktop
