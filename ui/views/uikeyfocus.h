#pragma once

class QFocusEvent;
class QPainter;
class QWidget;

namespace ui {

class Look;

/// Whether a widget shows that it has the focus: only where a key brought the focus there. What a
/// menu or another window takes for a while comes back as it was.
class KeyFocus {
public:
    /// For every focus event of `widget`, which repaints where it shows something else now.
    void follow(QWidget& widget, const QFocusEvent& event);

    /// Draws the frame around `widget`, or nothing.
    void drawOn(QPainter& painter, const QWidget& widget, const Look& look) const;

private:
    bool mCameByKey = false;
};

} // namespace ui
