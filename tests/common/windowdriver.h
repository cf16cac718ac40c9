#pragma once

#include "ui/uiwin.h"
#include "ui/views/uileafview.h"

#include <QAction>
#include <QApplication>
#include <QDropEvent>
#include <QMimeData>
#include <QMouseEvent>

/// What a person does to the main window, as the events that the toolkit would send.
namespace driver {

/// The action with that text, or null.
inline QAction* find_action(const ui::Win& window, const QString& text) {
    for (QAction* action : window.findChildren<QAction*>()) {
        if (action->text() == text)
            return action;
    }
    return nullptr;
}

inline QAction* by_rank(const ui::Win& window) {
    return find_action(window, QStringLiteral("By &Rank"));
}

inline void drop(const ui::Win& window, const QList<QUrl>& urls, const QPointF& at = {5, 5}) {
    auto* view = window.findChild<ui::LeafView*>();
    QMimeData data;
    data.setUrls(urls);
    QDragEnterEvent enter(at.toPoint(), Qt::CopyAction, &data, Qt::LeftButton, {});
    QApplication::sendEvent(view, &enter);
    QDropEvent event(at, Qt::CopyAction, &data, Qt::LeftButton, {});
    QApplication::sendEvent(view, &event);
}

/// Presses or releases the left button, or moves the mouse with the button down.
inline void mouse(QWidget& widget, QEvent::Type type, const QPointF& at) {
    const Qt::MouseButton button = type == QEvent::MouseMove ? Qt::NoButton : Qt::LeftButton;
    const Qt::MouseButtons held =
        type == QEvent::MouseButtonRelease ? Qt::MouseButtons() : Qt::LeftButton;
    QMouseEvent event(type, at, widget.mapToGlobal(at), button, held, Qt::NoModifier);
    QApplication::sendEvent(&widget, &event);
}

} // namespace driver
