#pragma once

#include <QRect>
#include <QString>
#include <QStringList>

class QHelpEvent;
class QWidget;

namespace ui {

/// What to tell about a place in a widget: lines of plain text, made by `tip_text` where they hold
/// anything of a log. Nothing is told without lines.
struct tool_tip {
    QStringList lines;
    QRect place; ///< In widget coordinates; the tip goes when the mouse leaves it.
};

/// `text` as a line of a tip: without line breaks and other control characters; only the beginning
/// of what would fill the screen.
QString tip_text(const QString& text);

/// Answers a `QEvent::ToolTip` of `widget`. Long lines are wrapped, none is taken for markup.
void show_tool_tip(QHelpEvent& event, QWidget& widget, const tool_tip& tip);

} // namespace ui
