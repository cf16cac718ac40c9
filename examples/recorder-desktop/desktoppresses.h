#pragma once

#include <QObject>
#include <QRect>
#include <QSet>

#include <xcb/record.h>

namespace desktop {

/// A press or release of a mouse button, with what only the X server knows of it; all on the
/// screen, in its pixels.
struct press {
    bool isDown = false;
    int button = 0;
    qint64 time = 0; ///< Milliseconds since 1970.
    QPoint at;
    qint64 process = 0;   ///< Whose window is under the pointer; 0 when that is not recorded.
    bool isPopup = false; ///< Whether it is a menu, or a list that dropped down.
    /// Of the window: without the shadow that it draws around itself, with frames, and with its
    /// shadow.
    QList<QRect> places;
    QPoint origin; ///< Of the outermost window, for which others are dialogs or menus.
};

/// Whether this process started it, or one that did; not when it has ended.
bool is_descendant(qint64 process);

/// Presses and releases, and the windows of this process's descendants. Never asks for keys, and
/// talks to the X server alone, so that no program can hold it up.
class Presses : public QObject {
    Q_OBJECT

public:
    Presses();
    ~Presses() override;

    /// Whether the X server tells of buttons.
    bool isAble() const { return mIsAble; }

    /// Emits what happens until `stop`. False when the X server was lost. Blocks: for a thread of
    /// its own.
    bool listen();

    /// Ends `listen` when all that happened before is told. From any thread.
    void stop();

Q_SIGNALS:
    void happened(const desktop::press& press);
    void ended();

private:
    press describe(const xcb_button_press_event_t& event);
    void describeWindow(xcb_window_t window, press& into);
    QRect placeWithoutShadow(xcb_window_t of);

    xcb_connection_t* mAsking;
    xcb_connection_t* mHearing;
    quint32 mContext = 0;
    xcb_record_enable_context_cookie_t mEvents{};
    bool mIsAble = false;
    xcb_atom_t mShadow = 0;
    QPoint mOrigin;          // the last one; that of menus which tell none
    QSet<qint64> mDescended; // processes, which may have ended since
};

} // namespace desktop
