#include "ui/views/uikeyfocus.h"

#include "ui/leaves/uilook.h"

#include <QFocusEvent>
#include <QPainter>
#include <QRegion>
#include <QWidget>

namespace ui {

namespace {

constexpr int FRAME = 2; // pixels

bool isKey(Qt::FocusReason reason) {
    return reason == Qt::TabFocusReason || reason == Qt::BacktabFocusReason ||
           reason == Qt::ShortcutFocusReason;
}

bool isReturn(Qt::FocusReason reason) {
    return reason == Qt::ActiveWindowFocusReason || reason == Qt::PopupFocusReason ||
           reason == Qt::MenuBarFocusReason;
}

} // namespace

void KeyFocus::follow(QWidget& widget, const QFocusEvent& event) {
    const bool before = mCameByKey;
    if (event.gotFocus() && !isReturn(event.reason()))
        mCameByKey = isKey(event.reason());
    if (before || mCameByKey)
        widget.update();
}

void KeyFocus::drawOn(QPainter& painter, const QWidget& widget, const Look& look) const {
    if (!mCameByKey || !widget.hasFocus())
        return;
    const QRect rect = widget.rect();
    const QRegion frame = QRegion(rect).subtracted(rect.adjusted(FRAME, FRAME, -FRAME, -FRAME));
    for (const QRect& side : frame)
        painter.fillRect(side, look.mSelectedOutline);
}

} // namespace ui
