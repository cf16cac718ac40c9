#pragma once

#include <QApplication>
#include <QFile>
#include <QMenuBar>
#include <QMouseEvent>

/// Records mouse presses and releases and menu choices into a log for Quillon while it lives.
/// Leaves a file alone that exists already, and then records nothing.
class EventRecorder : public QObject {
public:
    explicit EventRecorder(const QString& path);
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void recordMouse(const char* gesture, QWidget* widget, QMouseEvent* event);
    void recordChoice(QMenu* menu, QAction* choice);
    void write(const char* gesture, const QString& key, QWidget* at, QPoint onScreen);

    QFile mFile;
    qint64 mBrace = 0;                      ///< Where the brace is that ends the recording.
    std::pair<QEvent::Type, quint64> mLast; ///< The last mouse event and its time.
    bool mInMenu = false;                   ///< Whether the last key or button was for a menu.
};
